#include "arx/lisp/lispgeometry.h"

#include "arx/lisp/lispconvert.h"
#include "arx/lisp/lispinterp.h"

#include <cmath>
#include <numbers>

namespace aclisp {

namespace {

/// From 0 to one turn, in the plane; coinciding points give 0.
Value angleFunction(Args& a) {
  ads_point p, q;
  a.point(0, p);
  a.point(1, q);
  if (p[0] == q[0] && p[1] == q[1]) return Value::real(0.0);
  const double angle = std::atan2(q[1] - p[1], q[0] - p[0]);
  return Value::real(angle < 0.0 ? angle + 2.0 * std::numbers::pi : angle);
}

/// In space when both points have a z, else in the plane.
Value distanceFunction(Args& a) {
  ads_point p, q;
  const std::size_t first = a.point(0, p);
  const bool space = first == 3 && a.point(1, q) == 3;
  if (first != 3) a.point(1, q);
  return Value::real(std::hypot(q[0] - p[0], q[1] - p[1], space ? q[2] - p[2] : 0.0));
}

Value polarFunction(Args& a) {
  ads_point p;
  const std::size_t count = a.point(0, p);
  const double angle = a.number(1);
  const double distance = a.number(2);
  const ads_point result = {p[0] + distance * std::cos(angle), p[1] + distance * std::sin(angle), p[2]};
  return pointValue(result, count == 2);
}

/// Where the lines (p q) and (r s) meet; nil for parallel lines and, unless a fifth argument is nil, outside
/// of the segments. In the plane when a point has no z; in space the lines must really meet.
Value intersFunction(Args& a) {
  ads_point p[4];
  bool plane = false;
  for (std::size_t i = 0; i < 4; ++i)
    if (a.point(i, p[i]) == 2) plane = true;
  const bool onSegments = a.size() < 5 || a.has(4);
  double u[3], v[3], w[3];
  for (int k = 0; k < 3; ++k) {
    const bool ignored = plane && k == 2;
    u[k] = ignored ? 0.0 : p[1][k] - p[0][k];
    v[k] = ignored ? 0.0 : p[3][k] - p[2][k];
    w[k] = ignored ? 0.0 : p[2][k] - p[0][k];
  }
  const double n[3] = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0]};
  const double square = n[0] * n[0] + n[1] * n[1] + n[2] * n[2];
  const double lengths = std::hypot(u[0], u[1], u[2]) * std::hypot(v[0], v[1], v[2]);
  constexpr double kParallel = 1e-12;  // sine of the angle between the lines
  if (!(std::sqrt(square) > kParallel * lengths)) return {};
  const double wv[3] = {w[1] * v[2] - w[2] * v[1], w[2] * v[0] - w[0] * v[2], w[0] * v[1] - w[1] * v[0]};
  const double wu[3] = {w[1] * u[2] - w[2] * u[1], w[2] * u[0] - w[0] * u[2], w[0] * u[1] - w[1] * u[0]};
  const double s = (wv[0] * n[0] + wv[1] * n[1] + wv[2] * n[2]) / square;
  const double t = (wu[0] * n[0] + wu[1] * n[1] + wu[2] * n[2]) / square;
  constexpr double kEnd = 1e-10;  // part of a segment by which its end may be missed
  if (onSegments && (s < -kEnd || s > 1 + kEnd || t < -kEnd || t > 1 + kEnd)) return {};
  ads_point meeting, other;
  for (int k = 0; k < 3; ++k) {
    meeting[k] = p[0][k] + s * u[k];
    other[k] = p[2][k] + t * v[k];
  }
  constexpr double kApart = 1e-8;  // of the lines in space, in drawing units
  if (!plane && std::hypot(meeting[0] - other[0], meeting[1] - other[1], meeting[2] - other[2]) > kApart)
    return {};
  return pointValue(meeting, plane);
}

/// There is one coordinate system here, the world: points and displacements stay as they are.
Value transFunction(Args& a) {
  ads_point p;
  a.point(0, p);
  return pointValue(p);
}

constexpr Subr kGeometry[] = {
    function(L"ANGLE", angleFunction, 2, 2), function(L"DISTANCE", distanceFunction, 2, 2),
    function(L"POLAR", polarFunction, 3, 3), function(L"INTERS", intersFunction, 4, 5),
    function(L"TRANS", transFunction, 3, 4),
};

}  // namespace

std::span<const Subr> geometryFunctions() { return kGeometry; }

}  // namespace aclisp
