#include "arx/db/dblines.h"

#include "arx/db/dbplanemap.h"
#include "arx/db/dbsections.h"
#include "arx/gi/girenderer.h"

#include <cmath>

ACDB_DEFINE_MEMBERS(AcDbPoint, AcDbEntity, "POINT")
ACDB_DEFINE_MEMBERS(AcDbLine, AcDbCurve, "LINE")
ACDB_DEFINE_MEMBERS(AcDbRay, AcDbCurve, "RAY")
ACDB_DEFINE_MEMBERS(AcDbXline, AcDbCurve, "XLINE")
ACDB_DEFINE_MEMBERS(AcDbFace, AcDbEntity, "3DFACE")

namespace {

// Thickness and normal of a thing that is kept in world coordinates; a collapsed plane leaves both.
void transformExtrusion(const AcGeMatrix3d& matrix, AcGeVector3d& normal, double& thickness) {
  const AcDbPlaneMap plane(matrix, normal);
  if (!plane.valid) return;
  normal = plane.normal;
  thickness *= plane.depth;
}

}  // namespace

// ---- point

Acad::ErrorStatus AcDbPoint::setPosition(const AcGePoint3d& position) { return change(m_position, position); }
Acad::ErrorStatus AcDbPoint::setThickness(double thickness) { return change(m_thickness, thickness); }
Acad::ErrorStatus AcDbPoint::setNormal(const AcGeVector3d& normal) {
  return change(m_normal, acdbUnitNormal(normal));
}

Acad::ErrorStatus AcDbPoint::transformBy(const AcGeMatrix3d& matrix) {
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  m_position = matrix * m_position;
  transformExtrusion(matrix, m_normal, m_thickness);
  return status;
}

void AcDbPoint::subWorldDraw(AcGiWorldDraw& draw) const {
  if (AcGiRenderer* const renderer = draw.geometry().renderer()) return renderer->dot(m_position);
  const AcGePoint3d ends[] = {m_position, m_position + m_normal * m_thickness};
  draw.geometry().area(ends);
}

bool AcDbPoint::takeGroup(AcDbDxfReader& in) {
  switch (in.code()) {
    case 39:
      m_thickness = in.real();
      return true;
    case 50:
      m_xAngle = in.real();
      return true;
    default:
      return in.coordinate(10, m_position) || in.coordinate(210, m_normal);
  }
}

void AcDbPoint::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);
  readSection(in, "AcDbPoint");
}

void AcDbPoint::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbEntity::dxfOutFields(out);
  out.subclass("AcDbPoint");
  out.point(10, m_position);
  if (m_thickness != 0.0) out.real(39, m_thickness);
  out.normal(m_normal);
  if (m_xAngle != 0.0) out.real(50, m_xAngle);
  writeExtras(out, "AcDbPoint");
}

void AcDbPoint::exchangeFields(AcDbPoint& other) {
  std::swap(m_position, other.m_position);
  std::swap(m_normal, other.m_normal);
  std::swap(m_thickness, other.m_thickness);
  std::swap(m_xAngle, other.m_xAngle);
  AcDbEntity::exchangeFields(other);
}

// ---- line

Acad::ErrorStatus AcDbLine::setStartPoint(const AcGePoint3d& point) { return change(m_start, point); }
Acad::ErrorStatus AcDbLine::setEndPoint(const AcGePoint3d& point) { return change(m_end, point); }
Acad::ErrorStatus AcDbLine::setThickness(double thickness) { return change(m_thickness, thickness); }
Acad::ErrorStatus AcDbLine::setNormal(const AcGeVector3d& normal) {
  return change(m_normal, acdbUnitNormal(normal));
}

std::vector<AcGeCurvePiece> AcDbLine::pieces() const {
  AcGeCurvePiece piece;
  piece.start = m_start;
  piece.end = m_end;
  piece.endParam = m_start.distanceTo(m_end);
  return {piece};
}

