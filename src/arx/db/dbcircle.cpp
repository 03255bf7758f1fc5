#include "arx/db/dbcircle.h"

#include "arx/db/dbplanemap.h"

#include <cmath>

ACDB_DEFINE_MEMBERS(AcDbCircle, AcDbCurve, "CIRCLE")
ACDB_DEFINE_MEMBERS(AcDbArc, AcDbCurve, "ARC")

namespace {

constexpr double kTurn = 6.283185307179586;

bool isLength(double value) { return value >= 0 && std::isfinite(value); }

template <class Value>
Acad::ErrorStatus change(AcDbObject& object, Value& field, const Value& value) {
  const Acad::ErrorStatus status = object.assertWriteEnabled();
  if (status == Acad::eOk) field = value;
  return status;
}

AcDbCurvePiece arcPiece(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double start,
                        double sweep) {
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(acdbUnitNormal(normal));
  AcDbCurvePiece piece;
  piece.isArc = true;
  piece.center = acdbToWorld(center, normal);
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
  return piece;
}

// A new radius and centre under a map; refuses what makes an ellipse.
Acad::ErrorStatus transformRound(const AcDbPlaneMap& plane, AcGePoint3d& center, AcGeVector3d& normal,
                                 double& radius, double& thickness) {
  if (!plane.valid || !plane.conformal) return Acad::eCannotScaleNonUniformly;
  center = plane.map * center;
  normal = plane.normal;
  radius *= plane.factor;
  thickness *= plane.depth;
  return Acad::eOk;
}

// The points of the plane in the coordinates of another plane, same place in the world.
Acad::ErrorStatus changeNormal(AcDbObject& object, AcGeVector3d& normal, AcGePoint3d& point,
                               const AcGeVector3d& to) {
  const Acad::ErrorStatus status = object.assertWriteEnabled();
  if (status != Acad::eOk) return status;
  point = acdbToPlane(acdbToWorld(point, normal), acdbUnitNormal(to));
  normal = acdbUnitNormal(to);
  return status;
}

}  // namespace

// ---- circle

AcDbCircle::AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius)
    : m_center(acdbToPlane(center, acdbUnitNormal(normal))),
      m_normal(acdbUnitNormal(normal)),
      m_radius(isLength(radius) ? radius : 0.0) {}

AcGePoint3d AcDbCircle::center() const { return acdbToWorld(m_center, m_normal); }
Acad::ErrorStatus AcDbCircle::setCenter(const AcGePoint3d& center) {
  return change(*this, m_center, acdbToPlane(center, m_normal));
}
Acad::ErrorStatus AcDbCircle::setRadius(double radius) {
  return isLength(radius) ? change(*this, m_radius, radius) : Acad::eInvalidInput;
}
Acad::ErrorStatus AcDbCircle::setThickness(double thickness) { return change(*this, m_thickness, thickness); }
Acad::ErrorStatus AcDbCircle::setNormal(const AcGeVector3d& normal) {
  return changeNormal(*this, m_normal, m_center, normal);
}

std::vector<AcDbCurvePiece> AcDbCircle::pieces() const {
  return {arcPiece(m_center, m_normal, std::fabs(m_radius), 0.0, kTurn)};
}

Acad::ErrorStatus AcDbCircle::getOffsetCurves(double offset, std::vector<AcDbCurve*>& curves) const {
  if (!(m_radius + offset > 0)) return Acad::eInvalidInput;
  auto* copy = static_cast<AcDbCircle*>(cloneAlone());
  copy->m_radius = m_radius + offset;
  curves.push_back(copy);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCircle::transformBy(const AcGeMatrix3d& matrix) {
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  return transformRound(AcDbPlaneMap(matrix, m_normal), m_center, m_normal, m_radius, m_thickness);
}

bool AcDbCircle::takeGroup(AcDbDxfReader& in) {
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

void AcDbCircle::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);
  readSection(in, "AcDbCircle");
}

void AcDbCircle::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbEntity::dxfOutFields(out);
  out.subclass("AcDbCircle");
  if (m_thickness != 0.0) out.real(39, m_thickness);
  out.point(10, m_center);
  out.real(40, m_radius);
  out.normal(m_normal);
  writeExtras(out, "AcDbCircle");
}

void AcDbCircle::exchangeFields(AcDbCircle& other) {
  std::swap(m_center, other.m_center);
  std::swap(m_normal, other.m_normal);
  std::swap(m_radius, other.m_radius);
  std::swap(m_thickness, other.m_thickness);
  AcDbCurve::exchangeFields(other);
}

// ---- arc

