#pragma once

#include "arx/ge/gepoint.h"

#include <vector>

class AcDbPolyline;

/// A vertex of a parallel: the point and the bulge of the segment behind it.
struct AcDbOffsetVertex {
  AcGePoint2d point;
  double bulge = 0.0;
  unsigned int vertex = 0;  ///< of the polyline, whose segment goes on here
};

/// Vertices of the parallel of a lightweight polyline. Each segment moves to the right of the direction of
/// travel; where two of them met, their parallels meet again. Segments that would turn round and arcs whose
/// radius vanishes are left out, and their neighbours meet.
/// @param offset drawing units, to the left when negative
/// @return nothing where it cannot be had so: neighbours whose parallels do not meet, no segment left, a
/// vertex nearer to the polyline than the distance where segments were left out, less than two vertices
std::vector<AcDbOffsetVertex> acdbOffsetVertices(const AcDbPolyline& polyline, double offset);
