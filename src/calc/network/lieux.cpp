#include "calc/network/lieux.h"

#include "calc/angles.h"

#include <cmath>

// Symbols: D distance between target and reference, t tangent of half the complement of the angle, u its
// reciprocal, w factor from the chord to the centre.

namespace veltora {
namespace {

constexpr double kDroitesParalleles = 1e-12;  // determinant of the plain direction vectors, strict
constexpr double kRacinesEgales = 1e-8;       // roots of the line's parameter, strict
constexpr double kPointsEgaux = 1e-8;         // drawing units, strict
constexpr double kBoutArc = 1e-7;             // radians
constexpr double kAngleAligne = 1e-6;         // radians, strict
constexpr double kTangenteNulle = 1e-6;       // strict

AcGePoint2d milieu(const AcGePoint2d& a, const AcGePoint2d& b) {
  return {(a.x + b.x) * 0.5, (a.y + b.y) * 0.5};
}

bool surArc(const lieuGeometrique& lieu, const AcGePoint2d& point) {
  if (lieu.genre != lieuGeometrique::kArc) return true;
  const double angle = std::atan2(point.y - lieu.centre.y, point.x - lieu.centre.x);
  const double depuisDebut = reduireAngle(angle - lieu.debut, kTour);
  const double balayage = reduireAngle(lieu.fin - lieu.debut, kTour);
  return depuisDebut > kBoutArc && depuisDebut < balayage - kBoutArc;
}

pointsCommuns droiteDroite(const lieuGeometrique& a, const lieuGeometrique& b) {
  pointsCommuns communs;
  const AcGeVector2d da = a.p2 - a.p1;
  const AcGeVector2d db = b.p2 - b.p1;
  const double determinant = da.crossProduct(db);
  if (!(std::fabs(determinant) >= kDroitesParalleles)) return communs;
  const AcGeVector2d ecart = b.p1 - a.p1;
  const double ta = ecart.crossProduct(db) / determinant;
  const double tb = ecart.crossProduct(da) / determinant;
  communs.ajouter(milieu(a.p1 + da * ta, b.p1 + db * tb));
  return communs;
}

pointsCommuns droiteCercle(const lieuGeometrique& droite, const lieuGeometrique& cercle) {
  pointsCommuns communs;
  const AcGeVector2d d = droite.p2 - droite.p1;
  const AcGeVector2d e = droite.p1 - cercle.centre;
  const double a = d.lengthSqrd();
  if (!(a > 0.0)) return communs;
  const double b = 2.0 * d.dotProduct(e);
  const double c = e.lengthSqrd() - cercle.rayon * cercle.rayon;
  const double discriminant = b * b - 4.0 * a * c;
  if (discriminant < 0.0) {
    const AcGePoint2d pied = droite.p1 + d * (-b / (2.0 * a));
    communs.ajouter(milieu(pied, cercle.centre + (pied - cercle.centre).normal() * cercle.rayon));
    return communs;
  }
  const double racine = std::sqrt(discriminant);
  const double t1 = (-b - racine) / (2.0 * a);
  const double t2 = (-b + racine) / (2.0 * a);
  if (std::fabs(t2 - t1) < kRacinesEgales) {
    communs.ajouter(droite.p1 + d * ((t1 + t2) * 0.5));
  } else {
    communs.ajouter(droite.p1 + d * t1);
    communs.ajouter(droite.p1 + d * t2);
  }
  return communs;
}

pointsCommuns cercleCercle(const lieuGeometrique& a, const lieuGeometrique& b) {
  pointsCommuns communs;
  const AcGeVector2d axe = b.centre - a.centre;
  const double d = axe.length();
  if (!(d > 0.0) || d > a.rayon + b.rayon || d < std::fabs(a.rayon - b.rayon)) return communs;
  const double x = (d * d + a.rayon * a.rayon - b.rayon * b.rayon) / (2.0 * d);
  const double h = std::sqrt(std::fmax(0.0, a.rayon * a.rayon - x * x));
  const AcGeVector2d unite = axe * (1.0 / d);
  const AcGePoint2d base = a.centre + unite * x;
  const AcGePoint2d p = base + unite.perpVector() * h;
  const AcGePoint2d q = base - unite.perpVector() * h;
  if (p.distanceTo(q) < kPointsEgaux) {
    communs.ajouter(p);
  } else {
    communs.ajouter(p);
    communs.ajouter(q);
  }
  return communs;
}

}  // namespace

lieuGeometrique lieuGeometrique::droite(const AcGePoint2d& a, const AcGePoint2d& b) {
  lieuGeometrique lieu;
  lieu.genre = kDroite;
  lieu.p1 = a;
  lieu.p2 = b;
  return lieu;
}

lieuGeometrique lieuGeometrique::cercle(const AcGePoint2d& centre, double rayon) {
  lieuGeometrique lieu;
  lieu.genre = kCercle;
  lieu.centre = centre;
  lieu.rayon = rayon;
  return lieu;
}

lieuGeometrique lieuGeometrique::arcCapable(const AcGePoint2d& vise, const AcGePoint2d& reference,
                                            double angle) {
  for (const double ecart : {angle, angle - kPi, kTour - angle}) {
    if (std::fabs(ecart) < kAngleAligne) return droite(vise, reference);
  }
  const double a = reduireAngle(angle, kTour);
  const double t =
      a > kPi ? -std::fabs(std::tan((kPi - (kTour - a)) * 0.5)) : std::fabs(std::tan((kPi - a) * 0.5));
  lieuGeometrique lieu;
  lieu.genre = kArc;
  if (std::fabs(t) < kTangenteNulle) {
    lieu.centre = milieu(vise, reference);
    lieu.fin = kPi;
    return lieu;
  }
  const double u = 1.0 / t;
  lieu.rayon = std::fabs(vise.distanceTo(reference) * 0.25 * (u + t));
  const double w = (t - u) * -0.25;
  lieu.centre.x = (reference.y - vise.y) * w + (reference.x + vise.x) * 0.5;
  lieu.centre.y = (vise.x - reference.x) * w + (vise.y + reference.y) * 0.5;
  lieu.debut = reduireAngle(std::atan2(reference.y - lieu.centre.y, reference.x - lieu.centre.x), kTour);
  lieu.fin = reduireAngle(std::atan2(vise.y - lieu.centre.y, vise.x - lieu.centre.x), kTour);
  if (t < 0.0) std::swap(lieu.debut, lieu.fin);
  return lieu;
}

pointsCommuns intersecter(const lieuGeometrique& a, const lieuGeometrique& b) {
  const bool droiteA = a.genre == lieuGeometrique::kDroite;
  const bool droiteB = b.genre == lieuGeometrique::kDroite;
  if (droiteA && droiteB) return droiteDroite(a, b);
  const pointsCommuns tous = droiteA ? droiteCercle(a, b) : droiteB ? droiteCercle(b, a) : cercleCercle(a, b);
  pointsCommuns communs;
  for (int i = 0; i < tous.nombre; ++i) {
    const AcGePoint2d& point = tous.points[static_cast<std::size_t>(i)];
    if (surArc(a, point) && surArc(b, point)) communs.ajouter(point);
  }
  return communs;
}

}  // namespace veltora
