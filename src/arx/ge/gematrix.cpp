#include "arx/ge/gematrix.h"

#include <algorithm>
#include <cmath>

// Symbols: M = [R | t], R the linear part entry[i][0..2], t the translation entry[i][3].

namespace {

constexpr double kArbitraryAxis = 1.0 / 64.0;  // limit of the arbitrary axis rule, on unit normals

AcGeVector3d columnOf(const AcGeMatrix3d& m, int j) { return {m.entry[0][j], m.entry[1][j], m.entry[2][j]}; }

AcGeMatrix3d fromColumns(const AcGeVector3d& x, const AcGeVector3d& y, const AcGeVector3d& z) {
  AcGeMatrix3d m;
  const AcGeVector3d columns[3] = {x, y, z};
  for (int j = 0; j < 3; ++j) {
    m.entry[0][j] = columns[j].x;
    m.entry[1][j] = columns[j].y;
    m.entry[2][j] = columns[j].z;
  }
  return m;
}

/// Makes `center` the fixed point of a linear map.
void fix(AcGeMatrix3d& m, const AcGePoint3d& center) {
  const AcGePoint3d moved = m * center;
  m.entry[0][3] = center.x - moved.x;
  m.entry[1][3] = center.y - moved.y;
  m.entry[2][3] = center.z - moved.z;
}

}  // namespace

AcGeMatrix3d::AcGeMatrix3d() : entry{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}} {}

AcGeMatrix3d AcGeMatrix3d::translation(const AcGeVector3d& vector) {
  AcGeMatrix3d m;
  m.entry[0][3] = vector.x;
  m.entry[1][3] = vector.y;
  m.entry[2][3] = vector.z;
  return m;
}

AcGeMatrix3d AcGeMatrix3d::rotation(double angle, const AcGeVector3d& axis, const AcGePoint3d& center) {
  const AcGeVector3d u = axis.normal();
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  const double k = 1.0 - c;
  AcGeMatrix3d m = fromColumns({c + u.x * u.x * k, u.y * u.x * k + u.z * s, u.z * u.x * k - u.y * s},
                               {u.x * u.y * k - u.z * s, c + u.y * u.y * k, u.z * u.y * k + u.x * s},
                               {u.x * u.z * k + u.y * s, u.y * u.z * k - u.x * s, c + u.z * u.z * k});
  fix(m, center);
  return m;
}

AcGeMatrix3d AcGeMatrix3d::scaling(double factor, const AcGePoint3d& center) {
  return scaling(AcGeScale3d(factor), center);
}

AcGeMatrix3d AcGeMatrix3d::scaling(const AcGeScale3d& factors, const AcGePoint3d& center) {
  AcGeMatrix3d m = fromColumns({factors.sx, 0, 0}, {0, factors.sy, 0}, {0, 0, factors.sz});
  fix(m, center);
  return m;
}

AcGeMatrix3d AcGeMatrix3d::planeToWorld(const AcGeVector3d& normal) {
  const AcGeVector3d z = normal.lengthSqrd() > 0 ? normal.normal() : AcGeVector3d::kZAxis;
  const bool nearZ = std::fabs(z.x) < kArbitraryAxis && std::fabs(z.y) < kArbitraryAxis;
  const AcGeVector3d x = (nearZ ? AcGeVector3d::kYAxis : AcGeVector3d::kZAxis).crossProduct(z).normal();
  return fromColumns(x, z.crossProduct(x).normal(), z);
}

AcGeMatrix3d AcGeMatrix3d::worldToPlane(const AcGeVector3d& normal) {
  const AcGeMatrix3d m = planeToWorld(normal);
  AcGeMatrix3d transposed;
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) transposed.entry[i][j] = m.entry[j][i];
  }
  return transposed;
}

