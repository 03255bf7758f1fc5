#include "core/services_terrain.h"

#include "arx/rx/rxdlinkr.h"

namespace veltora {
namespace {

template <class Service>
Service service(const char* name) {
  return reinterpret_cast<Service>(acrxDynamicLinker->exported(kModuleTerrain, name));
}

Terrain* terrainCourant() {
  const auto donnees = service<ServiceDonnees>("currDwgData");
  TerrainsDuDessin* found = nullptr;
  if (donnees) donnees(&found);
  if (!found || found->terrains.empty()) return nullptr;
  if (found->courant < 0 || found->courant >= static_cast<int>(found->terrains.size())) found->courant = 0;
  return found->terrains[static_cast<std::size_t>(found->courant)];
}

}  // namespace

ServicesTerrain::ServicesTerrain()
    : m_altitude(service<ServiceAltitude>("calcZPoint")), m_chemin(service<ServiceChemin>("tinExtractPath")) {
  if (m_altitude && m_chemin) m_terrain = terrainCourant();
}

bool ServicesTerrain::calcZPoint(AcGePoint3d& point) const {
  AcGePoint3d found = point;
  if (!m_terrain || !m_altitude(m_terrain, &found)) return false;
  point.z = found.z;
  return true;
}

CheminsTerrain ServicesTerrain::tinExtractPath(const AcGePoint3d& from, const AcGePoint3d& to) const {
  CheminsTerrain found;
  if (!m_terrain || !m_chemin(m_terrain, &from, &to, &found)) found.clear();
  return found;
}

}  // namespace veltora
