#pragma once

#include "arx/ge/gepoint.h"
#include "base/export.h"

#include <vector>

class AcDbPolyline;

namespace veltora {

/// Makes a polyline run through points near it: they become its vertices, in the order of their feet on the
/// curve, one for feet whose parameters differ by less than 1e-6, without arcs between them. It stays open or
/// closed as it is.
/// @param polyligne  open for writing
/// @param points  in the plane; those count that are nearer to the curve than the distance
/// @param distance  drawing units; all points count when it is 0 or below
/// @return the number of vertices, 0 when fewer than two are left: then nothing changes
VELTORA_API int projeterPolyligne(AcDbPolyline& polyligne, const std::vector<AcGePoint2d>& points,
                                  double distance);

}  // namespace veltora
