#include "points/exchange/champs_liste.h"

#include "base/numbers.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace veltora {
namespace {

constexpr std::string_view kBlancs = " \t";
/// Longest text that is looked at as a number, in bytes.
constexpr std::size_t kLongueurNombre = 64;

std::string_view sansBlancs(std::string_view texte) {
  const std::size_t debut = std::min(texte.find_first_not_of(kBlancs), texte.size());
  texte.remove_prefix(debut);
  return texte.substr(0, texte.find_last_not_of(kBlancs) + 1);
}

/// Where the quote that opens at `debut` is closed; npos for nowhere.
std::size_t fermeture(std::string_view ligne, std::size_t debut) {
  for (std::size_t i = ligne.find('"', debut + 1); i != std::string_view::npos; i = ligne.find('"', i + 2))
    if (i + 1 >= ligne.size() || ligne[i + 1] != '"') return i;
  return std::string_view::npos;
}

void decouperBlancs(std::string_view ligne, std::vector<champListe>& champs) {
  std::size_t i = 0;
  while ((i = ligne.find_first_not_of(kBlancs, i)) != std::string_view::npos) {
    const std::size_t ferme = ligne[i] == '"' ? fermeture(ligne, i) : std::string_view::npos;
    if (ferme != std::string_view::npos) {
      champs.push_back({ligne.substr(i + 1, ferme - i - 1), true});
      i = ferme + 1;
      continue;
    }
    const std::size_t fin = std::min(ligne.find_first_of(kBlancs, i), ligne.size());
    champs.push_back({ligne.substr(i, fin - i), false});
    i = fin;
  }
}

/// Bytes of the mark that parts thousands here, 0 for none: blanks, apostrophes, in either encoding.
std::size_t milliers(std::string_view reste) {
  if (reste[0] == ' ' || reste[0] == '\'' || reste[0] == '\xA0' || reste[0] == '\x92') return 1;
  if (reste.starts_with("\xC2\xA0")) return 2;
  return reste.starts_with("\xE2\x80\xAF") || reste.starts_with("\xE2\x80\x99") ? 3 : 0;
}

/// The digits of a number on their way to the plain form, with the groups of thousands that were met.
class Chiffres {
public:
  bool ajouter(char c) {
    if (m_taille == m_octets.size()) return false;
    m_octets[m_taille++] = c;
    return true;
  }
  bool chiffre(char c) { return ++m_groupe, ajouter(c); }
  /// @param marque  its first byte @return false when the group in front of it is none of thousands
  bool milliers(char marque) {
    if (m_decimales || (m_marque && m_marque != marque) || !groupeEntier()) return false;
    m_marque = marque;
    m_groupe = 0;
    ++m_marques;
    return true;
  }
  bool decimale() {
    if (m_decimales || !groupeFinal()) return false;
    m_decimales = true;
    return ajouter('.');
  }
  /// @param autreSigne  the sign that is not the decimal one: alone it parts no thousands
  bool lire(char autreSigne, double& valeur) const {
    if (!m_decimales && !groupeFinal()) return false;
    if (m_marque == autreSigne && m_marques < 2 && !m_decimales) return false;
    return base::lireReelExact({m_octets.data(), m_taille}, valeur);
  }

private:
  [[nodiscard]] bool groupeEntier() const { return m_marque ? m_groupe == 3 : m_groupe > 0 && m_groupe <= 3; }
  [[nodiscard]] bool groupeFinal() const { return !m_marque || m_groupe == 3; }

  std::array<char, kLongueurNombre> m_octets{};
  std::size_t m_taille = 0;
  int m_groupe = 0;
  int m_marques = 0;
  char m_marque = '\0';
  bool m_decimales = false;
};

bool lireAvecMilliers(std::string_view texte, char decimale, double& valeur) {
  const char autre = decimale == ',' ? '.' : ',';
  Chiffres chiffres;
  for (std::size_t i = 0; i < texte.size(); ++i) {
    const char c = texte[i];
    const std::size_t marque = milliers(texte.substr(i));
    const bool bon = c >= '0' && c <= '9'       ? chiffres.chiffre(c)
                     : c == decimale            ? chiffres.decimale()
                     : c == autre || marque > 0 ? chiffres.milliers(c)
                                                : chiffres.ajouter(c);
    if (!bon) return false;
    if (marque > 1) i += marque - 1;
  }
  return chiffres.lire(autre, valeur);
}

}  // namespace

void decouperLigne(std::string_view ligne, char separateur, std::vector<champListe>& champs) {
  champs.clear();
  if (separateur == ' ') return decouperBlancs(ligne, champs);
  for (std::size_t i = 0; i <= ligne.size();) {
    const std::size_t premier =
        std::min(ligne.find_first_not_of(separateur == '\t' ? " " : kBlancs, i), ligne.size());
    const bool ouvre = premier < ligne.size() && ligne[premier] == '"';
    const std::size_t ferme = ouvre ? fermeture(ligne, premier) : std::string_view::npos;
    const bool guillemets = ferme != std::string_view::npos;
    const std::size_t fin = std::min(ligne.find(separateur, guillemets ? ferme : i), ligne.size());
    if (guillemets && sansBlancs(ligne.substr(ferme + 1, fin - ferme - 1)).empty())
      champs.push_back({ligne.substr(premier + 1, ferme - premier - 1), true});
    else
      champs.push_back({sansBlancs(ligne.substr(i, fin - i)), false});
    i = fin + 1;
  }
}

bool lireNombre(std::string_view texte, char decimale, double& valeur) {
  if (texte.empty() || texte.size() > kLongueurNombre) return false;
  double lu = 0.0;
  const bool simple =
      texte.find_first_not_of(decimale == '.' ? "0123456789.+-" : "0123456789+-") == std::string_view::npos;
  if (!(simple ? base::lireReelExact(texte, lu) : lireAvecMilliers(texte, decimale, lu))) return false;
  if (!std::isfinite(lu)) return false;
  valeur = lu;
  return true;
}

}  // namespace veltora
