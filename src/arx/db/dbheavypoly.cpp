#include "arx/db/dbheavypoly.h"

#include "arx/db/dbplanemap.h"
#include "arx/ge/gearc2d.h"
#include "arx/gi/girenderer.h"

#include <cmath>

ACRX_DEFINE_MEMBERS(AcDbVertex, AcDbEntity, nullptr, nullptr)
ACDB_DEFINE_MEMBERS(AcDb2dVertex, AcDbVertex, "VERTEX")
ACDB_DEFINE_MEMBERS(AcDb3dPolylineVertex, AcDbVertex, "VERTEX")
ACDB_DEFINE_MEMBERS(AcDb2dPolyline, AcDbCurve, "POLYLINE")
ACDB_DEFINE_MEMBERS(AcDb3dPolyline, AcDbCurve, "POLYLINE")

namespace {

AcDb::Vertex2dType kindOf(int flags) {
  if (flags & 16) return AcDb::k2dSplineCtlVertex;
  if (flags & 8) return AcDb::k2dSplineFitVertex;
  return flags & 1 ? AcDb::k2dCurveFitVertex : AcDb::k2dVertex;
}

// A vertex in memory, whoever has it open: geometry is asked for while a vertex is being changed.
template <class T>
const T* vertexAt(AcDbObjectId id) {
  return id.isLive() ? T::cast(id.stub()->object) : nullptr;
}

void numberPieces(std::vector<AcGeCurvePiece>& pieces) {
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    pieces[i].startParam = static_cast<double>(i);
    pieces[i].endParam = static_cast<double>(i) + 1;
  }
}

// The points that the curve runs through: without the frame of control points of a splined polyline.
template <class Vertex>
std::vector<const Vertex*> onCurve(std::span<const AcDbObjectId> ids) {
  std::vector<const Vertex*> result;
  result.reserve(ids.size());
  for (const AcDbObjectId& id : ids) {
    const Vertex* vertex = vertexAt<Vertex>(id);
    if (vertex && vertex->vertexType() != AcDb::k2dSplineCtlVertex) result.push_back(vertex);
  }
  return result;
}

AcGeCurvePiece bulged(const AcGePoint3d& from, const AcGePoint3d& to, double bulge,
                      const AcGeVector3d& normal) {
  AcGeCurvePiece piece;
  piece.start = acdbToWorld(from, normal);
  piece.end = acdbToWorld(to, normal);
  const AcGePoint2d start(from.x, from.y);
  const AcGePoint2d end(to.x, to.y);
  if (!acdbIsCurved(bulge) || start == end) return piece;
  const AcGeCircArc2d arc(start, end, bulge);
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(acdbUnitNormal(normal));
  piece.isArc = true;
  piece.center = acdbToWorld({arc.center().x, arc.center().y, from.z}, normal);
  piece.xAxis = toWorld * AcGeVector3d::kXAxis;
  piece.yAxis = toWorld * AcGeVector3d::kYAxis;
  piece.radius = arc.radius();
  piece.startAngle = arc.startAng();
  piece.sweep = arc.sweep();
  return piece;
}

}  // namespace

// ---- vertices

Acad::ErrorStatus AcDbVertex::transformBy(const AcGeMatrix3d& matrix) {
  return change(m_position, matrix * m_position);
}

void AcDbVertex::subWorldDraw(AcGiWorldDraw& draw) const { draw.geometry().area({&m_position, 1}); }

bool AcDbVertex::takeGroup(AcDbDxfReader& in) {
  if (in.code() != 70) return in.coordinate(10, m_position);
  m_flags = static_cast<Adesk::Int16>(in.integer());
  return true;
}

void AcDbVertex::readVertex(AcDbDxfReader& in, std::string_view marker) {
  AcDbEntity::dxfInFields(in);
  readSection(in, "AcDbVertex");
  readSection(in, marker);
}

void AcDbVertex::writeVertex(AcDbDxfWriter& out, std::string_view marker) const {
  AcDbEntity::dxfOutFields(out);
  out.subclass("AcDbVertex");
  writeExtras(out, "AcDbVertex");
  out.subclass(marker);
  out.point(10, m_position);
}

