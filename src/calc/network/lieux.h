#pragma once

#include "arx/ge/gepoint.h"

#include <array>

/// Loci of points and where they meet. Sources: the points that see a segment D under an angle a lie on an
/// arc (Euclid III.21) of radius D / (2 sin a), whose centre is (D/2) / tan a away from the middle of the
/// segment; with t = tan((pi - a)/2) these are D/4 (1/t + t) and D/4 (t - 1/t). A line p + t d meets a circle
/// where t is a root of |p + t d - c|^2 = R^2; two circles at a distance d meet on the line at (d^2 + Ra^2 -
/// Rb^2) / (2 d) from the first centre; two lines by Cramer's rule.
namespace veltora {

/// Where an observation lets an unknown point lie: on a line, an arc or a circle.
struct lieuGeometrique {
  enum Genre { kAucun = 0, kDroite = 1, kArc = 2, kCercle = 3 } genre = kAucun;
  AcGePoint2d p1;  ///< line: two points
  AcGePoint2d p2;
  AcGePoint2d centre;  ///< circle and arc
  double rayon = 0.0;
  double debut = 0.0;  ///< arc: radians from the X axis, in one turn, swept counter-clockwise
  double fin = 0.0;

  static lieuGeometrique droite(const AcGePoint2d& a, const AcGePoint2d& b);
  static lieuGeometrique cercle(const AcGePoint2d& centre, double rayon);
  /// Where `vise` and `reference` are seen under an angle (radians); the line through both near 0 and pi.
  static lieuGeometrique arcCapable(const AcGePoint2d& vise, const AcGePoint2d& reference, double angle);
};

/// Up to two points.
struct pointsCommuns {
  int nombre = 0;
  std::array<AcGePoint2d, 2> points;
  void ajouter(const AcGePoint2d& point) { points[static_cast<std::size_t>(nombre++)] = point; }
};

/// Points that two loci share. A line that misses a circle gives one point between the two, a near miss
/// counting as a hit. Concentric circles, parallel lines, and a line through two equal points give none.
pointsCommuns intersecter(const lieuGeometrique& a, const lieuGeometrique& b);

}  // namespace veltora
