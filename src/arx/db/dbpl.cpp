#include "arx/db/dbpl.h"

#include "arx/db/dbplanemap.h"
#include "arx/db/dbploffset.h"
#include "arx/gi/girenderer.h"

#include <algorithm>
#include <cmath>

ACDB_DEFINE_MEMBERS(AcDbPolyline, AcDbCurve, "LWPOLYLINE")

namespace {

constexpr unsigned int kMaxReserve = 1U << 20;  // a count in a file is no reason to ask for more memory

bool isFinite(const AcGePoint2d& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

AcGeCurvePiece pieceOf(const AcGePoint2d& from, const AcGePoint2d& to, double bulge, double elevation,
                       const AcGeVector3d& normal) {
  AcGeCurvePiece piece;
  piece.start = acdbToWorld({from.x, from.y, elevation}, normal);
  piece.end = acdbToWorld({to.x, to.y, elevation}, normal);
  if (!acdbIsCurved(bulge) || from == to) return piece;
  const AcGeCircArc2d arc(from, to, bulge);
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(acdbUnitNormal(normal));
  piece.isArc = true;
  piece.center = acdbToWorld({arc.center().x, arc.center().y, elevation}, normal);
  piece.xAxis = toWorld * AcGeVector3d::kXAxis;
  piece.yAxis = toWorld * AcGeVector3d::kYAxis;
  piece.radius = arc.radius();
  piece.startAngle = arc.startAng();
  piece.sweep = arc.sweep();
  return piece;
}

}  // namespace

Acad::ErrorStatus AcDbPolyline::addVertexAt(unsigned int index, const AcGePoint2d& point, double bulge,
                                            double startWidth, double endWidth) {
  if (!isFinite(point) || !std::isfinite(bulge)) return Acad::eInvalidInput;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  const std::size_t at = std::min<std::size_t>(index, m_vertices.size());
  Vertex vertex;
  vertex.point = point;
  vertex.bulge = bulge;
  m_vertices.insert(m_vertices.begin() + static_cast<std::ptrdiff_t>(at), vertex);
  if (!(startWidth >= 0) && !(endWidth >= 0)) return status;
  return setWidthsAt(static_cast<unsigned int>(at), std::max(startWidth, 0.0), std::max(endWidth, 0.0));
}

Acad::ErrorStatus AcDbPolyline::removeVertexAt(unsigned int index) {
  if (index >= numVerts()) return Acad::eInvalidIndex;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status == Acad::eOk) m_vertices.erase(m_vertices.begin() + index);
  return status;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned int index, AcGePoint2d& point) const {
  if (index >= numVerts()) return Acad::eInvalidIndex;
  point = m_vertices[index].point;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned int index, AcGePoint3d& point) const {
  if (index >= numVerts()) return Acad::eInvalidIndex;
  const AcGePoint2d& flat = m_vertices[index].point;
  point = acdbToWorld({flat.x, flat.y, m_elevation}, m_normal);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setPointAt(unsigned int index, const AcGePoint2d& point) {
  if (index >= numVerts()) return Acad::eInvalidIndex;
  if (!isFinite(point)) return Acad::eInvalidInput;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status == Acad::eOk) m_vertices[index].point = point;
  return status;
}

Acad::ErrorStatus AcDbPolyline::getBulgeAt(unsigned int index, double& bulge) const {
  if (index >= numVerts()) return Acad::eInvalidIndex;
  bulge = m_vertices[index].bulge;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setBulgeAt(unsigned int index, double bulge) {
  if (index >= numVerts()) return Acad::eInvalidIndex;
  if (!std::isfinite(bulge)) return Acad::eInvalidInput;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status == Acad::eOk) m_vertices[index].bulge = bulge;
  return status;
}

