#include "arx/db/dbcircle.h"

#include "arx/db/dbplanemap.h"
#include "arx/ge/geangle.h"

#include <cmath>

ACDB_DEFINE_MEMBERS(AcDbCircle, AcDbCurve, "CIRCLE")
ACDB_DEFINE_MEMBERS(AcDbArc, AcDbCurve, "ARC")

namespace {

bool isLength(double value) { return value >= 0 && std::isfinite(value); }

}  // namespace

// ---- what both share

AcDbRoundCurve::AcDbRoundCurve(const AcGePoint3d& center, const AcGeVector3d& normal, double radius)
    : m_center(acdbToPlane(center, acdbUnitNormal(normal))),
      m_normal(acdbUnitNormal(normal)),
      m_radius(isLength(radius) ? radius : 0.0) {}

AcGePoint3d AcDbRoundCurve::center() const { return acdbToWorld(m_center, m_normal); }
Acad::ErrorStatus AcDbRoundCurve::setCenter(const AcGePoint3d& center) {
  return change(m_center, acdbToPlane(center, m_normal));
}
Acad::ErrorStatus AcDbRoundCurve::setRadius(double radius) {
  return isLength(radius) ? change(m_radius, radius) : Acad::eInvalidInput;
}
Acad::ErrorStatus AcDbRoundCurve::setThickness(double thickness) { return change(m_thickness, thickness); }

Acad::ErrorStatus AcDbRoundCurve::setNormal(const AcGeVector3d& normal) {
  const AcGeVector3d unit = acdbUnitNormal(normal);
  const Acad::ErrorStatus status = change(m_center, acdbToPlane(center(), unit));
  if (status == Acad::eOk) m_normal = unit;
  return status;
}

std::vector<AcGeCurvePiece> AcDbRoundCurve::roundPiece(double start, double sweep) const {
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(acdbUnitNormal(m_normal));
  const double radius = std::fabs(m_radius);
  AcGeCurvePiece piece;
  piece.isArc = true;
  piece.center = center();
  piece.xAxis = toWorld * AcGeVector3d::kXAxis;
  piece.yAxis = toWorld * AcGeVector3d::kYAxis;
  piece.radius = radius;
  piece.startAngle = piece.startParam = start;
  piece.sweep = sweep;
  piece.endParam = start + sweep;
  const auto at = [&](double a) {
    return piece.center + piece.xAxis * (radius * std::cos(a)) + piece.yAxis * (radius * std::sin(a));
  };
  piece.start = at(start);
  piece.end = sweep >= kTurn ? piece.start : at(start + sweep);
  return {piece};
}

Acad::ErrorStatus AcDbRoundCurve::getOffsetCurves(double offset, std::vector<AcDbCurve*>& curves) const {
  if (!(m_radius + offset > 0)) return Acad::eInvalidInput;
  auto* copy = static_cast<AcDbRoundCurve*>(cloneAlone());
  copy->m_radius = m_radius + offset;
  curves.push_back(copy);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbRoundCurve::transformRound(const AcDbPlaneMap& plane) {
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  if (!plane.valid || !plane.conformal) return Acad::eCannotScaleNonUniformly;
  m_center = plane.map * m_center;
  m_normal = plane.normal;
  m_radius *= plane.factor;
  m_thickness *= plane.depth;
  return Acad::eOk;
}

bool AcDbRoundCurve::takeGroup(AcDbDxfReader& in) {
  switch (in.code()) {
    case 39:
      m_thickness = in.real();
      return true;
    case 40:
      m_radius = in.real();
      return true;
    default:
      return in.coordinate(10, m_center) || in.coordinate(210, m_normal);
  }
}

void AcDbRoundCurve::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);
  readSection(in, "AcDbCircle");
}

void AcDbRoundCurve::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbEntity::dxfOutFields(out);
  out.subclass("AcDbCircle");
  if (m_thickness != 0.0) out.real(39, m_thickness);
  out.point(10, m_center);
  out.real(40, m_radius);
  out.normal(m_normal);
  writeExtras(out, "AcDbCircle");
}

void AcDbRoundCurve::exchangeFields(AcDbRoundCurve& other) {
  std::swap(m_center, other.m_center);
  std::swap(m_normal, other.m_normal);
  std::swap(m_radius, other.m_radius);
  std::swap(m_thickness, other.m_thickness);
  AcDbCurve::exchangeFields(other);
}

// ---- circle

std::vector<AcGeCurvePiece> AcDbCircle::pieces() const { return roundPiece(0.0, kTurn); }

Acad::ErrorStatus AcDbCircle::transformBy(const AcGeMatrix3d& matrix) {
  return transformRound(AcDbPlaneMap(matrix, normal()));
}

// ---- arc

AcDbArc::AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle)
    : AcDbArc(center, AcGeVector3d::kZAxis, radius, startAngle, endAngle) {}

AcDbArc::AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double startAngle,
                 double endAngle)
    : AcDbRoundCurve(center, normal, radius),
      m_startDegrees(acdbDegrees(startAngle)),
      m_endDegrees(acdbDegrees(endAngle)) {}

double AcDbArc::startAngle() const { return acdbRadians(m_startDegrees); }
double AcDbArc::endAngle() const { return acdbRadians(m_endDegrees); }
Acad::ErrorStatus AcDbArc::setStartAngle(double radians) {
  return std::isfinite(radians) ? change(m_startDegrees, acdbDegrees(radians)) : Acad::eInvalidInput;
}
Acad::ErrorStatus AcDbArc::setEndAngle(double radians) {
  return std::isfinite(radians) ? change(m_endDegrees, acdbDegrees(radians)) : Acad::eInvalidInput;
}

double AcDbArc::totalAngle() const {
  double degrees = std::fmod(m_endDegrees - m_startDegrees, 360.0);
  if (!(degrees > 0)) degrees += 360;
  return acdbRadians(degrees);
}

std::vector<AcGeCurvePiece> AcDbArc::pieces() const { return roundPiece(startAngle(), totalAngle()); }

Acad::ErrorStatus AcDbArc::transformBy(const AcGeMatrix3d& matrix) {
  const AcDbPlaneMap plane(matrix, normal());
  const Acad::ErrorStatus status = transformRound(plane);
  if (status != Acad::eOk) return status;
  m_startDegrees = plane.turned(m_startDegrees);
  m_endDegrees = plane.turned(m_endDegrees);
  if (plane.mirrored) std::swap(m_startDegrees, m_endDegrees);
  return status;
}

bool AcDbArc::takeGroup(AcDbDxfReader& in) {
  switch (in.code()) {
    case 50:
      m_startDegrees = in.real();
      return true;
    case 51:
      m_endDegrees = in.real();
      return true;
    default:
      return AcDbRoundCurve::takeGroup(in);
  }
}

void AcDbArc::dxfInFields(AcDbDxfReader& in) {
  AcDbRoundCurve::dxfInFields(in);
  readSection(in, "AcDbArc");
}

void AcDbArc::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbRoundCurve::dxfOutFields(out);
  out.subclass("AcDbArc");
  out.real(50, m_startDegrees);
  out.real(51, m_endDegrees);
  writeExtras(out, "AcDbArc");
}

void AcDbArc::exchangeFields(AcDbArc& other) {
  std::swap(m_startDegrees, other.m_startDegrees);
  std::swap(m_endDegrees, other.m_endDegrees);
  AcDbRoundCurve::exchangeFields(other);
}