Acad::ErrorStatus AcDbLine::getOffsetCurves(double offset, std::vector<AcDbCurve*>& curves) const {
  const AcGeVector3d right = (m_end - m_start).crossProduct(acdbUnitNormal(m_normal)).normal();
  if (!(right.lengthSqrd() > 0) || !std::isfinite(offset)) return Acad::eInvalidInput;
  auto* copy = static_cast<AcDbLine*>(cloneAlone());
  copy->m_start = m_start + right * offset;
  copy->m_end = m_end + right * offset;
  curves.push_back(copy);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::transformBy(const AcGeMatrix3d& matrix) {
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  m_start = matrix * m_start;
  m_end = matrix * m_end;
  transformExtrusion(matrix, m_normal, m_thickness);
  return status;
}

bool AcDbLine::takeGroup(AcDbDxfReader& in) {
  if (in.code() == 39) {
    m_thickness = in.real();
    return true;
  }
  return in.coordinate(10, m_start) || in.coordinate(11, m_end) || in.coordinate(210, m_normal);
}

void AcDbLine::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);
  readSection(in, "AcDbLine");
}

void AcDbLine::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbEntity::dxfOutFields(out);
  out.subclass("AcDbLine");
  if (m_thickness != 0.0) out.real(39, m_thickness);
  out.point(10, m_start);
  out.point(11, m_end);
  out.normal(m_normal);
  writeExtras(out, "AcDbLine");
}

void AcDbLine::exchangeFields(AcDbLine& other) {
  std::swap(m_start, other.m_start);
  std::swap(m_end, other.m_end);
  std::swap(m_normal, other.m_normal);
  std::swap(m_thickness, other.m_thickness);
  AcDbCurve::exchangeFields(other);
}

// ---- lines without an end

Acad::ErrorStatus AcDbEndlessLine::setBasePoint(const AcGePoint3d& point) { return change(m_base, point); }

Acad::ErrorStatus AcDbEndlessLine::setUnitDir(const AcGeVector3d& direction) {
  const AcGeVector3d unit = direction.normal();
  if (!(std::fabs(unit.length() - 1) < 1e-6)) return Acad::eInvalidInput;
  return change(m_direction, unit);
}

