#pragma once

#include "arx/ge/gepoint.h"
#include "base/export.h"

#include <vector>

/// What the sibling terrain module offers to this one. It is found by name among the loaded modules and never
/// loaded from here: without it there are no altitudes and no paths, and nothing is printed.
namespace veltora {

/// A terrain of the sibling module, which alone looks inside.
class Terrain;

/// The terrains of the current drawing, as the sibling module hands them out.
struct TerrainsDuDessin {
  std::vector<Terrain*> terrains;
  int courant = 0;  ///< index of the current one; may stand out of range
};

/// Polylines over the ground, each from its first to its last vertex.
using CheminsTerrain = std::vector<std::vector<AcGePoint3d>>;

/// The sibling module's exports, all extern "C".
/// `currDwgData` fills a pointer to the drawing's list, null when it has none.
using ServiceDonnees = void (*)(TerrainsDuDessin** donnees);
/// `calcZPoint` sets z of a point from its x and y; 0 when it lies outside.
using ServiceAltitude = int (*)(Terrain* terrain, AcGePoint3d* point);
/// `tinExtractPath` fills the ground's polylines along a segment: each vertex is an end or a crossing with an
/// edge. 0 when the segment meets no ground.
using ServiceChemin = int (*)(Terrain* terrain, const AcGePoint3d* from, const AcGePoint3d* to,
                              CheminsTerrain* out);

inline constexpr const wchar_t* kModuleTerrain = L"QRAL-ARX2021-64BITS.arx";

/// The services for the current terrain of the current drawing; what was found stands for one operation only.
class VELTORA_API ServicesTerrain {
public:
  /// Looks for the module and for the current terrain; an index out of range is reset to 0 in the list.
  ServicesTerrain();

  /// Is there a terrain?
  explicit operator bool() const { return m_terrain != nullptr; }
  /// Sets z from x and y. @return false without terrain or outside of it; z is as it was then
  bool calcZPoint(AcGePoint3d& point) const;
  /// The ground along the segment from one point to the other, in the plane; empty without terrain or outside
  /// of it.
  [[nodiscard]] CheminsTerrain tinExtractPath(const AcGePoint3d& from, const AcGePoint3d& to) const;

private:
  Terrain* m_terrain = nullptr;
  ServiceAltitude m_altitude = nullptr;
  ServiceChemin m_chemin = nullptr;
};

}  // namespace veltora
