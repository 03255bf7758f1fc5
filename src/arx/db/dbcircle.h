#pragma once

#include "arx/db/dbcurve.h"

struct AcDbPlaneMap;

/// What a circle and an arc share; at run time it is no class of its own. The centre is kept in the
/// coordinates of the own plane, as in drawing files, and offered in world ones.
class ARX_API AcDbRoundCurve : public AcDbCurve {
public:
  [[nodiscard]] AcGePoint3d center() const;
  Acad::ErrorStatus setCenter(const AcGePoint3d& center);
  [[nodiscard]] double radius() const { return m_radius; }
  Acad::ErrorStatus setRadius(double radius);  ///< `eInvalidInput` for a negative or not finite one
  [[nodiscard]] double thickness() const { return m_thickness; }
  Acad::ErrorStatus setThickness(double thickness);
  [[nodiscard]] AcGeVector3d normal() const { return m_normal; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);  ///< the centre stays in the world

  Acad::ErrorStatus getOffsetCurves(double offset, std::vector<AcDbCurve*>& curves) const override;
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  AcDbRoundCurve() = default;
  AcDbRoundCurve(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);
  /// The curve as one piece. @param start, sweep  radians
  [[nodiscard]] std::vector<AcGeCurvePiece> roundPiece(double start, double sweep) const;
  /// Moves what is shared; refuses what makes an ellipse.
  Acad::ErrorStatus transformRound(const AcDbPlaneMap& plane);
  bool takeGroup(AcDbDxfReader& in) override;
  void exchangeFields(AcDbRoundCurve& other);

private:
  AcGePoint3d m_center;  // own plane
  AcGeVector3d m_normal = AcGeVector3d::kZAxis;
  double m_radius = 0.0;
  double m_thickness = 0.0;
};

/// Circle.
class ARX_API AcDbCircle : public AcDbRoundCurve {
  ACRX_DECLARE_MEMBERS(AcDbCircle)
  ACDB_DECLARE_COPY(AcDbCircle)
public:
  AcDbCircle() = default;
  AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius)
      : AcDbRoundCurve(center, normal, radius) {}

  [[nodiscard]] bool isClosed() const override { return true; }
  [[nodiscard]] std::vector<AcGeCurvePiece> pieces() const override;
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
};

/// Circular arc, counter-clockwise about its normal. Angles in radians from the X axis of its own plane.
class ARX_API AcDbArc : public AcDbRoundCurve {
  ACRX_DECLARE_MEMBERS(AcDbArc)
  ACDB_DECLARE_COPY(AcDbArc)
public:
  AcDbArc() = default;
  AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle);
  AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double startAngle,
          double endAngle);
  [[nodiscard]] double startAngle() const;
  [[nodiscard]] double endAngle() const;
  Acad::ErrorStatus setStartAngle(double radians);
  Acad::ErrorStatus setEndAngle(double radians);
  /// Above 0, at most one turn; equal angles give a whole turn.
  [[nodiscard]] double totalAngle() const;
  [[nodiscard]] double length() const { return totalAngle() * radius(); }

  [[nodiscard]] std::vector<AcGeCurvePiece> pieces() const override;
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;

protected:
  bool takeGroup(AcDbDxfReader& in) override;
  void exchangeFields(AcDbArc& other);

private:
  double m_startDegrees = 0.0;  // as in the file
  double m_endDegrees = 0.0;
};
