#pragma once

#include "base/export.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veltora {

/// One table under construction: rows and cells are appended to one growing text. Texts are Windows-1252 and
/// are written as they stand.
class VELTORA_API htmlTable {
public:
  /// @param n 0 left, 1 right, 2 center; any other value leaves the word out of the opening tag
  void setAlignement(int n) { m_alignement = n; }
  /// A negative value is ignored by these four. The border's unit is not written.
  void setBordure(int n, int uniteFlag);
  void setCellPadding(int n);
  void setCellSpacing(int n);
  /// @param uniteFlag 0 per cent, 1 pixels
  void setLargeur(int n, int uniteFlag);
  /// Colours are 0xRRGGBB.
  void setBgColor(std::uint32_t couleur) { m_bgColor = couleur; }
  void setBorderColor(std::uint32_t couleur) { m_borderColor = couleur; }
  void setBorderColorDark(std::uint32_t couleur) { m_borderColorDark = couleur; }
  void setBorderColorLight(std::uint32_t couleur) { m_borderColorLight = couleur; }

  /// Empties the rows and makes room for so many rows of so many characters.
  void reserver(std::size_t lignes, std::size_t largeurLigne);
  /// Closes an open row first. @param attributs may be empty; the blank in front of them stays
  void ouvrirLigne(std::string_view attributs = {});
  void fermerLigne();
  void ajouterCellule(std::string_view texte, std::string_view attributs);
  void ajouterCelluleEntier(int n, std::string_view attributs);
  /// @param decimales 0 to 99
  void ajouterCelluleDouble(double valeur, int decimales, std::string_view attributs);
  /// The whole table as text, after closing an open row; the rows stay until `vider`.
  std::string fermerTable();
  /// Empties the rows; the settings stay.
  void vider();

private:
  [[nodiscard]] std::string baliseOuvrante() const;

  std::string m_contenu;
  bool m_ligneOuverte = false;
  std::optional<int> m_alignement;
  std::optional<int> m_bordure;
  std::optional<int> m_cellPadding;
  std::optional<int> m_cellSpacing;
  std::optional<int> m_largeur;
  int m_largeurUnite = 0;
  std::optional<std::uint32_t> m_bgColor;
  std::optional<std::uint32_t> m_borderColor;
  std::optional<std::uint32_t> m_borderColorDark;
  std::optional<std::uint32_t> m_borderColorLight;
};

}  // namespace veltora
