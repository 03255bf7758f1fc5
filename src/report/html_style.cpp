#include "report/html_style.h"

#include "report/html_border_style.h"

#include <cstddef>

namespace veltora {
namespace {

constexpr std::array<const char*, 4> kCotes = {"left", "right", "top", "bottom"};

void ajouter(std::string& sortie, const std::string& propriete, const std::string& valeur) {
  sortie += propriete + ":" + valeur + ";";
}

template <class T>
void ajouterSi(std::string& sortie, const std::string& propriete, const std::optional<T>& valeur) {
  if (valeur) ajouter(sortie, propriete, valeur->css());
}

/// One rule for each side that is set: prefix, side, ending.
template <class T, class Texte>
void ajouterCotes(std::string& sortie, const std::string& prefixe, const std::string& fin,
                  const std::array<std::optional<T>, 4>& valeurs, Texte texte) {
  for (std::size_t i = 0; i < valeurs.size(); ++i) {
    if (!valeurs[i]) continue;
    std::string propriete = prefixe;
    ajouter(sortie, propriete.append(kCotes[i]).append(fin), texte(*valeurs[i]));
  }
}

std::string decoration(int bits) {
  if ((bits & 15) == 0) return "none";
  std::string mots;
  if (bits & 1) mots += "underline ";
  if (bits & 2) mots += "overline ";
  if (bits & 4) mots += "line-through ";
  if (bits & 8) mots += "blink";
  return mots;
}

std::string repetition(std::uint8_t attachement) {
  switch (attachement) {
    case 0:
      return "no-repeat";
    case 1:
      return "repeat";
    case 2:
      return "repeat-x";
    default:
      return "repeat-y";
  }
}

std::string alignement(std::uint8_t mode) {
  switch (mode) {
    case 1:
      return "left";
    case 2:
      return "right";
    case 4:
      return "center";
    default:
      return "justify";
  }
}

}  // namespace

void htmlStyle::setFontFamily(std::string_view nom, std::string_view nom2) {
  m_famille = nom;
  m_famille2 = nom2;
}

std::string htmlStyle::cssPolice() const {
  std::string sortie;
  if (m_famille) sortie += " font-family:'" + *m_famille + "'";
  if (m_famille && !m_famille2.empty()) sortie += ",'" + m_famille2 + "'";
  sortie += ";";  // printed even when no family was ever set
  ajouterSi(sortie, "font-size", m_taillePolice);
  if (m_italique) ajouter(sortie, "font-style", *m_italique ? "italic" : "normal");
  if (m_gras) ajouter(sortie, "font-weight", *m_gras ? "bold" : "normal");
  if (m_decoration) ajouter(sortie, "text-decoration", decoration(*m_decoration));
  ajouterSi(sortie, "color", m_couleur);
  return sortie;
}

std::string htmlStyle::cssFond() const {
  std::string sortie;
  ajouterSi(sortie, "background-color", m_couleurFond);
  // Deliberate (fond-sans-parenthese): the bracket of url( is never closed; readers of old reports expect the
  // bytes.
  if (m_imageFond) sortie += "background-image:url('" + *m_imageFond + "';";
  if (m_attachement) ajouter(sortie, "background-attachment", *m_attachement == 2 ? "fixed" : "scroll");
  // Deliberate (repetition-par-attachement): the word follows the attachment's value, the repeat value only
  // shows it.
  if (m_attachement && m_repetition) ajouter(sortie, "background-repeat", repetition(*m_attachement));
  if (m_positionX || m_positionY) {
    sortie += "background-position: " + (m_positionX ? m_positionX->css() + " " : "0px ");
    sortie += m_positionY ? m_positionY->css() + ";" : "0px;";
  }
  return sortie;
}

std::string htmlStyle::cssTexte() const {
  std::string sortie;
  if (m_alignement) ajouter(sortie, "text-align", alignement(*m_alignement));
  ajouterSi(sortie, "text-indent", m_retrait);
  ajouterSi(sortie, "line-height", m_hauteurLigne);
  ajouterSi(sortie, "letter-spacing", m_espacement);
  return sortie;
}

std::string htmlStyle::css() const {
  const auto taille = [](const htmlSize& valeur) { return valeur.css(); };
  const auto couleur = [](const htmlColor& valeur) { return valeur.css(); };
  const auto trait = [](std::uint8_t valeur) { return htmlBorderStyle(valeur).css(); };
  std::string sortie = cssPolice() + cssFond() + cssTexte();
  ajouterCotes(sortie, "margin-", "", m_marge, taille);
  ajouterCotes(sortie, "padding-", "", m_remplissage, taille);
  ajouterCotes(sortie, "border-", "-width", m_largeurBord, taille);
  ajouterCotes(sortie, "border-", "-style", m_styleBord, trait);
  ajouterCotes(sortie, "border-", "-color", m_couleurBord, couleur);
  return sortie;
}

}  // namespace veltora
