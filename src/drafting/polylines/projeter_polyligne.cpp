#include "drafting/polylines/projeter_polyligne.h"

#include "arx/db/dbpl.h"
#include "arx/ge/gematrix.h"

#include <algorithm>
#include <cmath>

namespace veltora {
namespace {

constexpr double kMemeParametre = 1e-6;

struct pointProjete {
  double parametre;
  AcGePoint2d sommet;  ///< in the plane of the polyline
};

std::vector<pointProjete> projeter(const AcDbPolyline& polyligne, const std::vector<AcGePoint2d>& points,
                                   double distance) {
  const AcGeMatrix3d versPlan = AcGeMatrix3d::worldToPlane(polyligne.normal());
  const AcGeMatrix3d versMonde = AcGeMatrix3d::planeToWorld(polyligne.normal());
  std::vector<pointProjete> projetes;
  AcDbCurveSearch proches(polyligne);
  for (const AcGePoint2d& point : points) {
    AcGePoint3d plan = versPlan * AcGePoint3d(point.x, point.y, 0.0);
    plan.z = polyligne.elevation();
    AcGePoint3d pied;
    double parametre = 0.0;
    const AcGePoint3d place = versMonde * plan;
    // The plane may lie aslant: then the place is beside the point in the plan view.
    const double portee =
        distance > 0.0 ? distance + std::hypot(place.x - point.x, place.y - point.y) : HUGE_VAL;
    if (!proches.closestWithin(portee, place, pied)) continue;
    if (distance > 0.0 && !(std::hypot(pied.x - point.x, pied.y - point.y) < distance)) continue;
    if (!proches.paramAtPoint(pied, parametre)) continue;
    projetes.push_back({parametre, {plan.x, plan.y}});
  }
  return projetes;
}

}  // namespace

int projeterPolyligne(AcDbPolyline& polyligne, const std::vector<AcGePoint2d>& points, double distance) {
  std::vector<pointProjete> projetes = projeter(polyligne, points, distance);
  std::stable_sort(projetes.begin(), projetes.end(),
                   [](const pointProjete& a, const pointProjete& b) { return a.parametre < b.parametre; });
  std::vector<pointProjete> gardes;
  for (const pointProjete& projete : projetes)
    if (gardes.empty() || projete.parametre - gardes.back().parametre >= kMemeParametre)
      gardes.push_back(projete);
  if (gardes.size() < 2) return 0;
  const auto nombre = static_cast<unsigned int>(gardes.size());
  while (polyligne.numVerts() > nombre) polyligne.removeVertexAt(polyligne.numVerts() - 1);
  for (unsigned int i = 0; i < nombre; ++i) {
    const AcGePoint2d& sommet = gardes[i].sommet;
    if (i < polyligne.numVerts())
      polyligne.setPointAt(i, sommet);
    else
      polyligne.addVertexAt(i, sommet);
    polyligne.setBulgeAt(i, 0.0);
  }
  return static_cast<int>(nombre);
}

}  // namespace veltora