AcDbArc::AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle)
    : AcDbArc(center, AcGeVector3d::kZAxis, radius, startAngle, endAngle) {}

AcDbArc::AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double startAngle,
                 double endAngle)
    : m_center(acdbToPlane(center, acdbUnitNormal(normal))),
      m_normal(acdbUnitNormal(normal)),
      m_radius(isLength(radius) ? radius : 0.0),
      m_startDegrees(acdbDegrees(startAngle)),
      m_endDegrees(acdbDegrees(endAngle)) {}

AcGePoint3d AcDbArc::center() const { return acdbToWorld(m_center, m_normal); }
Acad::ErrorStatus AcDbArc::setCenter(const AcGePoint3d& center) {
  return change(*this, m_center, acdbToPlane(center, m_normal));
}
Acad::ErrorStatus AcDbArc::setRadius(double radius) {
  return isLength(radius) ? change(*this, m_radius, radius) : Acad::eInvalidInput;
}
double AcDbArc::startAngle() const { return acdbRadians(m_startDegrees); }
double AcDbArc::endAngle() const { return acdbRadians(m_endDegrees); }
Acad::ErrorStatus AcDbArc::setStartAngle(double radians) {
  return std::isfinite(radians) ? change(*this, m_startDegrees, acdbDegrees(radians)) : Acad::eInvalidInput;
}
Acad::ErrorStatus AcDbArc::setEndAngle(double radians) {
  return std::isfinite(radians) ? change(*this, m_endDegrees, acdbDegrees(radians)) : Acad::eInvalidInput;
}

double AcDbArc::totalAngle() const {
  double degrees = std::fmod(m_endDegrees - m_startDegrees, 360.0);
  if (!(degrees > 0)) degrees += 360;
  return acdbRadians(degrees);
}

Acad::ErrorStatus AcDbArc::setThickness(double thickness) { return change(*this, m_thickness, thickness); }
Acad::ErrorStatus AcDbArc::setNormal(const AcGeVector3d& normal) {
  return changeNormal(*this, m_normal, m_center, normal);
}

std::vector<AcDbCurvePiece> AcDbArc::pieces() const {
  AcDbCurvePiece piece = arcPiece(m_center, m_normal, std::fabs(m_radius), startAngle(), totalAngle());
  return {piece};
}

Acad::ErrorStatus AcDbArc::getOffsetCurves(double offset, std::vector<AcDbCurve*>& curves) const {
  if (!(m_radius + offset > 0)) return Acad::eInvalidInput;
  auto* copy = static_cast<AcDbArc*>(cloneAlone());
  copy->m_radius = m_radius + offset;
  curves.push_back(copy);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::transformBy(const AcGeMatrix3d& matrix) {
  Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  const AcDbPlaneMap plane(matrix, m_normal);
  status = transformRound(plane, m_center, m_normal, m_radius, m_thickness);
  if (status != Acad::eOk) return status;
  m_startDegrees = plane.turned(m_startDegrees);
  m_endDegrees = plane.turned(m_endDegrees);
  if (plane.mirrored) std::swap(m_startDegrees, m_endDegrees);
  return status;
}

bool AcDbArc::takeGroup(AcDbDxfReader& in) {
  switch (in.code()) {
    case 39:
      m_thickness = in.real();
      return true;
    case 40:
      m_radius = in.real();
      return true;
    case 50:
      m_startDegrees = in.real();
      return true;
    case 51:
      m_endDegrees = in.real();
      return true;
    default:
      return in.coordinate(10, m_center) || in.coordinate(210, m_normal);
  }
}

void AcDbArc::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);
  readSection(in, "AcDbCircle");
  readSection(in, "AcDbArc");
}

void AcDbArc::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbEntity::dxfOutFields(out);
  out.subclass("AcDbCircle");
  if (m_thickness != 0.0) out.real(39, m_thickness);
  out.point(10, m_center);
  out.real(40, m_radius);
  out.normal(m_normal);
  writeExtras(out, "AcDbCircle");
  out.subclass("AcDbArc");
  out.real(50, m_startDegrees);
  out.real(51, m_endDegrees);
  writeExtras(out, "AcDbArc");
}

void AcDbArc::exchangeFields(AcDbArc& other) {
  std::swap(m_center, other.m_center);
  std::swap(m_normal, other.m_normal);
  std::swap(m_radius, other.m_radius);
  std::swap(m_thickness, other.m_thickness);
  std::swap(m_startDegrees, other.m_startDegrees);
  std::swap(m_endDegrees, other.m_endDegrees);
  AcDbCurve::exchangeFields(other);
}
