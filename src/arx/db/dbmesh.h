#pragma once

#include "arx/db/dbheavypoly.h"

class AcGiRenderer;

/// Vertex of a rectangular mesh.
class ARX_API AcDbPolygonMeshVertex : public AcDbVertex {
  ACRX_DECLARE_MEMBERS(AcDbPolygonMeshVertex)
  ACDB_DECLARE_COPY(AcDbPolygonMeshVertex)
public:
  AcDbPolygonMeshVertex() = default;
  explicit AcDbPolygonMeshVertex(const AcGePoint3d& position) : AcDbVertex(position) { m_flags = 64; }
  [[nodiscard]] AcGePoint3d position() const { return m_position; }
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  void exchangeFields(AcDbPolygonMeshVertex& other) { AcDbVertex::exchangeFields(other); }
};

/// Vertex of a mesh of faces.
class ARX_API AcDbPolyFaceMeshVertex : public AcDbVertex {
  ACRX_DECLARE_MEMBERS(AcDbPolyFaceMeshVertex)
  ACDB_DECLARE_COPY(AcDbPolyFaceMeshVertex)
public:
  AcDbPolyFaceMeshVertex() = default;
  explicit AcDbPolyFaceMeshVertex(const AcGePoint3d& position) : AcDbVertex(position) { m_flags = 192; }
  [[nodiscard]] AcGePoint3d position() const { return m_position; }
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  void exchangeFields(AcDbPolyFaceMeshVertex& other) { AcDbVertex::exchangeFields(other); }
};

/// One face of a mesh of faces: numbers of its vertices from 1, negative before an invisible edge, 0 for
/// none.
class ARX_API AcDbFaceRecord : public AcDbVertex {
  ACRX_DECLARE_MEMBERS(AcDbFaceRecord)
  ACDB_DECLARE_COPY(AcDbFaceRecord)
public:
  AcDbFaceRecord() { m_flags = 128; }
  /// `eInvalidIndex` outside 0 to 3.
  Acad::ErrorStatus getVertexAt(Adesk::UInt16 faceIndex, Adesk::Int16& vertex) const;
  Acad::ErrorStatus setVertexAt(Adesk::UInt16 faceIndex, Adesk::Int16 vertex);
  /// Has no geometry of its own.
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
  void subWorldDraw(AcGiWorldDraw& draw) const override;
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  bool takeGroup(AcDbDxfReader& in) override;
  void exchangeFields(AcDbFaceRecord& other);

private:
  Adesk::Int16 m_vertices[4] = {0, 0, 0, 0};
};

/// What both kinds of mesh share.
class ARX_API AcDbMeshBase : public AcDbEntity, public AcDbSubEntityOwner {
  ACRX_DECLARE_MEMBERS(AcDbMeshBase)
public:
  /// Live vertices, and face records where there are any; deleted by the caller.
  [[nodiscard]] AcDbObjectIterator* vertexIterator() const;
  AcDbSubEntityOwner* subEntityOwner() override { return this; }
  [[nodiscard]] AcRxClass* subEntityClass() const override { return AcDbVertex::desc(); }
  [[nodiscard]] std::vector<AcDbObjectId> subObjects() const override { return allSubs(false); }
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
  void subWorldDraw(AcGiWorldDraw& draw) const override;
  void visitReferences(const std::function<void(AcDbObjectId&)>& visit) override;

protected:
  AcDbMeshBase() = default;
  bool takeGroup(AcDbDxfReader& in) override;
  void exchangeFields(AcDbMeshBase& other);
  void writeMesh(AcDbDxfWriter& out, std::string_view marker) const;
  /// The edges that are seen. @param places of the vertices, in order
  virtual void drawEdges(AcGiRenderer& renderer, const std::vector<AcGePoint3d>& places) const = 0;
  Adesk::Int16 m_flags = 0;
  Adesk::Int16 m_counts[4] = {0, 0, 0, 0};  // 71 to 74
  Adesk::Int16 m_smooth = 0;                // 75
};

/// Rectangular mesh of M by N vertices.
class ARX_API AcDbPolygonMesh : public AcDbMeshBase {
  ACRX_DECLARE_MEMBERS(AcDbPolygonMesh)
  ACDB_DECLARE_COPY(AcDbPolygonMesh)
public:
  AcDbPolygonMesh() { m_flags = 16; }
  [[nodiscard]] AcDb::PolyMeshType polyMeshType() const { return static_cast<AcDb::PolyMeshType>(m_smooth); }
  [[nodiscard]] Adesk::Int16 mSize() const { return m_counts[0]; }
  [[nodiscard]] Adesk::Int16 nSize() const { return m_counts[1]; }
  [[nodiscard]] bool isMClosed() const { return (m_flags & 1) != 0; }
  [[nodiscard]] bool isNClosed() const { return (m_flags & 32) != 0; }
  Acad::ErrorStatus setSize(Adesk::Int16 m, Adesk::Int16 n);
  Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDbPolygonMeshVertex* vertex);
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  void drawEdges(AcGiRenderer& renderer, const std::vector<AcGePoint3d>& places) const override;
  void exchangeFields(AcDbPolygonMesh& other) { AcDbMeshBase::exchangeFields(other); }
};

/// Mesh of faces over a list of vertices.
class ARX_API AcDbPolyFaceMesh : public AcDbMeshBase {
  ACRX_DECLARE_MEMBERS(AcDbPolyFaceMesh)
  ACDB_DECLARE_COPY(AcDbPolyFaceMesh)
public:
  AcDbPolyFaceMesh() { m_flags = 64; }
  [[nodiscard]] Adesk::Int16 numVertices() const { return m_counts[0]; }
  [[nodiscard]] Adesk::Int16 numFaces() const { return m_counts[1]; }
  /// All vertices come before the first face record.
  Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDbPolyFaceMeshVertex* vertex);
  Acad::ErrorStatus appendFaceRecord(AcDbObjectId& id, AcDbFaceRecord* record);
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  void drawEdges(AcGiRenderer& renderer, const std::vector<AcGePoint3d>& places) const override;
  void exchangeFields(AcDbPolyFaceMesh& other) { AcDbMeshBase::exchangeFields(other); }
};
