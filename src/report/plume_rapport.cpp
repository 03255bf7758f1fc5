#include "report/plume_rapport.h"

#include "base/text.h"
#include "report/html_document.h"
#include "report/html_text.h"
#include "report/report_setup.h"

namespace veltora {

plumeRapport::plumeRapport(htmlDocument& document) : m_document(document) {
  ajouterPrologue(m_document);
  preparerTable(m_table);
}

void plumeRapport::paragraphe(std::wstring_view texte, std::string_view attributs) {
  paragrapheBalise(echappe(texte), attributs);
}

void plumeRapport::paragrapheBalise(std::wstring_view html, std::string_view attributs) {
  m_document.ajouterCorps(htmlText(base::narrow(html), attributs).html());
}

void plumeRapport::entetes(std::initializer_list<const wchar_t*> titres, std::string_view attributs) {
  ouvrirLigne();
  for (const wchar_t* titre : titres) texte(titre, attributs);
  fermerLigne();
}

void plumeRapport::texte(std::wstring_view texte, std::string_view attributs) {
  m_table.ajouterCellule(echappe(base::narrow(texte)), attributs);
}

void plumeRapport::nombre(double valeur) { nombre(valeur, attributs::kNombre); }

void plumeRapport::nombre(double valeur, std::string_view attributs) {
  m_table.ajouterCelluleDouble(valeur, m_decimales, attributs);
}

void plumeRapport::nombres(std::initializer_list<double> valeurs) {
  for (const double valeur : valeurs) nombre(valeur);
}

void plumeRapport::vides(int combien) {
  for (int i = 0; i < combien; ++i) m_table.ajouterCellule("", "");
}

void plumeRapport::fermerTable() {
  m_document.ajouterCorps(m_table.fermerTable());
  m_table.vider();
}

}  // namespace veltora
