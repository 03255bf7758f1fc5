#pragma once

#include "arx/adesk.h"
#include "arx/ge/gepoint.h"

#include <vector>

/// A line through points of the plan view, by which entities are selected: open, or closed to a polygon.
/// A polygon holds what lies within an odd number of its turns; its border belongs to it.
class ARX_API AcEdOutline {
public:
  /// @param points  of an open line 2 or more, of a polygon 3 or more; fewer enclose nothing
  AcEdOutline(std::vector<AcGePoint2d> points, bool closed);
  /// True when the polygon holds the point, or the open line goes through it.
  [[nodiscard]] bool holds(const AcGePoint2d& point) const;
  /// True when the line and the segment have a point in common.
  [[nodiscard]] bool crosses(const AcGePoint2d& a, const AcGePoint2d& b) const;
  /// True when the line and the segment cross in their inside, so that the segment leaves the polygon.
  [[nodiscard]] bool cuts(const AcGePoint2d& a, const AcGePoint2d& b) const;
  [[nodiscard]] bool closed() const { return m_closed; }
  [[nodiscard]] const std::vector<AcGePoint2d>& points() const { return m_points; }

private:
  template <class Test>
  bool anySide(Test test) const;

  std::vector<AcGePoint2d> m_points;
  bool m_closed;
};
