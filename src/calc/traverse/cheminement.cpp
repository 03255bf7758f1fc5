// A bearing is the one before plus the angle less half a turn; of an excess of the sum of the m angles each
// angle gives up one m-th, so that the bearing of a leg gives up as many as angles lead to it.
#include "calc/traverse/cheminement.h"

#include "base/numbers.h"
#include "calc/angles.h"
#include "calc/traverse/obs_fermee.h"
#include "calc/traverse/obs_ouverte.h"

#include <algorithm>
#include <cmath>

namespace veltora {
namespace {

void lireMesures(const donneesObs& obs, const std::wstring& depart, cheminement& chemin) {
  const double versRadians = uniteDeMode(obs.modeAngle).versRadians;
  chemin.stations.push_back(depart);
  for (const ligneObs& ligne : obs.lignes) {
    chemin.angles.push_back(base::lireReel(ligne.angle) * versRadians);
    chemin.distances.push_back(base::lireReel(ligne.distance));
    chemin.stations.push_back(ligne.nom);
    chemin.lignes.push_back(ligne.ligne);
  }
}

}  // namespace

bool fermetureCheminement::tient(const tolerancesPolygonale& tolerances, std::size_t nombreAngles) const {
  return std::abs(angulaire) <= limiteAngulaire(tolerances, nombreAngles, kRadians) &&
         ecart * tolerances.lineaire <= longueur;
}

double fermetureCheminement::note(const tolerancesPolygonale& tolerances, std::size_t nombreAngles) const {
  return std::hypot(angulaire / limiteAngulaire(tolerances, nombreAngles, kRadians),
                    ecart * tolerances.lineaire / longueur);
}

cheminement::cheminement(const polygonaleFermeeObs& obs)
    : depart(obs.vo * uniteDeMode(obs.modeAngle).versRadians) {
  lireMesures(obs, obs.lignes.empty() ? obs.nom : obs.lignes.back().nom, *this);
}

cheminement::cheminement(const polygonaleOuverteObs& obs)
    : ouverte(true),
      depart(obs.depart.gisement * uniteDeMode(obs.modeAngle).versRadians),
      arrivee(obs.arrivee.gisement * uniteDeMode(obs.modeAngle).versRadians),
      but(obs.arrivee.y - obs.depart.y, obs.arrivee.x - obs.depart.x) {
  lireMesures(obs, obs.depart.nom, *this);
  angles.push_back(obs.fermeture * uniteDeMode(obs.modeAngle).versRadians);
}

double cheminement::exces() const {
  double somme = 0.0;
  for (const double angle : angles) somme += angle;
  const auto m = static_cast<double>(angles.size());
  return ouverte ? sansTours(depart + somme - m * kPi - arrivee) : somme - (m + 2.0) * kPi;
}

double cheminement::sansTours(double exces) const {
  return ouverte ? exces - kTour * std::round(exces / kTour) : exces;
}

std::vector<double> cheminement::gisements(double exces) const {
  const double part = exces / static_cast<double>(angles.size());
  std::vector<double> suite{depart};
  for (std::size_t i = 0; i < distances.size(); ++i)
    suite.push_back(ouverte || i > 0 ? suite.back() + angles[i] - kPi - part : depart);
  return suite;
}

std::vector<cheminement::vecteur> cheminement::sommets(const std::vector<double>& gisements) const {
  std::vector<vecteur> points{vecteur()};
  for (std::size_t i = 0; i < distances.size(); ++i)
    points.push_back(points.back() + distances[i] * std::polar(1.0, gisements[i + 1]));
  return points;
}

double cheminement::longueur() const {
  double D = 0.0;
  for (const double distance : distances) D += distance;
  return D;
}

fermetureCheminement cheminement::fermeture() const {
  const double a = exces();
  return {a, std::abs(sommets(gisements(a)).back() - but), longueur()};
}

bool cheminement::fini() const {
  const auto fini = [](double valeur) { return std::isfinite(valeur); };
  return std::all_of(angles.begin(), angles.end(), fini) &&
         std::all_of(distances.begin(), distances.end(), fini) && fini(depart) && fini(arrivee) &&
         fini(std::abs(but));
}

}  // namespace veltora