void AcDbVertex::exchangeFields(AcDbVertex& other) {
  std::swap(m_position, other.m_position);
  std::swap(m_flags, other.m_flags);
  AcDbEntity::exchangeFields(other);
}

AcDb::Vertex2dType AcDb2dVertex::vertexType() const { return kindOf(m_flags); }
Acad::ErrorStatus AcDb2dVertex::setPosition(const AcGePoint3d& position) {
  return change(m_position, position);
}
Acad::ErrorStatus AcDb2dVertex::setBulge(double bulge) {
  return std::isfinite(bulge) ? change(m_bulge, bulge) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDb2dVertex::moveInPlane(const AcDbPlaneMap& plane) {
  const Acad::ErrorStatus status = change(m_position, plane.map * m_position);
  if (status != Acad::eOk) return status;
  m_startWidth *= plane.factor;
  m_endWidth *= plane.factor;
  if (plane.mirrored) m_bulge = -m_bulge;
  if (m_flags & 2) m_tangentDegrees = plane.turned(m_tangentDegrees);
  return status;
}

bool AcDb2dVertex::takeGroup(AcDbDxfReader& in) {
  switch (in.code()) {
    case 40:
      m_startWidth = in.real();
      return true;
    case 41:
      m_endWidth = in.real();
      return true;
    case 42:
      m_bulge = in.real();
      return true;
    case 50:
      m_tangentDegrees = in.real();
      return true;
    default:
      return AcDbVertex::takeGroup(in);
  }
}

void AcDb2dVertex::dxfInFields(AcDbDxfReader& in) { readVertex(in, "AcDb2dVertex"); }

void AcDb2dVertex::dxfOutFields(AcDbDxfWriter& out) const {
  writeVertex(out, "AcDb2dVertex");
  if (m_startWidth != 0.0) out.real(40, m_startWidth);
  if (m_endWidth != 0.0) out.real(41, m_endWidth);
  if (m_bulge != 0.0) out.real(42, m_bulge);
  if (m_flags != 0) out.integer(70, m_flags);
  if (m_tangentDegrees != 0.0) out.real(50, m_tangentDegrees);
  writeExtras(out, "AcDb2dVertex");
}

void AcDb2dVertex::exchangeFields(AcDb2dVertex& other) {
  std::swap(m_bulge, other.m_bulge);
  std::swap(m_startWidth, other.m_startWidth);
  std::swap(m_endWidth, other.m_endWidth);
  std::swap(m_tangentDegrees, other.m_tangentDegrees);
  AcDbVertex::exchangeFields(other);
}

AcDb::Vertex2dType AcDb3dPolylineVertex::vertexType() const { return kindOf(m_flags); }
Acad::ErrorStatus AcDb3dPolylineVertex::setPosition(const AcGePoint3d& position) {
  return change(m_position, position);
}

void AcDb3dPolylineVertex::dxfInFields(AcDbDxfReader& in) { readVertex(in, "AcDb3dPolylineVertex"); }

void AcDb3dPolylineVertex::dxfOutFields(AcDbDxfWriter& out) const {
  writeVertex(out, "AcDb3dPolylineVertex");
  out.integer(70, m_flags);
  writeExtras(out, "AcDb3dPolylineVertex");
}

// ---- plane polyline

AcDb::Poly2dType AcDb2dPolyline::polyType() const {
  if (m_flags & 4) return m_smooth == 5 ? AcDb::k2dQuadSplinePoly : AcDb::k2dCubicSplinePoly;
  return m_flags & 2 ? AcDb::k2dFitCurvePoly : AcDb::k2dSimplePoly;
}

Acad::ErrorStatus AcDb2dPolyline::setClosed(bool closed) {
  return change(m_flags, static_cast<Adesk::Int16>(closed ? m_flags | 1 : m_flags & ~1));
}

Acad::ErrorStatus AcDb2dPolyline::appendVertex(AcDbObjectId& id, AcDb2dVertex* vertex) {
  return appendSub(*this, id, vertex);
}

AcDbObjectIterator* AcDb2dPolyline::vertexIterator() const { return new AcDbObjectIterator(subEntityIds()); }

AcGePoint3d AcDb2dPolyline::vertexPosition(const AcDb2dVertex& vertex) const {
  return acdbToWorld(vertex.position(), m_normal);
}

std::vector<AcGeCurvePiece> AcDb2dPolyline::pieces() const {
  const auto vertices = onCurve<AcDb2dVertex>(subEntityIds());
  std::vector<AcGeCurvePiece> result;
  const std::size_t n = vertices.size();
  const std::size_t segments = n < 2 ? n : isClosed() ? n : n - 1;
  for (std::size_t i = 0; i < segments; ++i) {
    const AcDb2dVertex& to = *vertices[(i + 1) % n];
    result.push_back(bulged(vertices[i]->position(), to.position(), vertices[i]->bulge(), m_normal));
  }
  numberPieces(result);
  if (n == 1) result[0].endParam = 0.0;
  return result;
}

void AcDb2dPolyline::subWorldDraw(AcGiWorldDraw& draw) const {
  AcGiRenderer* const renderer = draw.geometry().renderer();
  if (!renderer) return AcDbCurve::subWorldDraw(draw);
  std::vector<std::pair<double, double>> widths;
  bool wide = false;
  for (const AcDb2dVertex* const vertex : onCurve<AcDb2dVertex>(subEntityIds())) {
    const bool own = vertex->startWidth() > 0.0 || vertex->endWidth() > 0.0;
    widths.emplace_back(own ? vertex->startWidth() : m_startWidth, own ? vertex->endWidth() : m_endWidth);
    wide = wide || widths.back().first > 0.0 || widths.back().second > 0.0;
  }
  if (!wide) return AcDbCurve::subWorldDraw(draw);
  renderer->wideCurve(pieces(), widths);
}

Acad::ErrorStatus AcDb2dPolyline::transformBy(const AcGeMatrix3d& matrix) {
  const AcDbPlaneMap plane(matrix, m_normal);
  bool curved = polyType() != AcDb::k2dSimplePoly;
  for (const AcDb2dVertex* vertex : onCurve<AcDb2dVertex>(subEntityIds()))
    curved = curved || vertex->bulge() != 0;
  if (!plane.valid || (curved && !plane.conformal)) return Acad::eCannotScaleNonUniformly;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  if (database()) {  // a copy without a place shares its vertices with the original
    for (const AcDbObjectId& id : subEntityIds()) {
      const AcDbObjectPointer<AcDb2dVertex> vertex(id, AcDb::kForWrite);
      if (vertex.openStatus() == Acad::eOk) vertex->moveInPlane(plane);
    }
  }
  const double(&row)[4] = plane.map.entry[2];
  m_elevation.z = row[2] * m_elevation.z + row[3];
  m_normal = plane.normal;
  m_thickness *= plane.depth;
  m_startWidth *= plane.factor;
  m_endWidth *= plane.factor;
  return status;
}

bool AcDb2dPolyline::takeGroup(AcDbDxfReader& in) {
  switch (in.code()) {
    case 66:
      return true;  // tells that vertices follow, as they always do
    case 39:
      m_thickness = in.real();
      return true;
    case 40:
      m_startWidth = in.real();
      return true;
    case 41:
      m_endWidth = in.real();
      return true;
    case 70:
      m_flags = static_cast<Adesk::Int16>(in.integer());
      return true;
    case 75:
      m_smooth = static_cast<Adesk::Int16>(in.integer());
      return true;
    default:
      return in.coordinate(10, m_elevation) || in.coordinate(210, m_normal);
  }
}

void AcDb2dPolyline::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);
  readSection(in, "AcDb2dPolyline");
}

