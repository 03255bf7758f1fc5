#include "arx/db/dbmesh.h"

#include "arx/gi/girenderer.h"

ACDB_DEFINE_MEMBERS(AcDbPolygonMeshVertex, AcDbVertex, "VERTEX")
ACDB_DEFINE_MEMBERS(AcDbPolyFaceMeshVertex, AcDbVertex, "VERTEX")
ACDB_DEFINE_MEMBERS(AcDbFaceRecord, AcDbVertex, "VERTEX")
ACRX_DEFINE_MEMBERS(AcDbMeshBase, AcDbEntity, nullptr, nullptr)
ACDB_DEFINE_MEMBERS(AcDbPolygonMesh, AcDbMeshBase, "POLYLINE")
ACDB_DEFINE_MEMBERS(AcDbPolyFaceMesh, AcDbMeshBase, "POLYLINE")

// ---- vertices

Acad::ErrorStatus AcDbPolygonMeshVertex::setPosition(const AcGePoint3d& position) {
  return change(m_position, position);
}

void AcDbPolygonMeshVertex::dxfInFields(AcDbDxfReader& in) { readVertex(in, "AcDbPolygonMeshVertex"); }

void AcDbPolygonMeshVertex::dxfOutFields(AcDbDxfWriter& out) const {
  writeVertex(out, "AcDbPolygonMeshVertex");
  out.integer(70, m_flags);
  writeExtras(out, "AcDbPolygonMeshVertex");
}

Acad::ErrorStatus AcDbPolyFaceMeshVertex::setPosition(const AcGePoint3d& position) {
  return change(m_position, position);
}

void AcDbPolyFaceMeshVertex::dxfInFields(AcDbDxfReader& in) { readVertex(in, "AcDbPolyFaceMeshVertex"); }

void AcDbPolyFaceMeshVertex::dxfOutFields(AcDbDxfWriter& out) const {
  writeVertex(out, "AcDbPolyFaceMeshVertex");
  out.integer(70, m_flags);
  writeExtras(out, "AcDbPolyFaceMeshVertex");
}

// ---- face record

Acad::ErrorStatus AcDbFaceRecord::getVertexAt(Adesk::UInt16 faceIndex, Adesk::Int16& vertex) const {
  if (faceIndex > 3) return Acad::eInvalidIndex;
  vertex = m_vertices[faceIndex];
  return Acad::eOk;
}

Acad::ErrorStatus AcDbFaceRecord::setVertexAt(Adesk::UInt16 faceIndex, Adesk::Int16 vertex) {
  if (faceIndex > 3) return Acad::eInvalidIndex;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status == Acad::eOk) m_vertices[faceIndex] = vertex;
  return status;
}

Acad::ErrorStatus AcDbFaceRecord::transformBy(const AcGeMatrix3d&) { return assertWriteEnabled(); }
void AcDbFaceRecord::subWorldDraw(AcGiWorldDraw&) const {}

bool AcDbFaceRecord::takeGroup(AcDbDxfReader& in) {
  if (in.code() < 71 || in.code() > 74) return AcDbVertex::takeGroup(in);
  m_vertices[in.code() - 71] = static_cast<Adesk::Int16>(in.integer());
  return true;
}

void AcDbFaceRecord::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);
  readSection(in, "AcDbFaceRecord");
}

void AcDbFaceRecord::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbEntity::dxfOutFields(out);
  out.subclass("AcDbFaceRecord");
  out.point(10, m_position);
  out.integer(70, m_flags);
  for (int i = 0; i < 4; ++i) {
    if (m_vertices[i] != 0) out.integer(71 + i, m_vertices[i]);
  }
  writeExtras(out, "AcDbFaceRecord");
}

void AcDbFaceRecord::exchangeFields(AcDbFaceRecord& other) {
  std::swap(m_vertices, other.m_vertices);
  AcDbVertex::exchangeFields(other);
}

// ---- meshes

AcDbObjectIterator* AcDbMeshBase::vertexIterator() const { return new AcDbObjectIterator(subEntityIds()); }

Acad::ErrorStatus AcDbMeshBase::transformBy(const AcGeMatrix3d& matrix) {
  const Acad::ErrorStatus status = assertWriteEnabled();
  return status == Acad::eOk && database() ? transformSubs(matrix) : status;
}

void AcDbMeshBase::subWorldDraw(AcGiWorldDraw& draw) const {
  std::vector<AcGePoint3d> places;
  for (const AcDbObjectId& id : subEntityIds()) {
    const AcDbVertex* vertex = id.isLive() ? AcDbVertex::cast(id.stub()->object) : nullptr;
    if (vertex && !AcDbFaceRecord::cast(vertex)) places.push_back(vertex->place());
  }
  if (AcGiRenderer* const renderer = draw.geometry().renderer()) return drawEdges(*renderer, places);
  draw.geometry().area(places);
}

