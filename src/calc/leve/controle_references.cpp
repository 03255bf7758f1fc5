#include "calc/leve/controle_references.h"

#include "base/format.h"
#include "calc/leve/orientation.h"
#include "calc/leve/station_libre.h"

#include <algorithm>
#include <cmath>

namespace veltora {
namespace {

constexpr double kAngleDouteux = 0.005;   // grades
constexpr double kLateralDouteux = 0.03;  // metres
constexpr double kDistanceDouteuse = 0.05;
constexpr double kParMetre = 50e-6;
constexpr double kAltitudeDouteuse = 0.10;

bool angleFaux(const referenceLeve& r) {
  return r.lateral && std::fabs(*r.lateral) > kLateralDouteux && std::fabs(*r.ecartH) > kAngleDouteux;
}
bool distanceFausse(const referenceLeve& r) {
  return r.ecartD && std::fabs(*r.ecartD) > kDistanceDouteuse + kParMetre * r.distance;
}
bool altitudeFausse(const referenceLeve& r) { return r.ecartZ && std::fabs(*r.ecartZ) > kAltitudeDouteuse; }

/// Whether directions and distances fit when a station is computed anew.
bool accorde(stationLeve station, bool libre) {
  if (libre ? !placerLibre(station).empty() : !orienter(station)) return false;
  return station.surabondantes > 0 &&
         std::none_of(station.references.begin(), station.references.end(),
                      [](const referenceLeve& r) { return angleFaux(r) || distanceFausse(r); });
}

std::wstring causeCommune(const stationLeve& station, bool libre) {
  stationLeve inverse = station;
  std::swap(inverse.x, inverse.y);
  for (referenceLeve& r : inverse.references) std::swap(r.point.x, r.point.y);
  if (accorde(std::move(inverse), libre))
    return L"tout s'accorde si X et Y sont inversés dans le canevas, ou le cercle gradué à l'envers";
  const auto avecFacteur = [&](double facteur) {
    stationLeve autre = station;
    for (referenceLeve& r : autre.references)
      if (r.mesure.h) r.mesure.h = *r.mesure.h * facteur;
    return accorde(std::move(autre), libre);
  };
  if (avecFacteur(1.0 / 0.9)) return L"tout s'accorde si les angles sont des degrés";
  if (avecFacteur(0.9)) return L"tout s'accorde si les degrés du carnet sont des grades";
  return {};
}

/// The one reference without which all others fit; null when there is none, or more than one would do.
const referenceLeve* seuleFausse(const stationLeve& station, bool libre) {
  const referenceLeve* trouvee = nullptr;
  for (std::size_t i = 0; i < station.references.size(); ++i) {
    stationLeve sans = station;
    sans.references.erase(sans.references.begin() + static_cast<std::ptrdiff_t>(i));
    if (!accorde(std::move(sans), libre)) continue;
    if (trouvee) return nullptr;
    trouvee = &station.references[i];
  }
  return trouvee;
}

/// The ratio of measured and computed distances when all have the same one.
std::wstring causeDistances(const stationLeve& station) {
  std::vector<double> rapports;
  for (const referenceLeve& r : station.references)
    if (r.mesure.d && r.distance > 1.0) rapports.push_back(*r.mesure.d / r.distance);
  if (rapports.size() < 2) return {};
  const auto [bas, haut] = std::minmax_element(rapports.begin(), rapports.end());
  if (*haut - *bas > 1e-4 * *haut) return {};
  if (std::fabs(*bas / 0.3048 - 1.0) < 1e-3 || std::fabs(*bas * 0.3048 - 1.0) < 1e-3)
    return L" ; toutes sont dans le rapport des pieds aux mètres";
  return base::formater(L" ; toutes sont dans le rapport %.6f : facteur d'échelle ?", (*bas + *haut) / 2.0);
}

std::wstring nomsDe(const stationLeve& station, bool (*faux)(const referenceLeve&)) {
  std::vector<std::wstring> noms;
  for (const referenceLeve& r : station.references)
    if (faux(r)) noms.push_back(r.mesure.nom);
  return noms.empty() ? std::wstring() : base::enumerer(noms);
}

}  // namespace

void controlerReferences(stationLeve& station, bool libre, const std::wstring& nom, int ligne,
                         base::Remarques& remarques) {
  for (referenceLeve& r : station.references)
    r.fausse = angleFaux(r) || distanceFausse(r) || altitudeFausse(r);
  const std::wstring debut = L"station « " + nom + L" » : ";
  if (const std::wstring noms = nomsDe(station, angleFaux); !noms.empty()) {
    std::wstring cause = causeCommune(station, libre);
    if (cause.empty())
      if (const referenceLeve* seule = seuleFausse(station, libre))
        cause = L"les autres s'accordent sans « " + seule->mesure.nom + L" »";
    remarques.douter(ligne, debut + L"des directions manquent leurs références de plus de 3 cm (" + noms +
                                L")" + (cause.empty() ? L"" : L" ; " + cause));
  }
  if (const std::wstring noms = nomsDe(station, distanceFausse); !noms.empty())
    remarques.douter(ligne, debut + L"des distances s'écartent du canevas de plus de 5 cm (" + noms + L")" +
                                causeDistances(station));
  if (const std::wstring noms = nomsDe(station, altitudeFausse); !noms.empty())
    remarques.douter(ligne, debut + L"des altitudes s'écartent du canevas de plus de 10 cm (" + noms +
                                L") ; hauteurs de mire et d'appareil ?");
}

void controlerEchelle(const std::vector<const stationLeve*>& stations, double facteur,
                      base::Remarques& remarques) {
  constexpr double kCourte = 50.0;   // metres: a shorter distance tells nothing of a scale
  constexpr std::size_t kAssez = 3;  // distances
  constexpr double kNegligeable = 20e-6;
  constexpr double kCertain = 4.0;  // standard errors
  std::vector<double> ecarts;
  for (const stationLeve* station : stations)
    for (const referenceLeve& r : station->references)
      if (r.ecartD && r.distance > kCourte && !r.fausse) ecarts.push_back(*r.ecartD / r.distance);
  if (ecarts.size() < kAssez) return;
  const auto nombre = static_cast<double>(ecarts.size());
  double moyenne = 0.0;
  for (const double e : ecarts) moyenne += e / nombre;
  double carres = 0.0;
  for (const double e : ecarts) carres += (e - moyenne) * (e - moyenne);
  const double erreur = std::sqrt(carres / (nombre - 1.0) / nombre);
  if (std::fabs(moyenne) < kNegligeable || std::fabs(moyenne) < kCertain * erreur) return;
  remarques.douter(base::formater(
      L"les distances mesurées sont toutes dans le rapport %.6f à celles du canevas (%.0f "
      L"ppm) : facteur d'échelle de la "
      L"projection, ou altitude ? Avec un facteur de %.6f en tout (--facteur) elles s'accordent",
      1.0 + moyenne, moyenne * 1e6, facteur / (1.0 + moyenne)));
}

}  // namespace veltora
