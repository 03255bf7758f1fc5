#pragma once

#include "terrain/triangulation.h"

#include <functional>

namespace veltora::terrain {

/// One contour line: higher ground lies to its left.
struct Courbe {
  long long rang = 0;  ///< its altitude is this many intervals
  double altitude = 0.0;
  std::vector<AcGePoint2d> sommets;  ///< at least two, each on an edge of a face
  bool fermee = false;               ///< goes on from its last vertex to its first
};

/// Contour lines of the multiples of an interval. A line parts the ground below an altitude from that at the
/// altitude or above it: one that reaches vertices of its very altitude runs through them, level ground
/// counts with what is higher, and where ground touches an altitude from below in a point or along a ridge
/// there is none.
/// @param equidistance  above 0, drawing units
/// @param donner  is given each line, by rising altitude; false stops
void tracerCourbes(const Triangulation& surface, double equidistance,
                   const std::function<bool(const Courbe&)>& donner);

/// How many faces contour lines of this interval cross, all in all: about as many vertices they have.
double ampleurCourbes(const Triangulation& surface, double equidistance);

}  // namespace veltora::terrain