Acad::ErrorStatus AcDbEndlessLine::getOffsetCurves(double offset, std::vector<AcDbCurve*>& curves) const {
  const AcGeVector3d right = AcGeVector3d(m_direction.y, -m_direction.x, 0).normal();
  if (!(right.lengthSqrd() > 0) || !std::isfinite(offset)) return Acad::eInvalidInput;
  auto* copy = static_cast<AcDbEndlessLine*>(cloneAlone());
  copy->m_base = m_base + right * offset;
  curves.push_back(copy);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEndlessLine::transformBy(const AcGeMatrix3d& matrix) {
  const AcGeVector3d turned = (matrix * m_direction).normal();
  if (!(turned.lengthSqrd() > 0)) return Acad::eInvalidInput;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  m_base = matrix * m_base;
  const bool same = (turned - m_direction).length() < 1e-15;
  if (!same) m_direction = turned;
  return status;
}

bool AcDbEndlessLine::takeGroup(AcDbDxfReader& in) {
  return in.coordinate(10, m_base) || in.coordinate(11, m_direction);
}

void AcDbEndlessLine::readLine(AcDbDxfReader& in, std::string_view marker) {
  AcDbEntity::dxfInFields(in);
  readSection(in, marker);
}

void AcDbEndlessLine::writeLine(AcDbDxfWriter& out, std::string_view marker) const {
  AcDbEntity::dxfOutFields(out);
  out.subclass(marker);
  out.point(10, m_base);
  out.vector(11, m_direction);
  writeExtras(out, marker);
}

void AcDbEndlessLine::exchangeFields(AcDbEndlessLine& other) {
  std::swap(m_base, other.m_base);
  std::swap(m_direction, other.m_direction);
  AcDbCurve::exchangeFields(other);
}

std::vector<AcGeCurvePiece> AcDbRay::pieces() const {
  AcGeCurvePiece piece;
  piece.start = basePoint();
  piece.end = basePoint() + unitDir();
  piece.endParam = unitDir().length();
  piece.endless = true;
  return {piece};
}

std::vector<AcGeCurvePiece> AcDbXline::pieces() const {
  AcGeCurvePiece piece;
  piece.start = basePoint();
  piece.end = basePoint() + unitDir().normal();
  piece.endless = piece.endlessBefore = true;
  return {piece};
}

bool AcDbXline::isGivenBy(std::span<const DxfTag> tags) {
  AcGePoint3d base, direction;
  const bool numbers = acdbTakeNumbers(tags, "AcDbXline", [&](int code, double value) {
    const bool isPoint = code % 10 <= 1 && code >= 10 && code <= 31;
    AcGePoint3d& point = code % 10 == 0 ? base : direction;
    if (isPoint) (code < 20 ? point.x : code < 30 ? point.y : point.z) = value;
    return isPoint;
  });
  const double length = direction.asVector().length();
  return numbers && length > 1e-9 && length < 1e9;
}

// ---- face

Acad::ErrorStatus AcDbFace::getVertexAt(Adesk::UInt16 index, AcGePoint3d& point) const {
  if (index > 3) return Acad::eInvalidIndex;
  point = m_corners[index];
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::setVertexAt(Adesk::UInt16 index, const AcGePoint3d& point) {
  return index > 3 ? Acad::eInvalidIndex : change(m_corners[index], point);
}

Acad::ErrorStatus AcDbFace::isEdgeVisibleAt(Adesk::UInt16 index, bool& visible) const {
  if (index > 3) return Acad::eInvalidIndex;
  visible = (m_hiddenEdges & (1 << index)) == 0;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::transformBy(const AcGeMatrix3d& matrix) {
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  for (AcGePoint3d& corner : m_corners) corner = matrix * corner;
  return status;
}

void AcDbFace::subWorldDraw(AcGiWorldDraw& draw) const {
  AcGiRenderer* const renderer = draw.geometry().renderer();
  if (!renderer) return draw.geometry().area(m_corners);
  for (int i = 0; i < 4; ++i) {
    const AcGePoint3d edge[] = {m_corners[i], m_corners[(i + 1) % 4]};
    if ((m_hiddenEdges & (1 << i)) == 0 && edge[0].distanceTo(edge[1]) > 0.0) renderer->edges(edge);
  }
}

bool AcDbFace::takeGroup(AcDbDxfReader& in) {
  if (in.code() == 70) {
    m_hiddenEdges = static_cast<Adesk::Int16>(in.integer());
    return true;
  }
  for (int i = 0; i < 4; ++i) {
    if (!in.coordinate(10 + i, m_corners[i])) continue;
    m_fourth = m_fourth || i == 3;
    return true;
  }
  return false;
}

void AcDbFace::dxfInFields(AcDbDxfReader& in) {
  m_fourth = false;
  AcDbEntity::dxfInFields(in);
  readSection(in, "AcDbFace");
  if (!m_fourth) m_corners[3] = m_corners[2];  // a triangle may leave the fourth out
  m_fourth = true;
}

void AcDbFace::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbEntity::dxfOutFields(out);
  out.subclass("AcDbFace");
  for (int i = 0; i < 4; ++i) out.point(10 + i, m_corners[i]);
  if (m_hiddenEdges != 0) out.integer(70, m_hiddenEdges);
  writeExtras(out, "AcDbFace");
}

void AcDbFace::exchangeFields(AcDbFace& other) {
  std::swap(m_corners, other.m_corners);
  std::swap(m_hiddenEdges, other.m_hiddenEdges);
  std::swap(m_fourth, other.m_fourth);
  AcDbEntity::exchangeFields(other);
}
