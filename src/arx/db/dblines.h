#pragma once

#include "arx/db/dbcurve.h"

#include <span>

struct DxfTag;

/// A point as drawn thing.
class ARX_API AcDbPoint : public AcDbEntity {
  ACRX_DECLARE_MEMBERS(AcDbPoint)
  ACDB_DECLARE_COPY(AcDbPoint)
public:
  AcDbPoint() = default;
  explicit AcDbPoint(const AcGePoint3d& position) : m_position(position) {}
  [[nodiscard]] AcGePoint3d position() const { return m_position; }
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  [[nodiscard]] double thickness() const { return m_thickness; }
  Acad::ErrorStatus setThickness(double thickness);
  [[nodiscard]] AcGeVector3d normal() const { return m_normal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

  Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
  void subWorldDraw(AcGiWorldDraw& draw) const override;
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  bool takeGroup(AcDbDxfReader& in) override;
  void exchangeFields(AcDbPoint& other);

private:
  AcGePoint3d m_position;
  AcGeVector3d m_normal = AcGeVector3d::kZAxis;
  double m_thickness = 0.0;
  double m_xAngle = 0.0;  // degrees, of the X axis when the point was drawn
};

/// Straight segment in space.
class ARX_API AcDbLine : public AcDbCurve {
  ACRX_DECLARE_MEMBERS(AcDbLine)
  ACDB_DECLARE_COPY(AcDbLine)
public:
  AcDbLine() = default;
  AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end) : m_start(start), m_end(end) {}
  [[nodiscard]] AcGePoint3d startPoint() const { return m_start; }
  [[nodiscard]] AcGePoint3d endPoint() const { return m_end; }
  Acad::ErrorStatus setStartPoint(const AcGePoint3d& point);
  Acad::ErrorStatus setEndPoint(const AcGePoint3d& point);
  [[nodiscard]] double thickness() const { return m_thickness; }
  Acad::ErrorStatus setThickness(double thickness);
  [[nodiscard]] AcGeVector3d normal() const { return m_normal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);

  [[nodiscard]] std::vector<AcGeCurvePiece> pieces() const override;
  Acad::ErrorStatus getOffsetCurves(double offset, std::vector<AcDbCurve*>& curves) const override;
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  bool takeGroup(AcDbDxfReader& in) override;
  void exchangeFields(AcDbLine& other);

private:
  AcGePoint3d m_start;
  AcGePoint3d m_end;
  AcGeVector3d m_normal = AcGeVector3d::kZAxis;
  double m_thickness = 0.0;
};

/// What a ray and a construction line share; at run time it is no class of its own. Neither has extents.
class ARX_API AcDbEndlessLine : public AcDbCurve {
public:
  [[nodiscard]] AcGePoint3d basePoint() const { return m_base; }
  Acad::ErrorStatus setBasePoint(const AcGePoint3d& point);
  [[nodiscard]] AcGeVector3d unitDir() const { return m_direction; }
  /// Any length but 0 (`eInvalidInput`); kept as unit vector.
  Acad::ErrorStatus setUnitDir(const AcGeVector3d& direction);

  /// To the right as seen along -Z; `eInvalidInput` for an upright line.
  Acad::ErrorStatus getOffsetCurves(double offset, std::vector<AcDbCurve*>& curves) const override;
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;

protected:
  bool takeGroup(AcDbDxfReader& in) override;
  void readLine(AcDbDxfReader& in, std::string_view marker);
  void writeLine(AcDbDxfWriter& out, std::string_view marker) const;
  void exchangeFields(AcDbEndlessLine& other);

private:
  AcGePoint3d m_base;
  AcGeVector3d m_direction = AcGeVector3d::kXAxis;
};

/// Line from a base point endlessly in one direction.
class ARX_API AcDbRay : public AcDbEndlessLine {
  ACRX_DECLARE_MEMBERS(AcDbRay)
  ACDB_DECLARE_COPY(AcDbRay)
public:
  AcDbRay() = default;
  [[nodiscard]] std::vector<AcGeCurvePiece> pieces() const override;
  void dxfInFields(AcDbDxfReader& in) override { readLine(in, "AcDbRay"); }
  void dxfOutFields(AcDbDxfWriter& out) const override { writeLine(out, "AcDbRay"); }
};

/// Line without ends, through a base point.
class ARX_API AcDbXline : public AcDbEndlessLine {
  ACRX_DECLARE_MEMBERS(AcDbXline)
  ACDB_DECLARE_COPY(AcDbXline)
public:
  AcDbXline() = default;
  [[nodiscard]] std::vector<AcGeCurvePiece> pieces() const override;
  void dxfInFields(AcDbDxfReader& in) override { readLine(in, "AcDbXline"); }
  void dxfOutFields(AcDbDxfWriter& out) const override { writeLine(out, "AcDbXline"); }
  /// Whether the groups of a file give a line; other ones stay file text (`AcDbOtherEntity`).
  [[nodiscard]] static bool isGivenBy(std::span<const DxfTag> tags);
};

/// Face with three or four corners; the fourth equals the third in a triangle.
class ARX_API AcDbFace : public AcDbEntity {
  ACRX_DECLARE_MEMBERS(AcDbFace)
  ACDB_DECLARE_COPY(AcDbFace)
public:
  AcDbFace() = default;
  AcDbFace(const AcGePoint3d& p0, const AcGePoint3d& p1, const AcGePoint3d& p2, const AcGePoint3d& p3)
      : m_corners{p0, p1, p2, p3} {}
  /// `eInvalidIndex` outside 0 to 3.
  Acad::ErrorStatus getVertexAt(Adesk::UInt16 index, AcGePoint3d& point) const;
  Acad::ErrorStatus setVertexAt(Adesk::UInt16 index, const AcGePoint3d& point);
  Acad::ErrorStatus isEdgeVisibleAt(Adesk::UInt16 index, bool& visible) const;

  Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
  void subWorldDraw(AcGiWorldDraw& draw) const override;
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  bool takeGroup(AcDbDxfReader& in) override;
  void exchangeFields(AcDbFace& other);

private:
  AcGePoint3d m_corners[4];
  Adesk::Int16 m_hiddenEdges = 0;  // bit i: the edge behind corner i
  bool m_fourth = true;            // the file gave the fourth corner
};
