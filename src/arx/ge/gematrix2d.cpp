#include "arx/ge/gematrix2d.h"

#include <cmath>

AcGeMatrix2d AcGeMatrix2d::rotation(double angle, const AcGePoint2d& center) {
  const AcGeVector2d e0{std::cos(angle), std::sin(angle)};
  AcGeMatrix2d m = coordSystem({}, e0, e0.perpVector());
  const AcGePoint2d moved = m * center;
  m.entry[0][2] = center.x - moved.x;
  m.entry[1][2] = center.y - moved.y;
  return m;
}

AcGeMatrix2d AcGeMatrix2d::coordSystem(const AcGePoint2d& origin, const AcGeVector2d& e0,
                                       const AcGeVector2d& e1) {
  AcGeMatrix2d m;
  m.entry[0][0] = e0.x, m.entry[0][1] = e1.x, m.entry[0][2] = origin.x;
  m.entry[1][0] = e0.y, m.entry[1][1] = e1.y, m.entry[1][2] = origin.y;
  return m;
}

AcGeMatrix2d AcGeMatrix2d::alignCoordSys(const AcGePoint2d& fromOrigin, const AcGeVector2d& fromE0,
                                         const AcGeVector2d& fromE1, const AcGePoint2d& toOrigin,
                                         const AcGeVector2d& toE0, const AcGeVector2d& toE1) {
  const AcGeMatrix2d from = coordSystem(fromOrigin, fromE0, fromE1);
  if (!(std::fabs(from.det()) > 0.0)) return {};
  return coordSystem(toOrigin, toE0, toE1) * from.inverse();
}

AcGeMatrix2d AcGeMatrix2d::operator*(const AcGeMatrix2d& right) const {
  AcGeMatrix2d m;
  for (int i = 0; i < 2; ++i) {
    for (int j = 0; j < 3; ++j)
      m.entry[i][j] =
          entry[i][0] * right.entry[0][j] + entry[i][1] * right.entry[1][j] + (j == 2 ? entry[i][2] : 0.0);
  }
  return m;
}

AcGePoint2d AcGeMatrix2d::operator*(const AcGePoint2d& point) const {
  const AcGeVector2d v = *this * AcGeVector2d{point.x, point.y};
  return {v.x + entry[0][2], v.y + entry[1][2]};
}

AcGeVector2d AcGeMatrix2d::operator*(const AcGeVector2d& v) const {
  return {entry[0][0] * v.x + entry[0][1] * v.y, entry[1][0] * v.x + entry[1][1] * v.y};
}

double AcGeMatrix2d::det() const { return entry[0][0] * entry[1][1] - entry[0][1] * entry[1][0]; }

AcGeMatrix2d AcGeMatrix2d::inverse() const {
  const double d = det();
  if (d == 0.0 || !std::isfinite(d)) return {};
  AcGeMatrix2d m;
  m.entry[0][0] = entry[1][1] / d, m.entry[0][1] = -entry[0][1] / d;
  m.entry[1][0] = -entry[1][0] / d, m.entry[1][1] = entry[0][0] / d;
  const AcGeVector2d back = m * translation();
  m.entry[0][2] = -back.x, m.entry[1][2] = -back.y;
  return m;
}

bool AcGeMatrix2d::isConformal(double& scale, double& angle, bool& isMirror, AcGeVector2d& reflex,
                               const AcGeTol& tol) const {
  const AcGeVector2d x{entry[0][0], entry[1][0]};
  const AcGeVector2d y{entry[0][1], entry[1][1]};
  const double s = x.length();
  if (!(s > 0.0) || !std::isfinite(s) || !std::isfinite(entry[0][2]) || !std::isfinite(entry[1][2]))
    return false;
  if (!(std::fabs(y.length() - s) <= tol.equalVector() * s)) return false;
  if (!(std::fabs(x.dotProduct(y)) <= tol.equalVector() * s * s)) return false;
  scale = s;
  isMirror = det() < 0.0;
  // A reflection in a line takes +X to twice the angle of the line.
  const double turned = x.angle();
  angle = isMirror ? 0.0 : turned;
  reflex = isMirror ? AcGeVector2d{std::cos(turned * 0.5), std::sin(turned * 0.5)} : AcGeVector2d{1.0, 0.0};
  return true;
}
