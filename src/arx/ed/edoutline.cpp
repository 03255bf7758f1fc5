#include "arx/ed/edoutline.h"

#include <algorithm>

namespace {

/// Above 0 when c lies to the left of the way from a to b, below 0 to its right, 0 on its line.
double side(const AcGePoint2d& a, const AcGePoint2d& b, const AcGePoint2d& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

bool opposite(double a, double b) { return (a > 0.0 && b < 0.0) || (a < 0.0 && b > 0.0); }

/// True when c, which is on the line through a and b, lies between them.
bool between(const AcGePoint2d& a, const AcGePoint2d& b, const AcGePoint2d& c) {
  return c.x >= std::min(a.x, b.x) && c.x <= std::max(a.x, b.x) && c.y >= std::min(a.y, b.y) &&
         c.y <= std::max(a.y, b.y);
}

bool onSegment(const AcGePoint2d& a, const AcGePoint2d& b, const AcGePoint2d& c) {
  return side(a, b, c) == 0.0 && between(a, b, c);
}

bool segmentsCross(const AcGePoint2d& a, const AcGePoint2d& b, const AcGePoint2d& c, const AcGePoint2d& d) {
  return opposite(side(a, b, c), side(a, b, d)) && opposite(side(c, d, a), side(c, d, b));
}

bool segmentsMeet(const AcGePoint2d& a, const AcGePoint2d& b, const AcGePoint2d& c, const AcGePoint2d& d) {
  return segmentsCross(a, b, c, d) || onSegment(a, b, c) || onSegment(a, b, d) || onSegment(c, d, a) ||
         onSegment(c, d, b);
}

}  // namespace

AcEdOutline::AcEdOutline(std::vector<AcGePoint2d> points, bool closed)
    : m_points(std::move(points)), m_closed(closed) {}

template <class Test>
bool AcEdOutline::anySide(Test test) const {
  for (std::size_t i = 0; i + 1 < m_points.size(); ++i)
    if (test(m_points[i], m_points[i + 1])) return true;
  return m_closed && m_points.size() > 2 && test(m_points.back(), m_points.front());
}

bool AcEdOutline::holds(const AcGePoint2d& point) const {
  if (anySide([&](const AcGePoint2d& a, const AcGePoint2d& b) { return onSegment(a, b, point); }))
    return true;
  bool inside = false;
  if (!m_closed) return inside;
  // Counts the sides to the right of the point.
  anySide([&](const AcGePoint2d& a, const AcGePoint2d& b) {
    const bool spans = (a.y > point.y) != (b.y > point.y);
    if (spans && (side(a, b, point) > 0.0) == (b.y > a.y)) inside = !inside;
    return false;
  });
  return inside;
}

bool AcEdOutline::crosses(const AcGePoint2d& a, const AcGePoint2d& b) const {
  return anySide([&](const AcGePoint2d& c, const AcGePoint2d& d) { return segmentsMeet(a, b, c, d); });
}

bool AcEdOutline::cuts(const AcGePoint2d& a, const AcGePoint2d& b) const {
  return anySide([&](const AcGePoint2d& c, const AcGePoint2d& d) { return segmentsCross(a, b, c, d); });
}
