#pragma once

#include "report/html_table.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace veltora {

class htmlDocument;

/// Pen for a computation's report: paragraphs and tables in the order of the calls, numbers with four
/// decimals unless told. Opens the document with the prologue. Wide texts are narrowed and escaped here.
class plumeRapport {
public:
  explicit plumeRapport(htmlDocument& document);
  void setDecimales(int decimales) { m_decimales = decimales; }

  void paragraphe(std::wstring_view texte, std::string_view attributs);
  /// With markup in it, whose names went through `echappe`.
  void paragrapheBalise(std::wstring_view html, std::string_view attributs);
  /// A header row.
  void entetes(std::initializer_list<const wchar_t*> titres, std::string_view attributs);

  void ouvrirLigne() { m_table.ouvrirLigne(); }
  void fermerLigne() { m_table.fermerLigne(); }
  void texte(std::wstring_view texte, std::string_view attributs);
  /// Windows-1252 with markup, whose names went through `echappe`.
  void octets(std::string_view html, std::string_view attributs) { m_table.ajouterCellule(html, attributs); }
  void nombre(double valeur);  ///< with the attributes of a number
  void nombre(double valeur, std::string_view attributs);
  void nombres(std::initializer_list<double> valeurs);
  /// Empty cells without attributes.
  void vides(int combien);
  /// Puts the table into the document and makes room for the next one.
  void fermerTable();

private:
  htmlDocument& m_document;
  htmlTable m_table;
  int m_decimales = 4;
};

}  // namespace veltora
