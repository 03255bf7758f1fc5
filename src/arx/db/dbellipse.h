#pragma once

#include "arx/db/dbcurve.h"

#include <span>

struct DxfTag;

/// Ellipse or a part of one, kept in world coordinates. Its points are
/// center + majorAxis cos a + minorAxis sin a, where the minor axis stands on the left of the major one as
/// seen from the normal; a is the parameter, not the angle at the centre, but for a circle.
class ARX_API AcDbEllipse : public AcDbCurve {
  ACRX_DECLARE_MEMBERS(AcDbEllipse)
  ACDB_DECLARE_COPY(AcDbEllipse)
public:
  AcDbEllipse() = default;
  /// See `set`; what it refuses leaves the unit circle.
  AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& majorAxis,
              double radiusRatio, double startAngle = 0.0, double endAngle = 6.283185307179586);
  [[nodiscard]] AcGePoint3d center() const { return m_shape.center; }
  [[nodiscard]] AcGeVector3d normal() const;
  [[nodiscard]] AcGeVector3d majorAxis() const { return m_shape.major; }
  [[nodiscard]] AcGeVector3d minorAxis() const;
  [[nodiscard]] double radiusRatio() const { return m_shape.ratio; }
  /// Angles at the centre from the major axis, radians; equal ones give the whole ellipse.
  [[nodiscard]] double startAngle() const { return angleAtParam(m_shape.start); }
  [[nodiscard]] double endAngle() const { return angleAtParam(m_shape.start + totalParam()); }
  /// `eInvalidInput`, nothing changed: an axis without length or not square on the normal (to 1e-6 of the
  /// two), a ratio outside 1e-6 to 1e6, what is no number.
  Acad::ErrorStatus set(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& majorAxis,
                        double radiusRatio, double startAngle = 0.0, double endAngle = 6.283185307179586);
  Acad::ErrorStatus setCenter(const AcGePoint3d& center);
  Acad::ErrorStatus setRadiusRatio(double ratio);  ///< `eInvalidInput` as above
  /// The angle at the centre of a parameter and back, in the same turn.
  [[nodiscard]] double angleAtParam(double param) const;
  [[nodiscard]] double paramAtAngle(double angle) const;

  [[nodiscard]] bool isClosed() const override;
  [[nodiscard]] std::vector<AcGeCurvePiece> pieces() const override;
  /// Splines that keep within 1e-6 of the distance, one a smooth stretch; see `acdbOffsetSpline`.
  Acad::ErrorStatus getOffsetCurves(double offset, std::vector<AcDbCurve*>& curves) const override;
  /// Any map that does not flatten the plane; the result has the axes of the mapped ellipse.
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;
  /// Whether the groups of a file give an ellipse; other ones stay file text (`AcDbOtherEntity`).
  [[nodiscard]] static bool isGivenBy(std::span<const DxfTag> tags);

protected:
  bool takeGroup(AcDbDxfReader& in) override;
  void exchangeFields(AcDbEllipse& other);

private:
  struct Shape {
    AcGePoint3d center;
    AcGeVector3d major{1, 0, 0};
    AcGeVector3d normal{0, 0, 1};
    double ratio = 1.0;
    double start = 0.0;  // parameters, as in the file
    double end = 6.283185307179586;
    bool take(int code, double value);
    [[nodiscard]] bool isUsable() const;
  };
  [[nodiscard]] double totalParam() const;
  Shape m_shape;
};
