#pragma once

#include "arx/ge/gelin2d.h"

/// Circular arc of the plane, or a whole circle. Angles in radians, counter-clockwise from +X; an arc is
/// given by its start angle and its signed sweep, negative for a clockwise arc.
class ARX_API AcGeCircArc2d {
public:
  AcGeCircArc2d() = default;
  /// Whole circle; a negative radius counts as its absolute value.
  AcGeCircArc2d(const AcGePoint2d& center, double radius);
  /// Arc from one angle to the other, taken counter-clockwise (or clockwise); equal angles give the whole
  /// circle.
  AcGeCircArc2d(const AcGePoint2d& center, double radius, double startAngle, double endAngle,
                bool clockWise = false);
  /// Arc through a chord. @param bulge tangent of a quarter of the sweep, positive for a counter-clockwise
  /// arc. A bulge of 0 or equal points give an arc of radius 0 at the start.
  AcGeCircArc2d(const AcGePoint2d& start, const AcGePoint2d& end, double bulge);

  [[nodiscard]] AcGePoint2d center() const { return m_center; }
  [[nodiscard]] double radius() const { return m_radius; }
  [[nodiscard]] double startAng() const { return m_start; }
  [[nodiscard]] double endAng() const { return m_start + m_sweep; }
  [[nodiscard]] double sweep() const { return m_sweep; }
  [[nodiscard]] bool isClockWise() const { return m_sweep < 0; }
  [[nodiscard]] bool isClosed() const;
  [[nodiscard]] AcGePoint2d startPoint() const { return pointAt(m_start); }
  [[nodiscard]] AcGePoint2d endPoint() const { return pointAt(m_start + m_sweep); }
  [[nodiscard]] AcGePoint2d pointAt(double angle) const;
  [[nodiscard]] double length() const { return m_radius * std::fabs(m_sweep); }
  /// Share of the sweep at which the direction from the centre to the point lies: 0 to 1 on the arc; beyond
  /// it the value nearest to the arc (negative before the start).
  [[nodiscard]] double paramOf(const AcGePoint2d& point) const;
  /// Nearest point of the arc, ends included; the start when the point is the centre.
  [[nodiscard]] AcGePoint2d closestPointTo(const AcGePoint2d& point) const;
  [[nodiscard]] double distanceTo(const AcGePoint2d& point) const {
    return closestPointTo(point).distanceTo(point);
  }
  [[nodiscard]] bool isOn(const AcGePoint2d& point, const AcGeTol& tol = {}) const {
    return distanceTo(point) <= tol.equalPoint();
  }
  /// Number of points in common, at most 2; a line that touches gives 1. Coincident circles give 0.
  int intersectWith(const AcGeLineSeg2d& segment, AcGePoint2d (&points)[2], const AcGeTol& tol = {}) const;
  int intersectWith(const AcGeLine2d& line, AcGePoint2d (&points)[2], const AcGeTol& tol = {}) const;
  int intersectWith(const AcGeCircArc2d& other, AcGePoint2d (&points)[2], const AcGeTol& tol = {}) const;

private:
  AcGePoint2d m_center;
  double m_radius = 0.0;
  double m_start = 0.0;
  double m_sweep = 6.283185307179586;
};
