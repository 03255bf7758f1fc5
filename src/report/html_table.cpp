#include "report/html_table.h"

#include "base/format.h"
#include "report/html_text.h"

#include <algorithm>

namespace veltora {
namespace {

/// `reserver` is a hint: no more than this is set aside at once, in bytes.
constexpr std::size_t kReserveMax = std::size_t{64} << 20U;

// Deliberate (couleurs-diese): an opening "#" and a second equal sign, so browsers see no colour.
void ajouterCouleur(std::string& sortie, const char* nom, const std::optional<std::uint32_t>& couleur) {
  if (couleur) sortie += base::formater(" %s=#\"=#%06X\"", nom, *couleur & 0xFFFFFFU);
}

void ajouterNombre(std::string& sortie, const char* nom, const std::optional<int>& nombre) {
  if (nombre) sortie += base::formater(" %s=\"%d\"", nom, *nombre);
}

}  // namespace

void htmlTable::setBordure(int n, int /*uniteFlag*/) {
  if (n >= 0) m_bordure = n;
}

void htmlTable::setCellPadding(int n) {
  if (n >= 0) m_cellPadding = n;
}

void htmlTable::setCellSpacing(int n) {
  if (n >= 0) m_cellSpacing = n;
}

void htmlTable::setLargeur(int n, int uniteFlag) {
  if (n < 0) return;
  m_largeur = n;
  m_largeurUnite = uniteFlag;
}

void htmlTable::reserver(std::size_t lignes, std::size_t largeurLigne) {
  vider();
  if (largeurLigne != 0) m_contenu.reserve(std::min(lignes, kReserveMax / largeurLigne) * largeurLigne);
}

void htmlTable::ouvrirLigne(std::string_view attributs) {
  if (m_ligneOuverte) m_contenu += "</tr>";
  m_contenu.append("<tr ").append(attributs).append(">");
  m_ligneOuverte = true;
}

void htmlTable::fermerLigne() {
  m_contenu += "</tr>";
  m_ligneOuverte = false;
}

void htmlTable::ajouterCellule(std::string_view texte, std::string_view attributs) {
  m_contenu.append("<td ").append(attributs).append(">").append(texte).append("</td>");
}

void htmlTable::ajouterCelluleEntier(int n, std::string_view attributs) {
  ajouterCellule(base::formater("%d", n), attributs);
}

void htmlTable::ajouterCelluleDouble(double valeur, int decimales, std::string_view attributs) {
  ajouterCellule(texteNombre(valeur, decimales), attributs);
}

std::string htmlTable::baliseOuvrante() const {
  std::string sortie = "<table ";
  if (m_alignement) {
    sortie += "text-align=\"";
    if (*m_alignement == 0) sortie += "left\"";
    if (*m_alignement == 1) sortie += "right\"";
    if (*m_alignement == 2) sortie += "center\"";
  }
  // Deliberate (largeur-ouverte): the closing quote of the width is not printed.
  if (m_largeur) sortie += base::formater(" width=\"%d", *m_largeur);
  if (m_largeur && m_largeurUnite == 0) sortie += "%";
  if (m_largeur && m_largeurUnite == 1) sortie += "px";
  ajouterNombre(sortie, "border", m_bordure);
  ajouterNombre(sortie, "cellpadding", m_cellPadding);
  // Deliberate (cellspacing-blanc): the blank before the equal sign is part of the text.
  ajouterNombre(sortie, "cellspacing ", m_cellSpacing);
  ajouterCouleur(sortie, "bgcolor", m_bgColor);
  ajouterCouleur(sortie, "bordercolor", m_borderColor);
  ajouterCouleur(sortie, "bordercolorlight", m_borderColorLight);
  ajouterCouleur(sortie, "bordercolordark", m_borderColorDark);
  return sortie + ">\n";
}

std::string htmlTable::fermerTable() {
  if (m_ligneOuverte) fermerLigne();
  return baliseOuvrante() + m_contenu + "</table>";
}

void htmlTable::vider() {
  m_contenu.clear();
  m_ligneOuverte = false;
}

}  // namespace veltora