void AcDb2dPolyline::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbEntity::dxfOutFields(out);
  out.subclass("AcDb2dPolyline");
  out.integer(66, 1);
  out.point(10, m_elevation);
  if (m_thickness != 0.0) out.real(39, m_thickness);
  if (m_flags != 0) out.integer(70, m_flags);
  if (m_startWidth != 0.0) out.real(40, m_startWidth);
  if (m_endWidth != 0.0) out.real(41, m_endWidth);
  if (m_smooth != 0) out.integer(75, m_smooth);
  out.normal(m_normal);
  writeExtras(out, "AcDb2dPolyline");
}

void AcDb2dPolyline::visitReferences(const std::function<void(AcDbObjectId&)>& visit) {
  AcDbEntity::visitReferences(visit);
  visitSubs(visit);
}

void AcDb2dPolyline::exchangeFields(AcDb2dPolyline& other) {
  std::swap(m_elevation, other.m_elevation);
  std::swap(m_normal, other.m_normal);
  std::swap(m_thickness, other.m_thickness);
  std::swap(m_startWidth, other.m_startWidth);
  std::swap(m_endWidth, other.m_endWidth);
  std::swap(m_flags, other.m_flags);
  std::swap(m_smooth, other.m_smooth);
  exchangeSubs(other);
  AcDbCurve::exchangeFields(other);
}

