#pragma once

#include "arx/ge/gebezier.h"

#include <optional>
#include <vector>

/// One stretch of a spline between two of its knots.
struct AcGeSplineSpan {
  double from = 0.0;  ///< the spline's parameters at its ends
  double to = 1.0;
  AcGeBezierCurve3d curve;
};

/// A spline as files give it: degree, control points, their weights and the knots.
struct ARX_API AcGeNurbs {
  int degree = 3;
  std::vector<double> knots;          ///< number of control points + degree + 1, ascending
  std::vector<AcGePoint3d> controls;  ///< more than the degree
  std::vector<double> weights;        ///< one a control point, or none

  /// Whether it is a curve: a degree from 1 to 25, counts that fit, finite numbers, weights above 0, knots
  /// that do not descend, of which no inner one stands more often than the degree (the curve would break),
  /// and some range between them. Any knots of this kind do: clamped or not, periodic, with multiplicities.
  [[nodiscard]] bool isUsable() const;
  /// Its stretches of some range in order; for a usable one. By the values of its polar form at the knots
  /// (L. Ramshaw, Blossoms are polar forms, 1989), which de Boor's recursion gives.
  [[nodiscard]] std::vector<AcGeSplineSpan> spans() const;
};

/// The cubic curve through points whose curvature has no jump: parameters by the lengths of the chords, ends
/// as the tangents say, else without curvature; a closed one goes on from the last point to the first.
/// Derivatives by the tridiagonal system of C. de Boor, A Practical Guide to Splines, chapter IV.
/// @param points  doubled neighbours count once; nothing for less than two
/// @param startTangent, endTangent  directions; their lengths have no meaning
[[nodiscard]] ARX_API std::vector<AcGeSplineSpan> acgeSplineThrough(
    const std::vector<AcGePoint3d>& points, const std::optional<AcGeVector3d>& startTangent,
    const std::optional<AcGeVector3d>& endTangent, bool closed);
