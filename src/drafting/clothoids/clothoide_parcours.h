#pragma once

#include "base/export.h"
#include "drafting/clothoids/clothoide.h"

#include <vector>

/// Going along a clothoid.
namespace veltora {

/// Vertices of a polyline along the curve, as s less `startParam`, ascending, both ends among them. When
/// `startParam` exceeds `endParam` the two change places first. More than 10000 vertices are too many: then
/// the tolerance doubles until they fit.
/// @param tolerance  of a chord from the curve at the place that the ratio gives, 0.001 unless above 0
/// @param ratio  where a piece that is too long is cut first, 0.5 unless strictly between 0 and 1
/// @return empty when the parameters are not finite or the curve has too many turns for 10000 vertices
VELTORA_API std::vector<double> echantillonner(clothoide& courbe, double tolerance, double ratio);

/// A place of the plan in space.
inline AcGePoint3d enPlan(const AcGePoint2d& point) { return {point.x, point.y, 0.0}; }

/// A point of a curve and its s.
struct lieuClothoide {
  AcGePoint2d point;
  double s = 0.0;
};

/// The point of the curve nearest to a point, between its two ends.
VELTORA_API lieuClothoide pointLePlusProche(const clothoide& courbe, const AcGePoint2d& point);

}  // namespace veltora
