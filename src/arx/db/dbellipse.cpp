#include "arx/db/dbellipse.h"

#include "arx/db/dbplanemap.h"
#include "arx/db/dbsections.h"
#include "arx/db/dbsplineoffset.h"
#include "arx/ge/geangle.h"

#include <algorithm>
#include <cmath>

ACDB_DEFINE_MEMBERS(AcDbEllipse, AcDbCurve, "ELLIPSE")

// u, v  half diameters: mapped from the axes, square on each other only when the map turns and scales alike
// a     parameter

namespace {

constexpr double kWhole = 1e-9;   // radians by which a whole turn may be missed
constexpr double kSquare = 1e-6;  // cosine of the angle between major axis and normal
constexpr double kFlattest = 1e-6;
constexpr double kFarthest = 1e100;
constexpr double kRound = 1e-9;  // relative: half diameters that are axes still

bool isPlace(const AcGeVector3d& v) {
  return std::fabs(v.x) <= kFarthest && std::fabs(v.y) <= kFarthest && std::fabs(v.z) <= kFarthest;
}

}  // namespace

bool AcDbEllipse::Shape::take(int code, double value) {
  const auto part = [&](int first, auto& place) {
    if (code != first && code != first + 10 && code != first + 20) return false;
    (code == first ? place.x : code == first + 10 ? place.y : place.z) = value;
    return true;
  };
  switch (code) {
    case 40:
      ratio = value;
      return true;
    case 41:
      start = value;
      return true;
    case 42:
      end = value;
      return true;
    default:
      return part(10, center) || part(11, major) || part(210, normal);
  }
}

bool AcDbEllipse::Shape::isUsable() const {
  if (!isPlace(center.asVector()) || !isPlace(major) || !isPlace(normal)) return false;
  const double size = major.length();
  const double height = normal.length();
  return size > 1e-100 && height > 1e-100 &&
         std::fabs(major.normal().dotProduct(normal.normal())) <= kSquare && ratio >= kFlattest &&
         ratio <= 1 / kFlattest && std::fabs(start) <= 1e9 && std::fabs(end) <= 1e9;
}

AcDbEllipse::AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& majorAxis,
                         double radiusRatio, double startAngle, double endAngle) {
  static_cast<void>(set(center, normal, majorAxis, radiusRatio, startAngle, endAngle));
}

AcGeVector3d AcDbEllipse::normal() const { return acdbUnitNormal(m_shape.normal); }

AcGeVector3d AcDbEllipse::minorAxis() const { return normal().crossProduct(m_shape.major) * m_shape.ratio; }

Acad::ErrorStatus AcDbEllipse::set(const AcGePoint3d& center, const AcGeVector3d& normal,
                                   const AcGeVector3d& majorAxis, double radiusRatio, double startAngle,
                                   double endAngle) {
  Shape shape{center, majorAxis, normal, radiusRatio, startAngle, endAngle};
  if (!shape.isUsable()) return Acad::eInvalidInput;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  m_shape = shape;
  m_shape.start = paramAtAngle(startAngle);
  m_shape.end = paramAtAngle(endAngle);
  return status;
}

