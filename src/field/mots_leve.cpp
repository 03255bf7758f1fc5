#include "field/mots_leve.h"

#include "base/numbers.h"
#include "base/text.h"
#include "field/mots_gsi.h"

#include <cmath>

namespace veltora {
namespace {

constexpr double kPied = 0.3048;
enum class Grandeur { kLongueur, kAngle };

Grandeur grandeurDe(int indice) { return indice < 30 ? Grandeur::kAngle : Grandeur::kLongueur; }

/// D.MMSSs, minutes and seconds below 60.
bool gradesDeDms(double x, double& grades) {
  constexpr double kAttoSeconde = 1e-9;
  const double degres = std::floor(x + kAttoSeconde);
  const double reste = (x - degres) * 100.0;
  const double minutes = std::floor(reste + kAttoSeconde * 100.0);
  const double secondes = (reste - minutes) * 100.0;
  if (minutes >= 60.0 || secondes >= 60.0 + 1e-6) return false;
  grades = (degres + minutes / 60.0 + secondes / 3600.0) / 0.9;
  return true;
}

/// @param entier  the data as a whole number  @return false for a unit of another kind
bool convertir(Grandeur grandeur, char unite, double entier, double& valeur) {
  const bool angle = grandeur == Grandeur::kAngle;
  switch (unite) {
    case '0':
      valeur = entier / 1e3;
      return !angle;
    case '1':
      valeur = entier / 1e3 * kPied;
      return !angle;
    case '2':
      valeur = entier / 1e5;
      return angle;
    case '3':
      valeur = entier / 1e5 / 0.9;
      return angle;
    case '4':
      return angle && gradesDeDms(entier / 1e5, valeur);
    case '5':
      valeur = entier / 1e4 / 16.0;
      return angle;
    case '6':
      valeur = entier / 1e4;
      return !angle;
    case '7':
      valeur = entier / 1e4 * kPied;
      return !angle;
    case '8':
      valeur = entier / 1e5;
      return !angle;
    default:
      return false;
  }
}

motLeve lireMot(std::string_view lettres, const formeGSI& forme) {
  motLeve mot;
  mot.indice = (lettres[0] - '0') * 10 + (lettres[1] - '0');
  mot.unite = lettres[formeGSI::kUnite];
  const std::string_view donnees = lettres.substr(formeGSI::kDonnees, forme.donnees);
  if (estNumeriqueGSI(mot.indice)) {
    double entier = 0.0;
    mot.lisible = base::lireReelExact(base::trim(donnees), entier) &&
                  convertir(grandeurDe(mot.indice), mot.unite, entier, mot.valeur);
    if (lettres[formeGSI::kSigne] == '-') mot.valeur = -mot.valeur;
    return mot;
  }
  const std::string texte = base::trim(donnees);
  const std::size_t debut = texte.find_first_not_of("0.");
  mot.texte = debut == std::string::npos ? (texte.empty() ? "" : "0") : base::trim(texte.substr(debut));
  return mot;
}

}  // namespace

std::vector<motLeve> motsLeve(std::string_view ligne, bool& entiere) {
  std::vector<motLeve> mots;
  const formeGSI forme(ligne);
  entiere = true;
  std::string_view reste = ligne.substr(std::min(forme.debut, ligne.size()));
  while (!base::trim(reste).empty()) {
    entiere = reste.size() + 1 >= forme.mot && base::isDigit(reste[0]) && base::isDigit(reste[1]);
    if (!entiere) break;
    mots.push_back(lireMot(reste, forme));  // the last word may lack its separator
    reste.remove_prefix(std::min(forme.mot, reste.size()));
  }
  return mots;
}

}  // namespace veltora
