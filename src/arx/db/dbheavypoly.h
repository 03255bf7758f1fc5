#pragma once

#include "arx/db/dbcurve.h"
#include "arx/db/dbsubents.h"

struct AcDbPlaneMap;

/// Base of the vertices that are objects of their own.
class ARX_API AcDbVertex : public AcDbEntity {
  ACRX_DECLARE_MEMBERS(AcDbVertex)
public:
  /// As the file holds it.
  [[nodiscard]] const AcGePoint3d& place() const { return m_position; }
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
  void subWorldDraw(AcGiWorldDraw& draw) const override;

protected:
  AcDbVertex() = default;
  explicit AcDbVertex(const AcGePoint3d& position) : m_position(position) {}
  bool takeGroup(AcDbDxfReader& in) override;
  void exchangeFields(AcDbVertex& other);
  void readVertex(AcDbDxfReader& in, std::string_view marker);
  void writeVertex(AcDbDxfWriter& out, std::string_view marker) const;
  AcGePoint3d m_position;
  Adesk::Int16 m_flags = 0;  // 70
};

/// Vertex of an old-style plane polyline. The position is in the polyline's plane, its z is the elevation.
class ARX_API AcDb2dVertex : public AcDbVertex {
  ACRX_DECLARE_MEMBERS(AcDb2dVertex)
  ACDB_DECLARE_COPY(AcDb2dVertex)
public:
  AcDb2dVertex() = default;
  explicit AcDb2dVertex(const AcGePoint3d& position, double bulge = 0.0, double startWidth = 0.0,
                        double endWidth = 0.0)
      : AcDbVertex(position), m_bulge(bulge), m_startWidth(startWidth), m_endWidth(endWidth) {}
  [[nodiscard]] AcDb::Vertex2dType vertexType() const;
  [[nodiscard]] AcGePoint3d position() const { return m_position; }
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  [[nodiscard]] double bulge() const { return m_bulge; }
  Acad::ErrorStatus setBulge(double bulge);
  [[nodiscard]] double startWidth() const { return m_startWidth; }
  [[nodiscard]] double endWidth() const { return m_endWidth; }
  /// Moves with its polyline, by what a matrix does to the polyline's plane.
  Acad::ErrorStatus moveInPlane(const AcDbPlaneMap& plane);
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  bool takeGroup(AcDbDxfReader& in) override;
  void exchangeFields(AcDb2dVertex& other);

private:
  double m_bulge = 0.0;
  double m_startWidth = 0.0;
  double m_endWidth = 0.0;
  double m_tangentDegrees = 0.0;  // 50
};

/// Vertex of a polyline in space.
class ARX_API AcDb3dPolylineVertex : public AcDbVertex {
  ACRX_DECLARE_MEMBERS(AcDb3dPolylineVertex)
  ACDB_DECLARE_COPY(AcDb3dPolylineVertex)
public:
  AcDb3dPolylineVertex() = default;
  explicit AcDb3dPolylineVertex(const AcGePoint3d& position) : AcDbVertex(position) { m_flags = 32; }
  /// k2dVertex-like values: 0 simple, 1 spline control, 2 spline fit.
  [[nodiscard]] AcDb::Vertex2dType vertexType() const;
  [[nodiscard]] AcGePoint3d position() const { return m_position; }
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  void exchangeFields(AcDb3dPolylineVertex& other) { AcDbVertex::exchangeFields(other); }
};

/// Old-style plane polyline, its vertices objects of their own.
class ARX_API AcDb2dPolyline : public AcDbCurve, public AcDbSubEntityOwner {
  ACRX_DECLARE_MEMBERS(AcDb2dPolyline)
  ACDB_DECLARE_COPY(AcDb2dPolyline)
public:
  AcDb2dPolyline() = default;
  [[nodiscard]] AcDb::Poly2dType polyType() const;
  [[nodiscard]] bool isClosed() const override { return (m_flags & 1) != 0; }
  Acad::ErrorStatus setClosed(bool closed);
  [[nodiscard]] double elevation() const { return m_elevation.z; }
  [[nodiscard]] double thickness() const { return m_thickness; }
  [[nodiscard]] AcGeVector3d normal() const { return m_normal; }
  Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDb2dVertex* vertex);
  /// Live vertices; deleted by the caller.
  [[nodiscard]] AcDbObjectIterator* vertexIterator() const;
  /// In the world.
  [[nodiscard]] AcGePoint3d vertexPosition(const AcDb2dVertex& vertex) const;

  AcDbSubEntityOwner* subEntityOwner() override { return this; }
  [[nodiscard]] AcRxClass* subEntityClass() const override { return AcDb2dVertex::desc(); }
  [[nodiscard]] std::vector<AcDbObjectId> subObjects() const override { return allSubs(false); }
  [[nodiscard]] std::vector<AcGeCurvePiece> pieces() const override;
  void subWorldDraw(AcGiWorldDraw& draw) const override;
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;
  void visitReferences(const std::function<void(AcDbObjectId&)>& visit) override;

protected:
  bool takeGroup(AcDbDxfReader& in) override;
  void exchangeFields(AcDb2dPolyline& other);

private:
  AcGePoint3d m_elevation;  // only z has a meaning
  AcGeVector3d m_normal = AcGeVector3d::kZAxis;
  double m_thickness = 0.0;
  double m_startWidth = 0.0;
  double m_endWidth = 0.0;
  Adesk::Int16 m_flags = 0;
  Adesk::Int16 m_smooth = 0;  // 75
};

/// Polyline in space, straight segments.
class ARX_API AcDb3dPolyline : public AcDbCurve, public AcDbSubEntityOwner {
  ACRX_DECLARE_MEMBERS(AcDb3dPolyline)
  ACDB_DECLARE_COPY(AcDb3dPolyline)
public:
  AcDb3dPolyline() = default;
  [[nodiscard]] AcDb::Poly3dType polyType() const;
  [[nodiscard]] bool isClosed() const override { return (m_flags & 1) != 0; }
  Acad::ErrorStatus setClosed(bool closed);
  Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDb3dPolylineVertex* vertex);
  [[nodiscard]] AcDbObjectIterator* vertexIterator() const;

  AcDbSubEntityOwner* subEntityOwner() override { return this; }
  [[nodiscard]] AcRxClass* subEntityClass() const override { return AcDb3dPolylineVertex::desc(); }
  [[nodiscard]] std::vector<AcDbObjectId> subObjects() const override { return allSubs(false); }
  [[nodiscard]] std::vector<AcGeCurvePiece> pieces() const override;
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;
  void visitReferences(const std::function<void(AcDbObjectId&)>& visit) override;

protected:
  bool takeGroup(AcDbDxfReader& in) override;
  void exchangeFields(AcDb3dPolyline& other);

private:
  Adesk::Int16 m_flags = 8;
  Adesk::Int16 m_smooth = 0;
};
