#include "points/exchange/echantillon_liste.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace veltora {
namespace {

/// Lines that are looked at from the beginning on, and about as many all over the file.
constexpr std::size_t kPremieres = 300;
constexpr std::size_t kReparties = 700;
/// Part of the filled fields that are numbers in a column of numbers.
constexpr double kPartNombres = 0.7;

int decimalesDe(std::string_view texte, char decimale) {
  const std::size_t signe = texte.find(decimale);
  if (signe == std::string_view::npos) return 0;
  const std::size_t fin = std::min(texte.find_first_not_of("0123456789", signe + 1), texte.size());
  return static_cast<int>(fin - signe - 1);
}

}  // namespace

echantillonListe::echantillonListe(std::string_view octets) : m_lecteur(octets) {
  std::size_t prochaine = 0;
  while (m_lecteur.next()) {
    if (m_lecteur.line().find_first_not_of(" \t") == std::string_view::npos) continue;
    if (lignes.size() >= kPremieres && m_lecteur.position() < prochaine) continue;
    lignes.push_back({m_lecteur.number(), m_lecteur.line()});
    if (lignes.size() >= kPremieres) prochaine = m_lecteur.position() + m_lecteur.size() / kReparties;
  }
}

std::wstring texteChamp(const champListe& champ, const base::LineReader& lignes) {
  std::wstring texte = lignes.wide(champ.texte);
  if (!champ.entreGuillemets) return texte;
  for (std::size_t i = 0; (i = texte.find(L"\"\"", i)) != std::wstring::npos; ++i) texte.erase(i, 1);
  return texte;
}

bool estNombre(const champListe& champ, char decimale) {
  double valeur = 0.0;
  return decimale ? lireNombre(champ.texte, decimale, valeur)
                  : lireNombre(champ.texte, '.', valeur) || lireNombre(champ.texte, ',', valeur);
}

int compterNombres(const std::vector<champListe>& champs, char decimale) {
  return static_cast<int>(std::count_if(champs.begin(), champs.end(), [decimale](const champListe& champ) {
    return estNombre(champ, decimale);
  }));
}

void statsColonne::ajouter(const champListe* champ, char decimale) {
  ++lignes;
  valeurs.push_back(std::numeric_limits<double>::quiet_NaN());
  if (!champ || champ->texte.empty()) return;
  const std::string_view texte = champ->texte;
  ++remplis;
  distincts.insert(texte);
  longueur = std::max(longueur, texte.size());
  aBlanc = aBlanc || texte.find(' ') != std::string_view::npos;
  aChiffre += texte.find_first_of("0123456789") != std::string_view::npos ? 1 : 0;
  double valeur = 0.0;
  if (!lireNombre(texte, decimale, valeur)) {
    consecutifs = false;
    return;
  }
  consecutifs = consecutifs && (nombres == 0 || valeur == valeurs[valeurs.size() - 2] + 1.0);
  bas = nombres == 0 ? valeur : std::min(bas, valeur);
  haut = nombres == 0 ? valeur : std::max(haut, valeur);
  ++nombres;
  aDecimales += texte.find(decimale) != std::string_view::npos ? 1 : 0;
  decimales = std::max(decimales, decimalesDe(texte, decimale));
  valeurs.back() = valeur;
}

bool statsColonne::numerique() const { return nombres > 0 && nombres >= kPartNombres * remplis; }

std::vector<placeXY> placesDe(const statsColonne& x, const statsColonne& y) {
  std::vector<placeXY> places;
  for (std::size_t i = 0; i < std::min(x.valeurs.size(), y.valeurs.size()); ++i)
    if (!std::isnan(x.valeurs[i]) && !std::isnan(y.valeurs[i]))
      places.push_back({x.valeurs[i], y.valeurs[i]});
  return places;
}

}  // namespace veltora
