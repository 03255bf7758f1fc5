#pragma once

#include "arx/ge/gematrix.h"

/// One straight or circular piece of a curve in world coordinates. Its share t runs from 0 at the start to 1
/// at the end, proportional to the length along the piece; `startParam` and `endParam` are the curve's
/// parameters there.
struct AcGeCurvePiece {
  AcGePoint3d start;
  AcGePoint3d end;
  double startParam = 0.0;
  double endParam = 1.0;
  bool isArc = false;
  bool endless = false;  ///< goes on beyond the end (a ray)
  AcGePoint3d center;    ///< of an arc, likewise the rest
  AcGeVector3d xAxis;    ///< unit vectors of the plane: angle 0 and a quarter turn
  AcGeVector3d yAxis;
  double radius = 0.0;
  double startAngle = 0.0;
  double sweep = 0.0;  ///< radians, signed

  [[nodiscard]] double length() const;
  [[nodiscard]] AcGePoint3d pointAt(double t) const;
  [[nodiscard]] double paramAt(double t) const { return startParam + (endParam - startParam) * t; }
  /// Share of the nearest point; `before` / `after`: the piece goes on beyond its start / end.
  [[nodiscard]] double closest(const AcGePoint3d& point, bool before, bool after) const;
  /// Exact box of what a matrix, not necessarily uniform, makes of the piece.
  void addToExtents(const AcGeMatrix3d& matrix, AcDbExtents& extents) const;
};
