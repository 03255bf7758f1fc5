#pragma once

#include "arx/db/dbents.h"
#include "stakeout/params_implantation.h"

#include <vector>

namespace veltora {

/// The points that setting out an element needs, in its order, in world coordinates: vertices of polylines,
/// the position of points and blocks, ends and steps of lines, arcs, light polylines, and of clothoids that
/// such a polyline shows. A vertex that two segments share stands twice. Other entities give none.
/// @return false, with `points` empty, when the steps would give more than a million points
VELTORA_API bool pointsElement(const AcDbEntity& entite, const paramsImplantation& params,
                               AcGePoint3dArray& points);

/// Angles of the points of an arc, counter-clockwise from `a1` to `a2`, radians, both included.
/// @param rayon  below 1e-8 there are none  @param pas  step along the arc, or with `erreurMax` the largest
/// distance between chord and arc; above 0, drawing units
/// @return false for more than a million
VELTORA_API bool anglesArc(double rayon, double a1, double a2, double pas, bool erreurMax,
                           std::vector<double>& angles);

}  // namespace veltora
