#pragma once

#include "arx/db/dbcurve.h"
#include "arx/ge/genurbs.h"

#include <optional>
#include <span>

struct DxfTag;

/// Spline: by control points, knots and weights, or by fit points alone. One that has control points is what
/// they say, whatever its fit points. By fit points alone it is the cubic curve through them that
/// `acgeSplineThrough` gives: other programs may lead it a little differently between two of them.
class ARX_API AcDbSpline : public AcDbCurve {
  ACRX_DECLARE_MEMBERS(AcDbSpline)
  ACDB_DECLARE_COPY(AcDbSpline)
public:
  AcDbSpline() = default;
  /// What `setNurbs` or `setFitPoints` refuses leaves a spline without points.
  explicit AcDbSpline(AcGeNurbs nurbs) { static_cast<void>(setNurbs(std::move(nurbs))); }
  explicit AcDbSpline(std::vector<AcGePoint3d> fitPoints) {
    static_cast<void>(setFitPoints(std::move(fitPoints)));
  }
  /// `eInvalidInput`, nothing changed, for what is no curve (`AcGeNurbs::isUsable`). Takes the fit points
  /// away.
  Acad::ErrorStatus setNurbs(AcGeNurbs nurbs);
  /// Two or more that are not all the same, else `eInvalidInput`. Takes the control points away.
  Acad::ErrorStatus setFitPoints(std::vector<AcGePoint3d> points);
  [[nodiscard]] int degree() const { return m_shape.nurbs.degree; }
  [[nodiscard]] int numControlPoints() const { return static_cast<int>(m_shape.nurbs.controls.size()); }
  [[nodiscard]] int numFitPoints() const { return static_cast<int>(m_shape.fit.size()); }
  Acad::ErrorStatus getControlPointAt(int index, AcGePoint3d& point) const;  ///< `eInvalidIndex` outside
  Acad::ErrorStatus getFitPointAt(int index, AcGePoint3d& point) const;      ///< likewise
  [[nodiscard]] double weightAt(int index) const;                            ///< 1 where none is told
  [[nodiscard]] bool isRational() const { return !m_shape.nurbs.weights.empty(); }
  [[nodiscard]] const AcGeNurbs& nurbs() const { return m_shape.nurbs; }

  /// Its ends lie on each other.
  [[nodiscard]] bool isClosed() const override;
  /// One a stretch between two knots.
  [[nodiscard]] std::vector<AcGeCurvePiece> pieces() const override;
  /// Splines that keep within 1e-6 of the distance; see `acdbOffsetSpline`.
  Acad::ErrorStatus getOffsetCurves(double offset, std::vector<AcDbCurve*>& curves) const override;
  /// Any map: the curve of the mapped points is the mapped curve. Fit points alone: similarities,
  /// `eCannotScaleNonUniformly` for others.
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;
  /// Whether the groups of a file give a spline; other ones stay file text (`AcDbOtherEntity`).
  [[nodiscard]] static bool isGivenBy(std::span<const DxfTag> tags);

protected:
  bool takeGroup(AcDbDxfReader& in) override;
  void exchangeFields(AcDbSpline& other);

private:
  struct Shape {
    AcGeNurbs nurbs;
    std::vector<AcGePoint3d> fit;
    std::optional<AcGeVector3d> normal;  // as far as the file tells, likewise the next
    std::optional<AcGeVector3d> startTangent;
    std::optional<AcGeVector3d> endTangent;
    std::optional<double> tolerances[3];  // of knots, control points, fit points
    int flags = 0;
    bool take(int code, double value);
    static bool means(int code);
    void takePoint(int code, double value);
    [[nodiscard]] bool isUsable() const;
    [[nodiscard]] std::vector<AcGeSplineSpan> spans() const;
  };
  Shape m_shape;
};
