#include "arx/ge/gelin2d.h"

AcGePoint2d AcGeLine2d::closestPointTo(const AcGePoint2d& point) const {
  const double square = m_direction.lengthSqrd();
  if (!(square > 0)) return m_point;
  return m_point + m_direction * (m_direction.dotProduct(point - m_point) / square);
}

bool AcGeLine2d::isParallelTo(const AcGeLine2d& other, const AcGeTol& tol) const {
  return std::fabs(direction().crossProduct(other.direction())) <= tol.equalVector();
}

bool AcGeLine2d::isOn(const AcGePoint2d& point, const AcGeTol& tol) const {
  return distanceTo(point) <= tol.equalPoint();
}

bool AcGeLine2d::intersectWith(const AcGeLine2d& other, AcGePoint2d& result, const AcGeTol& tol) const {
  if (isParallelTo(other, tol)) return false;  // a line without direction is parallel to all
  const double cross = m_direction.crossProduct(other.m_direction);
  result = m_point + m_direction * ((other.m_point - m_point).crossProduct(other.m_direction) / cross);
  return true;
}

double AcGeLineSeg2d::paramOf(const AcGePoint2d& point) const {
  const AcGeVector2d along = m_end - m_start;
  const double square = along.lengthSqrd();
  return square > 0 ? along.dotProduct(point - m_start) / square : 0.0;
}

AcGePoint2d AcGeLineSeg2d::closestPointTo(const AcGePoint2d& point) const {
  const double t = paramOf(point);
  if (t <= 0) return m_start;
  return t >= 1 ? m_end : evalPoint(t);
}

bool AcGeLineSeg2d::intersectWith(const AcGeLineSeg2d& other, AcGePoint2d& result, const AcGeTol& tol) const {
  AcGePoint2d cross;
  if (!AcGeLine2d(m_start, m_end).intersectWith(AcGeLine2d(other.m_start, other.m_end), cross, tol))
    return false;
  if (!isOn(cross, tol) || !other.isOn(cross, tol)) return false;
  result = cross;
  return true;
}
