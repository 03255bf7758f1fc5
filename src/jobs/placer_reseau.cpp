#include "jobs/placer_reseau.h"

#include "core/code_range.h"
#include "jobs/placer_stations.h"

#include <cmath>

namespace veltora {
namespace {

bool connue(double valeur) { return valeur != base::Z_ABSENT; }

// Deliberate (calculer-z-seul): "Calculer Z" alone makes points usable that have no X, Y; those are left out.
void prendre(std::vector<stationCalculee>& liste, const pointACalculer& p) {
  if (connue(p.X) && connue(p.Y))
    liste.push_back({p.nom, p.X, p.Y, connue(p.Z) && std::isfinite(p.Z) ? p.Z : base::Z_ABSENT});
}

}  // namespace

std::vector<stationCalculee> pointsCanevas(const reseauMoindresCarres& reseau) {
  std::vector<stationCalculee> liste;
  for (const pointACalculer& p : reseau.points) {
    if (p.planiConnue) prendre(liste, p);
  }
  return liste;
}

std::vector<stationCalculee> pointsCalcules(const reseauMoindresCarres& reseau) {
  std::vector<stationCalculee> liste;
  for (std::size_t i = 0; i < reseau.points.size(); ++i) {
    const bool utilisable = i < reseau.utilisable.size() && reseau.utilisable[i] != 0;
    if (utilisable && !reseau.points[i].planiConnue) prendre(liste, reseau.points[i]);
  }
  return liste;
}

std::vector<stationCalculee> pointsSitues(const reseauMoindresCarres& reseau) {
  std::vector<stationCalculee> liste;
  for (const pointACalculer& p : reseau.points) prendre(liste, p);
  return liste;
}

int placerReseau(const std::vector<stationCalculee>& points) {
  return placerStations(points, kStationCode, true);
}

}  // namespace veltora
