#pragma once

#include "arx/db/dbents.h"
#include "arx/ge/gecurvepiece.h"

#include <memory>
#include <vector>

namespace veltora::base {
class BoxIndex;
}

/// Something that is drawn along a line: parameters, lengths and nearest points. Parameters: of a line the
/// length from the start, of a circle or an arc the angle, of a polyline the vertex number and the share of
/// the segment behind it, of an ellipse its parameter, of a spline the value between its knots. Functions
/// return `eDegenerateGeometry` when the curve has no point at all (a polyline without vertices).
class ARX_API AcDbCurve : public AcDbEntity {
  ACRX_DECLARE_MEMBERS(AcDbCurve)
public:
  [[nodiscard]] virtual bool isClosed() const { return false; }
  virtual Acad::ErrorStatus getStartParam(double& param) const;
  virtual Acad::ErrorStatus getEndParam(double& param) const;  ///< 1e300 for a ray
  /// `eNotApplicable` for a construction line, whose parameters begin at -1e300.
  virtual Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const;
  virtual Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const;  ///< `eNotApplicable` for a ray
  /// `eOutOfRange` beyond the ends; parameters of closed curves are not wrapped.
  virtual Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const;
  /// `eInvalidInput` when the point is farther than 1e-6 of the drawing's size from the curve (at least 1e-6
  /// units).
  virtual Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const;
  virtual Acad::ErrorStatus getDistAtParam(double param, double& dist) const;
  virtual Acad::ErrorStatus getParamAtDist(double dist, double& param) const;
  virtual Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& dist) const;
  virtual Acad::ErrorStatus getPointAtDist(double dist, AcGePoint3d& point) const;
  /// Nearest point in space. @param extend straight ends go on endlessly, arcs become whole circles or
  /// ellipses, splines end where
  ///               they end
  virtual Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& result,
                                              bool extend = false) const;
  /// Direction of travel with the length of the derivative by the parameter; zero on a piece without length.
  virtual Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& derivative) const;
  /// Area enclosed, an open curve closed by its chord; absolute value, of the projection on the curve's
  /// plane.
  virtual Acad::ErrorStatus getArea(double& area) const;
  /// Parallel curves, owned by the caller. A positive distance lies to the right of the direction of travel,
  /// for circles and arcs outside. `eInvalidInput` when nothing is left, `eNotImplementedYet` for curves
  /// without parallels.
  virtual Acad::ErrorStatus getOffsetCurves(double offset, std::vector<AcDbCurve*>& curves) const;

  void subWorldDraw(AcGiWorldDraw& draw) const override;
  Acad::ErrorStatus intersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                  AcGePoint3dArray& points) const override;
  /// The curve piece by piece, in order; a closing piece included.
  [[nodiscard]] virtual std::vector<AcGeCurvePiece> pieces() const = 0;

protected:
  void exchangeFields(AcDbCurve& other) { AcDbEntity::exchangeFields(other); }
  bool takeGroup(AcDbDxfReader& in) override { return AcDbEntity::takeGroup(in); }
};

/// The nearest points of one curve for many places, by an R-tree over its pieces. Holds the curve as it was
/// when the search was made.
class ARX_API AcDbCurveSearch {
public:
  explicit AcDbCurveSearch(const AcDbCurve& curve);
  ~AcDbCurveSearch();
  AcDbCurveSearch(const AcDbCurveSearch&) = delete;
  AcDbCurveSearch& operator=(const AcDbCurveSearch&) = delete;
  /// What `getClosestPointTo` gives, to the bit. @return false, point unchanged, when the curve has no point
  /// or certainly none as near as `reach` in the plan view, wherever the nearest in space lies
  bool closestWithin(double reach, const AcGePoint3d& given, AcGePoint3d& result);
  /// What `getParamAtPoint` gives, to the bit. @return false, parameter unchanged, where it refuses
  bool paramAtPoint(const AcGePoint3d& point, double& param);

private:
  /// Numbers of the pieces whose boxes lie within a distance in plan.
  const std::vector<std::size_t>& within(double distance, const AcGePoint3d& given);
  std::vector<AcGeCurvePiece> m_pieces;
  std::unique_ptr<veltora::base::BoxIndex> m_index;
};
