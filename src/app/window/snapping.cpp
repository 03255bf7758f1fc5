#include "app/window/snapping.h"

#include <cmath>

namespace veltora::app {

const std::vector<SnapName>& snapNames() {
  static const std::vector<SnapName> names = {{AcEdSnap::kEnd, "Extrémité"},
                                              {AcEdSnap::kMiddle, "Milieu"},
                                              {AcEdSnap::kNode, "Nodal"},
                                              {AcEdSnap::kInsertion, "Insertion"},
                                              {AcEdSnap::kIntersection, "Intersection"},
                                              {AcEdSnap::kPerpendicular, "Perpendiculaire"},
                                              {AcEdSnap::kCenter, "Centre"},
                                              {AcEdSnap::kNearest, "Proche"}};
  return names;
}

std::optional<Snapped> snapAt(AcDbDatabase& database, const std::vector<AcEdSnap>& snaps,
                              const AcGePoint3d& place, double aperture, const AcGePoint3d& from) {
  std::optional<Snapped> best;
  double least = aperture;
  for (const AcEdSnap snap : snaps) {
    // These two are offered where no other is: a centre from anywhere on its arc.
    const bool last = snap == AcEdSnap::kNearest || snap == AcEdSnap::kCenter;
    if (last && best) continue;
    const std::optional<AcGePoint3d> point = acedSnap(database, {snap}, place, aperture, from);
    if (!point) continue;
    const double distance = std::hypot(point->x - place.x, point->y - place.y);
    if (!last && distance >= least) continue;
    least = distance;
    best = Snapped{snap, *point};
  }
  return best;
}

}  // namespace veltora::app