Acad::ErrorStatus AcDbPolyline::getWidthsAt(unsigned int index, double& startWidth, double& endWidth) const {
  if (index >= numVerts()) return Acad::eInvalidIndex;
  const bool constant = m_constantWidth != 0.0;
  startWidth = constant ? m_constantWidth : m_vertices[index].startWidth;
  endWidth = constant ? m_constantWidth : m_vertices[index].endWidth;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setWidthsAt(unsigned int index, double startWidth, double endWidth) {
  if (index >= numVerts()) return Acad::eInvalidIndex;
  if (!(startWidth >= 0) || !(endWidth >= 0)) return Acad::eInvalidInput;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  if (m_constantWidth != 0.0) {
    for (Vertex& vertex : m_vertices) vertex.startWidth = vertex.endWidth = m_constantWidth;
    m_constantWidth = 0.0;
  }
  m_vertices[index].startWidth = startWidth;
  m_vertices[index].endWidth = endWidth;
  return status;
}

bool AcDbPolyline::hasBulges() const {
  return std::any_of(m_vertices.begin(), m_vertices.end(), [](const Vertex& v) { return v.bulge != 0.0; });
}

bool AcDbPolyline::hasWidth() const {
  return m_constantWidth != 0.0 || std::any_of(m_vertices.begin(), m_vertices.end(), [](const Vertex& v) {
           return v.startWidth != 0.0 || v.endWidth != 0.0;
         });
}

Acad::ErrorStatus AcDbPolyline::setClosed(bool closed) {
  return change(m_flags, static_cast<Adesk::Int16>(closed ? m_flags | 1 : m_flags & ~1));
}

Acad::ErrorStatus AcDbPolyline::setPlinegen(bool generate) {
  return change(m_flags, static_cast<Adesk::Int16>(generate ? m_flags | 128 : m_flags & ~128));
}

Acad::ErrorStatus AcDbPolyline::setElevation(double elevation) { return change(m_elevation, elevation); }

Acad::ErrorStatus AcDbPolyline::setThickness(double thickness) { return change(m_thickness, thickness); }

Acad::ErrorStatus AcDbPolyline::setNormal(const AcGeVector3d& normal) {
  return change(m_normal, acdbUnitNormal(normal));
}

Acad::ErrorStatus AcDbPolyline::getConstantWidth(double& width) const {
  double result = m_constantWidth;
  if (result == 0.0 && !m_vertices.empty()) result = m_vertices[0].startWidth;
  for (const Vertex& v : m_vertices) {
    if (m_constantWidth == 0.0 && (v.startWidth != result || v.endWidth != result))
      return Acad::eInvalidInput;
  }
  width = result;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setConstantWidth(double width) {
  if (!(width >= 0) || !std::isfinite(width)) return Acad::eInvalidInput;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  m_constantWidth = width;
  for (Vertex& vertex : m_vertices) vertex.startWidth = vertex.endWidth = 0.0;
  return status;
}

bool AcDbPolyline::hasSegment(unsigned int index) const {
  return index + 1 < numVerts() || (isClosed() && numVerts() > 1 && index + 1 == numVerts());
}

AcDbPolyline::SegType AcDbPolyline::segType(unsigned int index) const {
  if (index >= numVerts()) return kEmpty;
  if (!hasSegment(index)) return kPoint;
  const Vertex& from = m_vertices[index];
  if (from.point == m_vertices[(index + 1) % numVerts()].point) return kCoincident;
  return acdbIsCurved(from.bulge) ? kArc : kLine;
}

Acad::ErrorStatus AcDbPolyline::getLineSegAt(unsigned int index, AcGeLineSeg2d& segment) const {
  if (index >= numVerts()) return Acad::eInvalidIndex;
  if (segType(index) != kLine) return Acad::eInvalidInput;
  segment = AcGeLineSeg2d(m_vertices[index].point, m_vertices[(index + 1) % numVerts()].point);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getArcSegAt(unsigned int index, AcGeCircArc2d& arc) const {
  if (index >= numVerts()) return Acad::eInvalidIndex;
  if (segType(index) != kArc) return Acad::eInvalidInput;
  const Vertex& from = m_vertices[index];
  arc = AcGeCircArc2d(from.point, m_vertices[(index + 1) % numVerts()].point, from.bulge);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::reverseCurve() {
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk || m_vertices.empty()) return status;
  const std::vector<Vertex> old = m_vertices;
  const std::size_t n = old.size();
  for (std::size_t i = 0; i < n; ++i) {
    Vertex& vertex = m_vertices[i];
    vertex = old[n - 1 - i];
    const Vertex& segment = old[(2 * n - 2 - i) % n];  // the one that ended here, walked backwards
    vertex.bulge = -segment.bulge;
    vertex.startWidth = segment.endWidth;
    vertex.endWidth = segment.startWidth;
  }
  return status;
}

std::vector<AcGeCurvePiece> AcDbPolyline::pieces() const {
  std::vector<AcGeCurvePiece> result;
  const std::size_t n = m_vertices.size();
  if (n == 1) {  // one vertex: a place without length
    result.push_back(pieceOf(m_vertices[0].point, m_vertices[0].point, 0.0, m_elevation, m_normal));
    result[0].endParam = 0.0;
    return result;
  }
  result.reserve(n);
  for (unsigned int i = 0; hasSegment(i); ++i) {
    const Vertex& from = m_vertices[i];
    result.push_back(pieceOf(from.point, m_vertices[(i + 1) % n].point, from.bulge, m_elevation, m_normal));
    result.back().startParam = i;
    result.back().endParam = i + 1.0;
  }
  return result;
}

void AcDbPolyline::subWorldDraw(AcGiWorldDraw& draw) const {
  AcGiRenderer* const renderer = draw.geometry().renderer();
  if (!renderer || !hasWidth()) return AcDbCurve::subWorldDraw(draw);
  std::vector<std::pair<double, double>> widths;
  for (unsigned int i = 0; hasSegment(i); ++i) {
    std::pair<double, double>& width = widths.emplace_back();
    getWidthsAt(i, width.first, width.second);
  }
  renderer->wideCurve(pieces(), widths);
}

Acad::ErrorStatus AcDbPolyline::getOffsetCurves(double offset, std::vector<AcDbCurve*>& curves) const {
  const std::vector<AcDbOffsetVertex> moved = acdbOffsetVertices(*this, offset);
  if (moved.empty()) return Acad::eInvalidInput;
  auto* copy = static_cast<AcDbPolyline*>(cloneAlone());
  for (std::size_t i = 0; i < moved.size(); ++i) {
    copy->m_vertices[i] = m_vertices[moved[i].vertex];
    copy->m_vertices[i].point = moved[i].point;
    copy->m_vertices[i].bulge = moved[i].bulge;
  }
  copy->m_vertices.resize(moved.size());
  curves.push_back(copy);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::transformBy(const AcGeMatrix3d& matrix) {
  const AcDbPlaneMap plane(matrix, m_normal);
  if (!plane.valid || (!plane.conformal && hasBulges())) return Acad::eCannotScaleNonUniformly;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  for (Vertex& vertex : m_vertices) {
    const AcGePoint3d moved = plane.map * AcGePoint3d(vertex.point.x, vertex.point.y, m_elevation);
    vertex.point = {moved.x, moved.y};
    if (plane.mirrored) vertex.bulge = -vertex.bulge;
    vertex.startWidth *= plane.factor;
    vertex.endWidth *= plane.factor;
  }
  const double(&row)[4] = plane.map.entry[2];
  m_elevation = row[2] * m_elevation + row[3];
  m_normal = plane.normal;
  m_constantWidth *= plane.factor;
  m_thickness *= plane.depth;
  return status;
}

bool AcDbPolyline::takeGroup(AcDbDxfReader& in) {
  switch (in.code()) {
    case 90:
      m_vertices.reserve(static_cast<std::size_t>(std::clamp(in.integer(), 0, int{kMaxReserve})));
      return true;
    case 70:
      m_flags = static_cast<Adesk::Int16>(in.integer());
      return true;
    case 43:
      m_constantWidth = in.real();
      return true;
    case 38:
      m_elevation = in.real();
      return true;
    case 39:
      m_thickness = in.real();
      return true;
    case 10:
      m_vertices.emplace_back().point.x = in.real();
      return true;
    default:
      return takeVertexGroup(in) || in.coordinate(210, m_normal);
  }
}

// What belongs to the vertex begun last; in front of the first one it has no meaning and is dropped.
bool AcDbPolyline::takeVertexGroup(AcDbDxfReader& in) {
  Vertex none;
  Vertex& vertex = m_vertices.empty() ? none : m_vertices.back();
  switch (in.code()) {
    case 20:
      vertex.point.y = in.real();
      return true;
    case 40:
      vertex.startWidth = in.real();
      return true;
    case 41:
      vertex.endWidth = in.real();
      return true;
    case 42:
      vertex.bulge = in.real();
      return true;
    case 91:
      vertex.identifier = in.integer();
      return true;
    default:
      return false;
  }
}

void AcDbPolyline::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);
  readSection(in, "AcDbPolyline");
}

void AcDbPolyline::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbEntity::dxfOutFields(out);
  out.subclass("AcDbPolyline");
  out.integer(90, static_cast<Adesk::Int64>(m_vertices.size()));
  out.integer(70, m_flags);
  const bool ownWidths = std::any_of(m_vertices.begin(), m_vertices.end(), [](const Vertex& v) {
    return v.startWidth != 0.0 || v.endWidth != 0.0;
  });
  if (!ownWidths || m_constantWidth != 0.0) out.real(43, m_constantWidth);
  if (m_elevation != 0.0) out.real(38, m_elevation);
  if (m_thickness != 0.0) out.real(39, m_thickness);
  for (const Vertex& vertex : m_vertices) {
    out.point2d(10, vertex.point.x, vertex.point.y);
    if (ownWidths) out.real(40, vertex.startWidth);
    if (ownWidths) out.real(41, vertex.endWidth);
    if (vertex.bulge != 0.0) out.real(42, vertex.bulge);
    if (vertex.identifier != 0) out.integer(91, vertex.identifier);
  }
  out.normal(m_normal);
  writeExtras(out, "AcDbPolyline");
}

void AcDbPolyline::exchangeFields(AcDbPolyline& other) {
  m_vertices.swap(other.m_vertices);
  std::swap(m_normal, other.m_normal);
  std::swap(m_elevation, other.m_elevation);
  std::swap(m_thickness, other.m_thickness);
  std::swap(m_constantWidth, other.m_constantWidth);
  std::swap(m_flags, other.m_flags);
  AcDbCurve::exchangeFields(other);
}
