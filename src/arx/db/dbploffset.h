#pragma once

#include "arx/ge/gepoint.h"

#include <vector>

class AcDbPolyline;

/// A vertex of a parallel: the point and the bulge of the segment behind it.
struct AcDbOffsetVertex {
  AcGePoint2d point;
  double bulge = 0.0;
};

/// Vertices of the parallel of a lightweight polyline, one for each of its vertices. Each segment moves to
/// the right of the direction of travel; where two of them met, their parallels meet again.
/// @param offset drawing units, to the left when negative
/// @return nothing where it cannot be had with the same number of vertices: a segment that turns round, an
/// arc
///         whose radius vanishes, neighbours whose parallels do not meet; nor for less than two vertices
std::vector<AcDbOffsetVertex> acdbOffsetVertices(const AcDbPolyline& polyline, double offset);
