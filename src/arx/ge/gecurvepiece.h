#pragma once

#include "arx/ge/gebezier.h"
#include "arx/ge/gematrix.h"

#include <memory>
#include <vector>

/// One straight, circular, elliptic or spline piece of a curve in world coordinates. Its share t runs from 0
/// at the start to 1 at the end, proportional to the length along a straight or circular piece, to the
/// parameter along others; `startParam` and `endParam` are the curve's parameters there.
struct ARX_API AcGeCurvePiece {
  AcGePoint3d start;
  AcGePoint3d end;
  double startParam = 0.0;
  double endParam = 1.0;
  bool isArc = false;          ///< of a circle or an ellipse
  bool endless = false;        ///< goes on beyond the end (a ray)
  bool endlessBefore = false;  ///< and in front of the start (a construction line)
  AcGePoint3d center;          ///< of an arc, likewise the rest
  AcGeVector3d xAxis;          ///< unit vectors of the plane: angle 0 and a quarter turn
  AcGeVector3d yAxis;
  double radius = 0.0;
  double ratio = 1.0;  ///< half axis along yAxis to that along xAxis, the radius; 1 for a circle
  double startAngle = 0.0;
  double sweep = 0.0;                               ///< radians, signed; of an ellipse its parameter
  std::shared_ptr<const AcGeBezierCurve3d> bezier;  ///< of a spline's stretch, else null

  /// A straight line, or an arc of a circle: what the share is proportional to the length of.
  [[nodiscard]] bool isEven() const { return !bezier && (!isArc || ratio == 1.0); }
  [[nodiscard]] double length() const { return lengthTo(1.0); }
  /// From the start to a share. Of ellipses and splines by Gauss's rule to 12 digits.
  [[nodiscard]] double lengthTo(double t) const;
  /// Share at a length from the start, from 0 to 1; the inverse of `lengthTo`.
  [[nodiscard]] double shareAt(double length) const;
  [[nodiscard]] AcGePoint3d pointAt(double t) const;
  /// Derivative by the share.
  [[nodiscard]] AcGeVector3d derivativeAt(double t) const;
  [[nodiscard]] double paramAt(double t) const { return startParam + (endParam - startParam) * t; }
  /// Share of the nearest point; `before` / `after`: the piece goes on beyond its start / end, which a spline
  /// does not.
  [[nodiscard]] double closest(const AcGePoint3d& point, bool before, bool after) const;
  /// Oriented area between the piece and its chord.
  [[nodiscard]] AcGeVector3d areaOverChord() const;
  /// Shares of the ends of chords that stay near the curve, from above 0 to 1.
  [[nodiscard]] std::vector<double> chords() const;
  /// The piece as rational Bezier curves, an arc cut into quarters at most. @param whole  all of an arc's
  /// turn
  [[nodiscard]] std::vector<AcGeBezierCurve3d> beziers(bool whole) const;
  /// Exact box of what a matrix, not necessarily uniform, makes of the piece.
  void addToExtents(const AcGeMatrix3d& matrix, AcDbExtents& extents) const;

private:
  [[nodiscard]] double lengthBetween(double from, double to) const;
  [[nodiscard]] double closestParameter(const AcGePoint3d& point, bool whole) const;
  [[nodiscard]] double angleShare(const AcGeVector2d& direction, bool whole) const;
};
