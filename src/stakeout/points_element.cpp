// Points of arcs.
//
//   R        radius
//   a1, a2   angles of the ends, counter-clockwise from a1 to a2
//   t        step along the arc, or largest distance between chord and arc
//   a        angle of a step: t / R, or 2 acos(1 - t / R), from the rise of a chord R (1 - cos(a / 2))

#include "stakeout/points_element.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dbcircle.h"
#include "arx/db/dbheavypoly.h"
#include "arx/db/dblines.h"
#include "arx/db/dbpl.h"
#include "calc/angles.h"
#include "drafting/clothoids/clothoide_donnees.h"
#include "drafting/clothoids/clothoide_parcours.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace veltora {
namespace {

constexpr double kPlusDePoints = 1e6;

bool pointsDroite(const AcGePoint3d& de, const AcGePoint3d& vers, const paramsImplantation& params,
                  AcGePoint3dArray& points) {
  points.push_back(de);
  const double longueur = vers.distanceTo(de);
  if (params.interpolerDroites) {
    if (!(longueur / params.distDroites <= kPlusDePoints)) return longueur == 0.0;
    for (int k = 1; k * params.distDroites < longueur; ++k)
      points.push_back(de + (vers - de) * (k * params.distDroites / longueur));
  }
  points.push_back(vers);
  return true;
}

bool pointsArc(const AcGeCurvePiece& arc, const paramsImplantation& params, AcGePoint3dArray& points) {
  const bool inverse = arc.sweep < 0.0;
  const double fin = arc.startAngle + arc.sweep;
  std::vector<double> angles;
  if (!anglesArc(arc.radius, inverse ? fin : arc.startAngle, inverse ? arc.startAngle : fin, params.distArcs,
                 params.modeArcs == paramsImplantation::kErreurMax, angles))
    return false;
  if (inverse) std::ranges::reverse(angles);
  for (const double angle : angles)
    points.push_back(arc.center + arc.xAxis * (arc.radius * std::cos(angle)) +
                     arc.yAxis * (arc.radius * std::sin(angle)));
  return true;
}

bool pointsSegments(const AcDbCurve& courbe, const paramsImplantation& params, AcGePoint3dArray& points) {
  return std::ranges::all_of(courbe.pieces(), [&](const AcGeCurvePiece& piece) {
    return piece.isArc ? pointsArc(piece, params, points)
                       : pointsDroite(piece.start, piece.end, params, points);
  });
}

bool pointsClothoide(clothoide courbe, double altitude, const paramsImplantation& params,
                     AcGePoint3dArray& points) {
  if (courbe.startParam > courbe.endParam) std::swap(courbe.startParam, courbe.endParam);
  const double longueur = courbe.endParam - courbe.startParam;
  std::vector<double> abscisses;
  if (params.modeClothoides == paramsImplantation::kErreurMax) {
    constexpr double kMoitie = 0.5;
    abscisses = echantillonner(courbe, params.distClothoides, kMoitie);
  } else {
    if (!(longueur / params.distClothoides <= kPlusDePoints)) return false;
    for (int k = 0; k * params.distClothoides < longueur; ++k) abscisses.push_back(k * params.distClothoides);
    abscisses.push_back(longueur);
  }
  for (const double s : abscisses) {
    const AcGePoint2d lieu = courbe.pointEn(courbe.startParam + s);
    points.emplace_back(lieu.x, lieu.y, altitude);
  }
  return true;
}

template <class Sommet, class Place>
void sommets(AcDbObjectIterator* parcours, Place place, AcGePoint3dArray& points) {
  const std::unique_ptr<AcDbObjectIterator> iterateur(parcours);
  for (; !iterateur->done(); iterateur->step()) {
    const AcDbObjectPointer<Sommet> sommet(iterateur->objectId());
    if (sommet.openStatus() == Acad::eOk) place(*sommet, points);
  }
}

bool lirePoints(const AcDbEntity& entite, const paramsImplantation& params, AcGePoint3dArray& points) {
  if (const auto* plane = AcDb2dPolyline::cast(&entite)) {
    sommets<AcDb2dVertex>(
        plane->vertexIterator(),
        [plane](const AcDb2dVertex& sommet, AcGePoint3dArray& lus) {
          if (sommet.vertexType() != AcDb::k2dSplineCtlVertex) lus.push_back(plane->vertexPosition(sommet));
        },
        points);
  } else if (const auto* gauche = AcDb3dPolyline::cast(&entite)) {
    sommets<AcDb3dPolylineVertex>(
        gauche->vertexIterator(),
        [](const AcDb3dPolylineVertex& sommet, AcGePoint3dArray& lus) { lus.push_back(sommet.position()); },
        points);
  } else if (const auto* point = AcDbPoint::cast(&entite)) {
    points.push_back(point->position());
  } else if (const auto* bloc = AcDbBlockReference::cast(&entite)) {
    points.push_back(bloc->position());
  } else if (clothoide courbe; AcDbPolyline::cast(&entite) && lireXDataEntite(courbe, entite)) {
    return pointsClothoide(courbe, AcDbPolyline::cast(&entite)->elevation(), params, points);
  } else if (AcDbLine::cast(&entite) || AcDbPolyline::cast(&entite) || AcDbArc::cast(&entite)) {
    return pointsSegments(*AcDbCurve::cast(&entite), params, points);
  }
  return true;
}

}  // namespace

bool anglesArc(double rayon, double a1, double a2, double pas, bool erreurMax, std::vector<double>& angles) {
  constexpr double kRayonNul = 0.00000001;
  if (!(rayon >= kRayonNul)) return true;
  angles.push_back(a1);
  double a = erreurMax && rayon > pas ? 2.0 * std::acos(1.0 - pas / rayon) : pas / rayon;
  double s = a2 - a1;
  if (s < 0.0) s += 2.0 * kPi;
  a = std::min(a, s / 2.0);
  if (a1 > a2) a2 += 2.0 * kPi;
  if (s > 0.0 && !(s / a <= kPlusDePoints)) return false;
  for (int k = 1; a1 + k * a < a2; ++k) angles.push_back(a1 + k * a);
  angles.push_back(a2);
  return true;
}

bool pointsElement(const AcDbEntity& entite, const paramsImplantation& params, AcGePoint3dArray& points) {
  points.clear();
  if (lirePoints(entite, params, points)) return true;
  points.clear();
  return false;
}

}  // namespace veltora
