#pragma once

#include "arx/db/dbcurve.h"
#include "arx/ge/gearc2d.h"

#include <vector>

/// Lightweight polyline: vertices of one plane, straight or circular segments, at one elevation.
class ARX_API AcDbPolyline : public AcDbCurve {
  ACRX_DECLARE_MEMBERS(AcDbPolyline)
  ACDB_DECLARE_COPY(AcDbPolyline)
public:
  enum SegType { kLine, kArc, kCoincident, kPoint, kEmpty };

  AcDbPolyline() = default;
  explicit AcDbPolyline(unsigned int vertices) { m_vertices.reserve(vertices < 4096 ? vertices : 4096); }

  [[nodiscard]] unsigned int numVerts() const { return static_cast<unsigned int>(m_vertices.size()); }
  /// Inserts in front of the vertex of this index; an index beyond the end adds at the end.
  /// @param bulge tangent of a quarter of the following segment's sweep, positive counter-clockwise
  /// @param startWidth, endWidth  -1 for the default, 0
  Acad::ErrorStatus addVertexAt(unsigned int index, const AcGePoint2d& point, double bulge = 0.0,
                                double startWidth = -1.0, double endWidth = -1.0);
  /// `eInvalidIndex` for a vertex that does not exist, here and below.
  Acad::ErrorStatus removeVertexAt(unsigned int index);
  /// In the plane of the polyline.
  Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint2d& point) const;
  /// In the world.
  Acad::ErrorStatus getPointAt(unsigned int index, AcGePoint3d& point) const;
  Acad::ErrorStatus setPointAt(unsigned int index, const AcGePoint2d& point);
  Acad::ErrorStatus getBulgeAt(unsigned int index, double& bulge) const;
  Acad::ErrorStatus setBulgeAt(unsigned int index, double bulge);
  Acad::ErrorStatus getWidthsAt(unsigned int index, double& startWidth, double& endWidth) const;
  Acad::ErrorStatus setWidthsAt(unsigned int index, double startWidth, double endWidth);
  [[nodiscard]] bool hasBulges() const;
  [[nodiscard]] bool hasWidth() const;

  [[nodiscard]] bool isClosed() const override { return (m_flags & 1) != 0; }
  Acad::ErrorStatus setClosed(bool closed);
  [[nodiscard]] bool hasPlinegen() const { return (m_flags & 128) != 0; }
  Acad::ErrorStatus setPlinegen(bool generate);
  [[nodiscard]] double elevation() const { return m_elevation; }
  Acad::ErrorStatus setElevation(double elevation);
  [[nodiscard]] double thickness() const { return m_thickness; }
  Acad::ErrorStatus setThickness(double thickness);
  [[nodiscard]] AcGeVector3d normal() const { return m_normal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  /// `eInvalidInput` when the widths differ.
  Acad::ErrorStatus getConstantWidth(double& width) const;
  Acad::ErrorStatus setConstantWidth(double width);

  /// Kind of the segment behind a vertex: kPoint behind the last vertex of an open polyline, kCoincident
  /// between equal vertices, kEmpty for a vertex that does not exist.
  [[nodiscard]] SegType segType(unsigned int index) const;
  /// Segment in the plane of the polyline. `eInvalidInput` when it is of another kind.
  Acad::ErrorStatus getLineSegAt(unsigned int index, AcGeLineSeg2d& segment) const;
  Acad::ErrorStatus getArcSegAt(unsigned int index, AcGeCircArc2d& arc) const;
  /// Turns the direction of travel round.
  Acad::ErrorStatus reverseCurve();

  [[nodiscard]] std::vector<AcGeCurvePiece> pieces() const override;
  void subWorldDraw(AcGiWorldDraw& draw) const override;
  Acad::ErrorStatus getOffsetCurves(double offset, std::vector<AcDbCurve*>& curves) const override;
  /// `eCannotScaleNonUniformly` also for a matrix that would take the arcs out of shape; polylines without
  /// arcs accept any map that keeps their plane upright.
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  bool takeGroup(AcDbDxfReader& in) override;
  void exchangeFields(AcDbPolyline& other);

private:
  struct Vertex {
    AcGePoint2d point;
    double bulge = 0.0;
    double startWidth = 0.0;
    double endWidth = 0.0;
    Adesk::Int32 identifier = 0;  // 91
  };
  bool takeVertexGroup(AcDbDxfReader& in);
  [[nodiscard]] bool hasSegment(unsigned int index) const;
  std::vector<Vertex> m_vertices;
  AcGeVector3d m_normal = AcGeVector3d::kZAxis;
  double m_elevation = 0.0;
  double m_thickness = 0.0;
  double m_constantWidth = 0.0;  // of the file; the vertices' own widths are 0 then
  Adesk::Int16 m_flags = 0;      // 1 closed, 128 line type runs through the vertices
};
