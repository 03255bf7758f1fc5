#include "calc/leve/orientation.h"

#include "base/format.h"
#include "calc/leve/angles_leve.h"

#include <algorithm>
#include <cmath>

namespace veltora {
namespace {

constexpr double kConfondus = 0.01;  // metres: nearer than this nothing is a reference

double gisementVers(const stationLeve& station, const pointConnuLeve& point) {
  return calculGisement(station.x, station.y, point.x, point.y, 0);
}

bool oriente(const referenceLeve& r) { return r.mesure.h && r.distance > kConfondus; }

/// The weighted mean of bearings less directions, none for want of them.
std::optional<double> zeroDuCercle(const std::vector<std::pair<double, double>>& valeurs) {
  if (valeurs.empty()) return {};
  double somme = 0.0;
  double poids = 0.0;
  for (const auto& [v, p] : valeurs) {
    somme += ecartGrades(v, valeurs.front().first) * p;
    poids += p;
  }
  return reduireAngle(valeurs.front().first + somme / poids, kTourGrades);
}

void mesurerEcarts(stationLeve& station) {
  for (referenceLeve& r : station.references) {
    if (oriente(r)) {
      r.ecartH = ecartGrades(*r.mesure.h + station.g0, gisementVers(station, r.point));
      r.lateral = radiansDe(*r.ecartH) * r.distance;
    }
    if (r.mesure.d) r.ecartD = *r.mesure.d - r.distance;
    if (r.mesure.dz && station.z && r.point.z) r.ecartZ = *r.mesure.dz - (*r.point.z - *station.z);
  }
}

void prendreAltitude(stationLeve& station) {
  if (station.z) return;
  double somme = 0.0;
  int nombre = 0;
  for (const referenceLeve& r : station.references) {
    if (!r.mesure.dz || !r.point.z) continue;
    somme += *r.point.z - *r.mesure.dz;
    ++nombre;
  }
  if (nombre > 0) station.z = somme / nombre;
}

}  // namespace

bool orienter(stationLeve& station) {
  std::vector<std::pair<double, double>> valeurs;
  for (referenceLeve& r : station.references) {
    r.distance = std::hypot(r.point.x - station.x, r.point.y - station.y);
    if (oriente(r))
      valeurs.emplace_back(ecartGrades(gisementVers(station, r.point), *r.mesure.h), r.distance);
  }
  const std::optional<double> zero = zeroDuCercle(valeurs);
  if (!zero) return false;
  station.g0 = *zero;
  station.surabondantes = static_cast<int>(valeurs.size()) - 1;
  prendreAltitude(station);
  mesurerEcarts(station);
  double somme = 0.0;
  double poids = 0.0;
  for (const referenceLeve& r : station.references) {
    if (!r.ecartH) continue;
    somme += r.distance * *r.ecartH * *r.ecartH;
    poids += r.distance;
  }
  station.emq.reset();
  if (valeurs.size() > 1)
    station.emq = std::sqrt(somme / poids * static_cast<double>(valeurs.size()) /
                            static_cast<double>(valeurs.size() - 1));
  return true;
}

}  // namespace veltora
