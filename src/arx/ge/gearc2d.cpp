#include "arx/ge/gearc2d.h"

#include "arx/ge/geangle.h"

#include <algorithm>

namespace {

// Keeps of `found` what both operands hold.
template <class First, class Second>
int keepCommon(const First& first, const Second& second, AcGePoint2d (&points)[2], int found,
               const AcGeTol& tol) {
  int kept = 0;
  for (int i = 0; i < found; ++i) {
    if (first.isOn(points[i], tol) && second.isOn(points[i], tol)) points[kept++] = points[i];
  }
  return kept;
}

}  // namespace

AcGeCircArc2d::AcGeCircArc2d(const AcGePoint2d& center, double radius)
    : m_center(center), m_radius(std::fabs(radius)) {}

AcGeCircArc2d::AcGeCircArc2d(const AcGePoint2d& center, double radius, double startAngle, double endAngle,
                             bool clockWise)
    : m_center(center), m_radius(std::fabs(radius)), m_start(startAngle) {
  double sweep = std::fmod(clockWise ? startAngle - endAngle : endAngle - startAngle, kTurn);
  if (!(sweep > 0)) sweep += kTurn;
  m_sweep = clockWise ? -sweep : sweep;
}

AcGeCircArc2d::AcGeCircArc2d(const AcGePoint2d& start, const AcGePoint2d& end, double bulge)
    : m_center(start) {
  const AcGeVector2d chord = end - start;
  const double length = chord.length();
  if (!(length > 0) || !(std::fabs(bulge) > 0) || !std::isfinite(bulge) || !std::isfinite(length)) {
    m_sweep = 0;
    return;
  }
  // From the chord's middle the centre lies at (1 - bulge²) / (4 bulge) of the chord to the left.
  const double offset = (1 / bulge - bulge) / 4;
  m_center = start + chord * 0.5 + chord.perpVector() * offset;
  m_radius = length * (std::fabs(bulge) + 1 / std::fabs(bulge)) / 4;
  m_start = (start - m_center).angle();
  m_sweep = 4 * std::atan(bulge);
}

bool AcGeCircArc2d::isClosed() const { return std::fabs(m_sweep) >= kTurn - 1e-12; }

AcGePoint2d AcGeCircArc2d::pointAt(double angle) const {
  return {m_center.x + m_radius * std::cos(angle), m_center.y + m_radius * std::sin(angle)};
}

double AcGeCircArc2d::paramOf(const AcGePoint2d& point) const {
  const AcGeVector2d direction = point - m_center;
  const double size = std::fabs(m_sweep);
  if (!(size > 0) || !(direction.lengthSqrd() > 0)) return 0.0;
  double past = std::fmod(m_sweep < 0 ? m_start - direction.angle() : direction.angle() - m_start, kTurn);
  if (past < 0) past += kTurn;
  const bool nearerToStart = past > size && kTurn - past < past - size;
  return (nearerToStart ? past - kTurn : past) / size;
}

AcGePoint2d AcGeCircArc2d::closestPointTo(const AcGePoint2d& point) const {
  const double share = paramOf(point);
  return pointAt(m_start + m_sweep * std::clamp(share, 0.0, 1.0));
}

int AcGeCircArc2d::intersectWith(const AcGeLine2d& line, AcGePoint2d (&points)[2], const AcGeTol& tol) const {
  const AcGeVector2d along = line.direction();
  if (!(along.lengthSqrd() > 0)) return 0;
  const AcGePoint2d foot = line.closestPointTo(m_center);
  const double distance = foot.distanceTo(m_center);
  if (distance > m_radius + tol.equalPoint()) return 0;
  const double half = std::sqrt(std::max(0.0, (m_radius - distance) * (m_radius + distance)));
  points[0] = foot - along * half;
  points[1] = foot + along * half;
  const bool touches = std::fabs(m_radius - distance) <= tol.equalPoint();
  if (touches) points[0] = foot;
  int kept = 0;
  for (int i = 0; i < (touches ? 1 : 2); ++i) {
    if (isOn(points[i], tol)) points[kept++] = points[i];
  }
  return kept;
}

int AcGeCircArc2d::intersectWith(const AcGeLineSeg2d& segment, AcGePoint2d (&points)[2],
                                 const AcGeTol& tol) const {
  const int found = intersectWith(AcGeLine2d(segment.startPoint(), segment.endPoint()), points, tol);
  return keepCommon(*this, segment, points, found, tol);
}

int AcGeCircArc2d::intersectWith(const AcGeCircArc2d& other, AcGePoint2d (&points)[2],
                                 const AcGeTol& tol) const {
  const AcGeVector2d between = other.m_center - m_center;
  const double distance = between.length();
  const double reach = m_radius + other.m_radius;
  const double gap = std::fabs(m_radius - other.m_radius);
  if (!(distance > tol.equalPoint()) || distance > reach + tol.equalPoint()) return 0;
  if (distance < gap - tol.equalPoint()) return 0;
  const AcGeVector2d unit = between * (1 / distance);
  const double along = (distance + (m_radius - other.m_radius) * (reach / distance)) / 2;
  const double half = std::sqrt(std::max(0.0, (m_radius - along) * (m_radius + along)));
  const AcGePoint2d foot = m_center + unit * along;
  points[0] = foot - unit.perpVector() * half;
  points[1] = foot + unit.perpVector() * half;
  const bool touches =
      std::fabs(distance - reach) <= tol.equalPoint() || std::fabs(distance - gap) <= tol.equalPoint();
  if (touches) points[0] = foot;
  return keepCommon(*this, other, points, touches ? 1 : 2, tol);
}