void AcDbPolygonMesh::drawEdges(AcGiRenderer& renderer, const std::vector<AcGePoint3d>& places) const {
  const int rows = mSize();
  const int columns = nSize();
  if (rows < 1 || columns < 1 || places.size() < static_cast<std::size_t>(rows) * columns) return;
  const auto place = [&](int row, int column) {
    return places[static_cast<std::size_t>(row) * columns + column];
  };
  std::vector<AcGePoint3d> line;
  for (int row = 0; row < rows; ++row) {
    line.clear();
    for (int i = 0; i < columns + (isNClosed() ? 1 : 0); ++i) line.push_back(place(row, i % columns));
    renderer.edges(line);
  }
  for (int column = 0; column < columns; ++column) {
    line.clear();
    for (int i = 0; i < rows + (isMClosed() ? 1 : 0); ++i) line.push_back(place(i % rows, column));
    renderer.edges(line);
  }
}

void AcDbPolyFaceMesh::drawEdges(AcGiRenderer& renderer, const std::vector<AcGePoint3d>& places) const {
  for (const AcDbObjectId& id : subEntityIds()) {
    const AcDbFaceRecord* const face = id.isLive() ? AcDbFaceRecord::cast(id.stub()->object) : nullptr;
    std::vector<Adesk::Int16> corners;
    for (Adesk::UInt16 i = 0; face && i < 4; ++i) {
      Adesk::Int16 vertex = 0;
      face->getVertexAt(i, vertex);
      if (vertex != 0 && static_cast<std::size_t>(std::abs(vertex)) <= places.size())
        corners.push_back(vertex);
    }
    for (std::size_t i = 0; corners.size() > 1 && i < corners.size(); ++i) {
      const AcGePoint3d edge[] = {places[std::abs(corners[i]) - 1],
                                  places[std::abs(corners[(i + 1) % corners.size()]) - 1]};
      if (corners[i] > 0) renderer.edges(edge);
    }
  }
}

bool AcDbMeshBase::takeGroup(AcDbDxfReader& in) {
  const int code = in.code();
  switch (code) {
    case 66:
      return true;
    case 70:
      m_flags = static_cast<Adesk::Int16>(in.integer());
      return true;
    case 71:
    case 72:
    case 73:
    case 74:
      m_counts[code - 71] = static_cast<Adesk::Int16>(in.integer());
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

void AcDbMeshBase::writeMesh(AcDbDxfWriter& out, std::string_view marker) const {
  AcDbEntity::dxfOutFields(out);
  out.subclass(marker);
  out.integer(66, 1);
  out.point(10, AcGePoint3d::kOrigin);
  out.integer(70, m_flags);
  for (int i = 0; i < 4; ++i) {
    if (m_counts[i] != 0) out.integer(71 + i, m_counts[i]);
  }
  if (m_smooth != 0) out.integer(75, m_smooth);
  writeExtras(out, marker);
}

void AcDbMeshBase::visitReferences(const std::function<void(AcDbObjectId&)>& visit) {
  AcDbEntity::visitReferences(visit);
  visitSubs(visit);
}

void AcDbMeshBase::exchangeFields(AcDbMeshBase& other) {
  std::swap(m_flags, other.m_flags);
  std::swap(m_counts, other.m_counts);
  std::swap(m_smooth, other.m_smooth);
  exchangeSubs(other);
  AcDbEntity::exchangeFields(other);
}

Acad::ErrorStatus AcDbPolygonMesh::setSize(Adesk::Int16 m, Adesk::Int16 n) {
  if (m < 0 || n < 0) return Acad::eInvalidInput;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status == Acad::eOk) m_counts[0] = m, m_counts[1] = n;
  return status;
}

Acad::ErrorStatus AcDbPolygonMesh::appendVertex(AcDbObjectId& id, AcDbPolygonMeshVertex* vertex) {
  return appendSub(*this, id, vertex);
}

void AcDbPolygonMesh::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);
  readSection(in, "AcDbPolygonMesh");
}

void AcDbPolygonMesh::dxfOutFields(AcDbDxfWriter& out) const { writeMesh(out, "AcDbPolygonMesh"); }

Acad::ErrorStatus AcDbPolyFaceMesh::appendVertex(AcDbObjectId& id, AcDbPolyFaceMeshVertex* vertex) {
  const Acad::ErrorStatus status = appendSub(*this, id, vertex);
  if (status == Acad::eOk) ++m_counts[0];
  return status;
}

Acad::ErrorStatus AcDbPolyFaceMesh::appendFaceRecord(AcDbObjectId& id, AcDbFaceRecord* record) {
  const Acad::ErrorStatus status = appendSub(*this, id, record);
  if (status == Acad::eOk) ++m_counts[1];
  return status;
}

void AcDbPolyFaceMesh::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);
  readSection(in, "AcDbPolyFaceMesh");
}

void AcDbPolyFaceMesh::dxfOutFields(AcDbDxfWriter& out) const { writeMesh(out, "AcDbPolyFaceMesh"); }
