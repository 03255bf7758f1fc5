#pragma once

#include "arx/adesk.h"
#include "arx/ge/gepoint.h"

/// Unbounded straight line of the plane.
class ARX_API AcGeLine2d {
public:
  AcGeLine2d() = default;
  AcGeLine2d(const AcGePoint2d& point, const AcGeVector2d& direction)
      : m_point(point), m_direction(direction) {}
  AcGeLine2d(const AcGePoint2d& first, const AcGePoint2d& second)
      : m_point(first), m_direction(second - first) {}
  [[nodiscard]] AcGePoint2d pointOnLine() const { return m_point; }
  /// Unit vector; zero when the line was made of two equal points.
  [[nodiscard]] AcGeVector2d direction() const { return m_direction.normal(); }
  /// Foot of the perpendicular; the line's point when it has no direction.
  [[nodiscard]] AcGePoint2d closestPointTo(const AcGePoint2d& point) const;
  [[nodiscard]] double distanceTo(const AcGePoint2d& point) const {
    return closestPointTo(point).distanceTo(point);
  }
  [[nodiscard]] bool isParallelTo(const AcGeLine2d& other, const AcGeTol& tol = {}) const;
  [[nodiscard]] bool isOn(const AcGePoint2d& point, const AcGeTol& tol = {}) const;
  /// @return false, `result` unchanged, when the lines are parallel or one has no direction
  bool intersectWith(const AcGeLine2d& other, AcGePoint2d& result, const AcGeTol& tol = {}) const;

private:
  AcGePoint2d m_point;
  AcGeVector2d m_direction{1.0, 0.0};
};

/// Straight segment; its parameter runs from 0 at the start to 1 at the end.
class ARX_API AcGeLineSeg2d {
public:
  AcGeLineSeg2d() = default;
  AcGeLineSeg2d(const AcGePoint2d& start, const AcGePoint2d& end) : m_start(start), m_end(end) {}
  [[nodiscard]] AcGePoint2d startPoint() const { return m_start; }
  [[nodiscard]] AcGePoint2d endPoint() const { return m_end; }
  [[nodiscard]] AcGePoint2d midPoint() const { return m_start + (m_end - m_start) * 0.5; }
  [[nodiscard]] AcGeVector2d direction() const { return (m_end - m_start).normal(); }
  [[nodiscard]] double length() const { return m_start.distanceTo(m_end); }
  [[nodiscard]] AcGePoint2d evalPoint(double param) const { return m_start + (m_end - m_start) * param; }
  /// Parameter of the foot of the perpendicular, outside 0 to 1 beyond the ends; 0 for a segment without
  /// length.
  [[nodiscard]] double paramOf(const AcGePoint2d& point) const;
  [[nodiscard]] AcGePoint2d closestPointTo(const AcGePoint2d& point) const;
  [[nodiscard]] double distanceTo(const AcGePoint2d& point) const {
    return closestPointTo(point).distanceTo(point);
  }
  /// Twice the area of the triangle start, end, point: positive when the point lies to the left.
  [[nodiscard]] double side(const AcGePoint2d& point) const {
    return (m_end - m_start).crossProduct(point - m_start);
  }
  [[nodiscard]] bool isOn(const AcGePoint2d& point, const AcGeTol& tol = {}) const {
    return distanceTo(point) <= tol.equalPoint();
  }
  /// The one point in common, ends included within the tolerance. @return false, `result` unchanged,
  /// otherwise
  bool intersectWith(const AcGeLineSeg2d& other, AcGePoint2d& result, const AcGeTol& tol = {}) const;

private:
  AcGePoint2d m_start;
  AcGePoint2d m_end;
};