Acad::ErrorStatus AcDbEllipse::setCenter(const AcGePoint3d& center) {
  return isPlace(center.asVector()) ? change(m_shape.center, center) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbEllipse::setRadiusRatio(double ratio) {
  return ratio >= kFlattest && ratio <= 1 / kFlattest ? change(m_shape.ratio, ratio) : Acad::eInvalidInput;
}

// tan angle = ratio tan param, in the same quadrant of the same turn.
double AcDbEllipse::angleAtParam(double param) const {
  const double turn = std::round(param / kTurn) * kTurn;
  const double a = param - turn;
  return turn + std::atan2(m_shape.ratio * std::sin(a), std::cos(a));
}

double AcDbEllipse::paramAtAngle(double angle) const {
  const double turn = std::round(angle / kTurn) * kTurn;
  const double a = angle - turn;
  return turn + std::atan2(std::sin(a), m_shape.ratio * std::cos(a));
}

double AcDbEllipse::totalParam() const {
  double total = std::fmod(m_shape.end - m_shape.start, kTurn);
  if (total < 0) total += kTurn;
  return total < kWhole || kTurn - total < kWhole ? kTurn : total;
}

bool AcDbEllipse::isClosed() const { return totalParam() == kTurn; }

std::vector<AcGeCurvePiece> AcDbEllipse::pieces() const {
  AcGeCurvePiece piece;
  piece.isArc = true;
  piece.center = m_shape.center;
  piece.xAxis = m_shape.major.normal();
  piece.yAxis = normal().crossProduct(piece.xAxis).normal();
  piece.radius = m_shape.major.length();
  piece.ratio = m_shape.ratio;
  piece.startAngle = piece.startParam = m_shape.start;
  piece.sweep = totalParam();
  piece.endParam = m_shape.start + piece.sweep;
  const auto at = [&](double a) {
    return piece.center + piece.xAxis * (piece.radius * std::cos(a)) +
           piece.yAxis * (piece.radius * piece.ratio * std::sin(a));
  };
  piece.start = at(piece.startParam);
  piece.end = piece.sweep == kTurn ? piece.start : at(piece.endParam);
  return {piece};
}

// A positive distance lies outside: the right of the counter-clockwise way round.
Acad::ErrorStatus AcDbEllipse::getOffsetCurves(double offset, std::vector<AcDbCurve*>& curves) const {
  return acdbOffsetSpline(*this, normal(), offset, curves);
}

// Axes of the mapped ellipse: u cos a + v sin a is longest at a0 = atan2(2 u.v, u.u - v.v) / 2, where its
// square (u.u + v.v)/2 + (u.u - v.v)/2 cos 2a + u.v sin 2a has its maximum.
Acad::ErrorStatus AcDbEllipse::transformBy(const AcGeMatrix3d& matrix) {
  AcGeVector3d u = matrix * m_shape.major;
  AcGeVector3d v = matrix * minorAxis();
  const AcGeVector3d up = u.crossProduct(v);
  Shape shape = m_shape;
  shape.center = matrix * m_shape.center;
  double shift = 0;
  const bool axes = std::fabs(u.dotProduct(v)) <= kRound * u.length() * v.length();
  const bool alike = std::fabs(v.length() - m_shape.ratio * u.length()) <= kRound * v.length();
  if (!axes || !alike) {
    shift = std::atan2(2 * u.dotProduct(v), u.lengthSqrd() - v.lengthSqrd()) / 2;
    const AcGeVector3d longest = u * std::cos(shift) + v * std::sin(shift);
    v = v * std::cos(shift) - u * std::sin(shift);
    u = longest;
    shape.ratio = v.length() / u.length();
  }
  shape.major = u;
  shape.start -= shift;
  shape.end -= shift;
  const AcGeVector3d lifted = matrix * normal();
  const bool mirrored = up.dotProduct(lifted) < 0;
  if (mirrored) {  // the normal stays on its side, the way round turns
    std::swap(shape.start, shape.end);
    shape.start = -shape.start;
    shape.end = -shape.end;
  }
  const AcGeVector3d unit = mirrored ? -up.normal() : up.normal();
  const bool same = (unit - m_shape.normal).length() <= 1e-15;
  if (!same) shape.normal = unit == AcGeVector3d::kZAxis ? AcGeVector3d::kZAxis : unit;
  if (!shape.isUsable()) return Acad::eCannotScaleNonUniformly;
  return change(m_shape, shape);
}

bool AcDbEllipse::isGivenBy(std::span<const DxfTag> tags) {
  Shape shape;
  return acdbTakeNumbers(tags, "AcDbEllipse",
                         [&](int code, double value) { return shape.take(code, value); }) &&
         shape.isUsable();
}

bool AcDbEllipse::takeGroup(AcDbDxfReader& in) {
  Shape probe;
  return probe.take(in.code(), 0.0) && m_shape.take(in.code(), in.real());
}

void AcDbEllipse::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);
  readSection(in, "AcDbEllipse");
}

void AcDbEllipse::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbEntity::dxfOutFields(out);
  out.subclass("AcDbEllipse");
  out.point(10, m_shape.center);
  out.vector(11, m_shape.major);
  out.normal(m_shape.normal);
  out.real(40, m_shape.ratio);
  out.real(41, m_shape.start);
  out.real(42, m_shape.end);
  writeExtras(out, "AcDbEllipse");
}

void AcDbEllipse::exchangeFields(AcDbEllipse& other) {
  std::swap(m_shape, other.m_shape);
  AcDbCurve::exchangeFields(other);
}