// ---- polyline in space

AcDb::Poly3dType AcDb3dPolyline::polyType() const {
  if (!(m_flags & 4)) return AcDb::k3dSimplePoly;
  return m_smooth == 5 ? AcDb::k3dQuadSplinePoly : AcDb::k3dCubicSplinePoly;
}

Acad::ErrorStatus AcDb3dPolyline::setClosed(bool closed) {
  return change(m_flags, static_cast<Adesk::Int16>(closed ? m_flags | 1 : m_flags & ~1));
}

Acad::ErrorStatus AcDb3dPolyline::appendVertex(AcDbObjectId& id, AcDb3dPolylineVertex* vertex) {
  return appendSub(*this, id, vertex);
}

AcDbObjectIterator* AcDb3dPolyline::vertexIterator() const { return new AcDbObjectIterator(subEntityIds()); }

std::vector<AcGeCurvePiece> AcDb3dPolyline::pieces() const {
  const auto vertices = onCurve<AcDb3dPolylineVertex>(subEntityIds());
  std::vector<AcGeCurvePiece> result;
  const std::size_t n = vertices.size();
  const std::size_t segments = n < 2 ? n : isClosed() ? n : n - 1;
  for (std::size_t i = 0; i < segments; ++i) {
    AcGeCurvePiece piece;
    piece.start = vertices[i]->position();
    piece.end = vertices[(i + 1) % n]->position();
    result.push_back(piece);
  }
  numberPieces(result);
  if (n == 1) result[0].endParam = 0.0;
  return result;
}

Acad::ErrorStatus AcDb3dPolyline::transformBy(const AcGeMatrix3d& matrix) {
  const Acad::ErrorStatus status = assertWriteEnabled();
  return status == Acad::eOk && database() ? transformSubs(matrix) : status;
}

bool AcDb3dPolyline::takeGroup(AcDbDxfReader& in) {
  switch (in.code()) {
    case 66:
      return true;
    case 70:
      m_flags = static_cast<Adesk::Int16>(in.integer());
      return true;
    case 75:
      m_smooth = static_cast<Adesk::Int16>(in.integer());
      return true;
    case 10:
    case 20:
    case 30:
      return in.real() == 0.0;  // a dummy point, always the origin
    default:
      return false;
  }
}

void AcDb3dPolyline::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);
  readSection(in, "AcDb3dPolyline");
}

void AcDb3dPolyline::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbEntity::dxfOutFields(out);
  out.subclass("AcDb3dPolyline");
  out.integer(66, 1);
  out.point(10, AcGePoint3d::kOrigin);
  out.integer(70, m_flags);
  if (m_smooth != 0) out.integer(75, m_smooth);
  writeExtras(out, "AcDb3dPolyline");
}

void AcDb3dPolyline::visitReferences(const std::function<void(AcDbObjectId&)>& visit) {
  AcDbEntity::visitReferences(visit);
  visitSubs(visit);
}

void AcDb3dPolyline::exchangeFields(AcDb3dPolyline& other) {
  std::swap(m_flags, other.m_flags);
  std::swap(m_smooth, other.m_smooth);
  exchangeSubs(other);
  AcDbCurve::exchangeFields(other);
}
