// The sight in its vertical plane.
//
//   d   distance from the station in the plane; D of the point
//   A   (0, station z + H), B  (D, point z + H)
//   P   (d, z) of something that may stand in the way
//   r   how far the worst P rises above AB

#include "stakeout/verifier_vue.h"

#include "arx/db/dblines.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <unordered_set>

namespace veltora {
namespace {

class planVisee {
public:
  planVisee(const unPoint& station, const unPoint& point, double hauteur)
      : m_station(station.x, station.y),
        // Deliberate (vue-hauteur-double): the station's height stands on both ends of the sight.
        m_za(station.z + hauteur),
        m_zb(point.z + hauteur),
        m_longueur(m_station.distanceTo({point.x, point.y})) {}

  void opposer(const AcGePoint3d& lieu) {
    const double d = m_station.distanceTo({lieu.x, lieu.y});
    if ((m_za - lieu.z) * m_longueur - (m_zb - m_za) * (0.0 - d) < 0.0)
      m_pire = std::max(m_pire, distanceVisee(d, lieu.z));
  }
  [[nodiscard]] double pire() const { return m_pire; }

private:
  /// From P to the endless line AB; to A for a sight of no length.
  [[nodiscard]] double distanceVisee(double d, double z) const {
    const double pente = m_zb - m_za;
    const double longueur = std::hypot(m_longueur, pente);
    if (longueur == 0.0) return std::hypot(d, z - m_za);
    return std::abs(m_longueur * (z - m_za) - pente * d) / longueur;
  }

  AcGePoint2d m_station;
  double m_za;
  double m_zb;
  double m_longueur;
  double m_pire = 0.0;
};

}  // namespace

void verifierVue(observationImplantation& point, const observationMiseEnStation& station,
                 const ServicesTerrain& terrain, const base::CArray<obstacleImplantation*>& obstacles,
                 double hauteurStation) {
  point.visibiliteCalculee = 0;
  point.hauteurRequise = Z_ABSENT;
  if (!point.situe() || !station.situe()) return;
  if (point.z == Z_ABSENT) {
    AcGePoint3d place(point.x, point.y, 0.0);
    if (!terrain.calcZPoint(place)) return;
    point.z = place.z;
  }
  const AcGePoint3d de(station.x, station.y, station.z);
  const AcGePoint3d vers(point.x, point.y, point.z);
  const CheminsTerrain chemins = terrain.tinExtractPath(de, vers);
  if (chemins.empty()) return;
  planVisee plan(station, point, hauteurStation);
  for (const std::vector<AcGePoint3d>& chemin : chemins)
    for (const AcGePoint3d& sommet : chemin) plan.opposer(sommet);
  const AcDbLine ligne({de.x, de.y, 0.0}, {vers.x, vers.y, 0.0});
  AcGePoint3dArray coupes;
  for (const obstacleImplantation* obstacle : obstacles) {
    coupes.clear();
    obstacle->intersections(ligne, coupes);
    for (AcGePoint3d& coupe : coupes) {
      if (!terrain.calcZPoint(coupe)) continue;
      coupe.z += obstacle->hauteur;
      plan.opposer(coupe);
    }
  }
  point.visibiliteCalculee = 1;
  point.hauteurRequise = plan.pire();
}

void verifierVisibilites(projetImplantation& projet, const std::vector<std::uint32_t>* ids) {
  const ServicesTerrain terrain;
  if (!terrain) return;
  std::unordered_map<std::uint32_t, observationMiseEnStation*> stations;
  for (observationMiseEnStation* mise : projet.stations) stations.emplace(mise->idMise, mise);
  std::unordered_set<std::uint32_t> choisis;
  if (ids) choisis.insert(ids->begin(), ids->end());
  for (observationImplantation& point : projet.points) {
    if (ids && !choisis.contains(point.id)) continue;
    const auto trouvee = stations.find(point.idStation);
    if (trouvee == stations.end()) continue;
    observationMiseEnStation& station = *trouvee->second;
    if (station.z == Z_ABSENT && station.situe()) {
      AcGePoint3d place(station.x, station.y, 0.0);
      if (terrain.calcZPoint(place)) station.z = place.z;
    }
    if (station.z == Z_ABSENT) continue;
    if (projet.verifierVisibilite) {
      verifierVue(point, station, terrain, projet.obstacles, projet.hauteurStation);
    } else {
      point.hauteurRequise = Z_ABSENT;
      point.visibiliteCalculee = 0;
    }
  }
}

}  // namespace veltora
