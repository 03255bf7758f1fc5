#pragma once

#include "arx/ge/gebezier.h"

#include <vector>

/// A point that two curves have in common.
struct AcGeMeet {
  enum Kind { kEnd, kTouch, kCross };
  AcGePoint3d point;
  double gap = 0.0;        ///< distance of the curves there
  Kind kind = kCross;      ///< an end of one of them, where they touch, or where they cross
  bool ofStretch = false;  ///< an end of a stretch in common
};

/// Appends where two curves come as near to each other as `tol`, drawing units. Boxes of what is left of both
/// are halved until Newton's rule takes over; a stretch in common gives its two ends alone. A place may come
/// more than once, a little displaced where the curves touch: see `acdbIntersect`.
void acgeMeet(const AcGeBezierCurve3d& a, const AcGeBezierCurve3d& b, double tol,
              std::vector<AcGeMeet>& found);