AcGeMatrix3d AcGeMatrix3d::operator*(const AcGeMatrix3d& right) const {
  AcGeMatrix3d m;
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 4; ++j) {
      m.entry[i][j] = entry[i][0] * right.entry[0][j] + entry[i][1] * right.entry[1][j] +
                      entry[i][2] * right.entry[2][j] + (j == 3 ? entry[i][3] : 0.0);
    }
  }
  return m;
}

AcGePoint3d AcGeMatrix3d::operator*(const AcGePoint3d& point) const {
  const AcGeVector3d v = *this * point.asVector();
  return {v.x + entry[0][3], v.y + entry[1][3], v.z + entry[2][3]};
}

AcGeVector3d AcGeMatrix3d::operator*(const AcGeVector3d& v) const {
  return {entry[0][0] * v.x + entry[0][1] * v.y + entry[0][2] * v.z,
          entry[1][0] * v.x + entry[1][1] * v.y + entry[1][2] * v.z,
          entry[2][0] * v.x + entry[2][1] * v.y + entry[2][2] * v.z};
}

double AcGeMatrix3d::det() const {
  return columnOf(*this, 0).dotProduct(columnOf(*this, 1).crossProduct(columnOf(*this, 2)));
}

AcGeMatrix3d AcGeMatrix3d::inverse() const {
  const double d = det();
  if (d == 0.0 || !std::isfinite(d)) return {};
  const AcGeVector3d a = columnOf(*this, 0);
  const AcGeVector3d b = columnOf(*this, 1);
  const AcGeVector3d c = columnOf(*this, 2);
  const AcGeVector3d rows[3] = {b.crossProduct(c), c.crossProduct(a), a.crossProduct(b)};
  AcGeMatrix3d m;
  for (int i = 0; i < 3; ++i) {
    m.entry[i][0] = rows[i].x / d;
    m.entry[i][1] = rows[i].y / d;
    m.entry[i][2] = rows[i].z / d;
    m.entry[i][3] =
        -(m.entry[i][0] * entry[0][3] + m.entry[i][1] * entry[1][3] + m.entry[i][2] * entry[2][3]);
  }
  return m;
}

double AcGeMatrix3d::scale() const {
  return std::max({columnOf(*this, 0).length(), columnOf(*this, 1).length(), columnOf(*this, 2).length()});
}

bool AcGeMatrix3d::isUniScaledOrtho(const AcGeTol& tol) const {
  const AcGeVector3d x = columnOf(*this, 0);
  const AcGeVector3d y = columnOf(*this, 1);
  const AcGeVector3d z = columnOf(*this, 2);
  const double s = x.length();
  if (!(s > 0.0)) return false;
  const double limit = tol.equalVector() * s;
  if (std::fabs(y.length() - s) > limit || std::fabs(z.length() - s) > limit) return false;
  const double square = tol.equalVector() * s * s;
  return std::fabs(x.dotProduct(y)) <= square && std::fabs(x.dotProduct(z)) <= square &&
         std::fabs(y.dotProduct(z)) <= square;
}

void AcDbExtents::addPoint(const AcGePoint3d& p) {
  m_min = {std::min(m_min.x, p.x), std::min(m_min.y, p.y), std::min(m_min.z, p.z)};
  m_max = {std::max(m_max.x, p.x), std::max(m_max.y, p.y), std::max(m_max.z, p.z)};
}

void AcDbExtents::addExt(const AcDbExtents& other) {
  if (other.isEmpty()) return;
  addPoint(other.m_min);
  addPoint(other.m_max);
}

void AcDbExtents::transformBy(const AcGeMatrix3d& matrix) {
  if (isEmpty()) return;
  AcDbExtents moved;
  for (int corner = 0; corner < 8; ++corner) {
    moved.addPoint(matrix * AcGePoint3d{corner & 1 ? m_max.x : m_min.x, corner & 2 ? m_max.y : m_min.y,
                                        corner & 4 ? m_max.z : m_min.z});
  }
  *this = moved;
}
