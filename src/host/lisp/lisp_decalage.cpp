#include "host/lisp/lisp_decalage.h"

#include "arx/db/dbmain.h"
#include "arx/db/dbpl.h"
#include "arx/ed/acedads.h"
#include "base/box_index.h"
#include "base/format.h"
#include "core/drawing_space.h"
#include "core/picking.h"
#include "host/lisp/lisp_points.h"
#include "points/liste_points_du_dessin.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace veltora {
namespace {

/// Vertices farther than this from the one before, strictly, count; drawing units.
constexpr double kSommetNouveau = 1e-6;

bool choisirPolyligne(AcDbObjectId& id, AcGePoint3d& designe) {
  for (;;) {
    const Answer reponse = pickEntityOrLeave(L"\nSelectionnez la polyline", id, designe);
    if (reponse == Answer::kEnd) return false;
    if (reponse == Answer::kGiven && AcDbObjectPointer<AcDbPolyline>(id).openStatus() == Acad::eOk)
      return true;
    acutPrintf(L"\nCe n'est pas une polyline, recommencez ");
  }
}

/// The segment behind a parameter, or the nearest one with a length in front of it, else behind it.
unsigned int segmentDe(const AcDbPolyline& polyligne, double parametre) {
  const auto trace = [&](unsigned int i) {
    const AcDbPolyline::SegType type = polyligne.segType(i);
    return type == AcDbPolyline::kLine || type == AcDbPolyline::kArc;
  };
  const unsigned int sommets = polyligne.numVerts();
  const auto depart = std::min(static_cast<unsigned int>(std::max(parametre, 0.0)), sommets - 1);
  for (unsigned int i = depart + 1; i-- > 0;)
    if (trace(i)) return i;
  for (unsigned int i = depart; i < sommets; ++i)
    if (trace(i)) return i;
  return depart;
}

/// Distance with which the parallel is asked for, from where it shall pass; positive to the right of the
/// polyline. Nothing when the polyline has no segment there.
std::optional<double> distanceSignee(const AcDbPolyline& polyligne, const AcGePoint3d& passage) {
  const AcGeMatrix3d versPlan = AcGeMatrix3d::worldToPlane(polyligne.normal());
  AcGePoint3d plan = versPlan * passage;
  plan.z = polyligne.elevation();
  AcGePoint3d proche;
  double parametre = 0.0;
  if (polyligne.getClosestPointTo(AcGeMatrix3d::planeToWorld(polyligne.normal()) * plan, proche) !=
          Acad::eOk ||
      polyligne.getParamAtPoint(proche, parametre) != Acad::eOk)
    return std::nullopt;
  const AcGePoint2d point(plan.x, plan.y);
  const AcGePoint3d pied = versPlan * proche;
  const double distance = point.distanceTo({pied.x, pied.y});
  const unsigned int index = segmentDe(polyligne, parametre);
  AcGeLineSeg2d droite;
  if (polyligne.getLineSegAt(index, droite) == Acad::eOk)
    return droite.side(point) > 0 ? -distance : distance;
  AcGeCircArc2d arc;
  double bombement = 0.0;
  if (polyligne.getArcSegAt(index, arc) != Acad::eOk || polyligne.getBulgeAt(index, bombement) != Acad::eOk)
    return std::nullopt;
  // Deliberate (decalage-arc): whatever side the point lies on, the parallel of an arc goes towards its
  // centre, unless the point is the centre itself.
  const double sens = point == arc.center() ? distance : -distance;
  return bombement < 0 ? -sens : sens;
}

/// The one parallel with as many vertices; null, after a message, when there is none.
std::unique_ptr<AcDbPolyline> parallele(const AcDbPolyline& polyligne, double distance) {
  std::vector<AcDbCurve*> courbes;
  polyligne.getOffsetCurves(distance, courbes);
  std::unique_ptr<AcDbPolyline> seule;
  for (AcDbCurve* courbe : courbes) {
    std::unique_ptr<AcDbCurve> possede(courbe);
    AcDbPolyline* candidate = AcDbPolyline::cast(courbe);
    if (courbes.size() != 1 || !candidate || candidate->numVerts() != polyligne.numVerts()) continue;
    static_cast<void>(possede.release());
    seule.reset(candidate);
  }
  if (!seule) acutPrintf(L"\nEchec, cette polyline dégénère ");
  return seule;
}

/// The points of a table by place, the ones that are added meanwhile included. It answers as `getAt` does,
/// without a walk over the table for each vertex.
class pointsParPlace {
public:
  explicit pointsParPlace(const listePointsDuDessin& table) : m_table(table), m_index(placesDe(table)) {}
  /// The point that the table got last.
  void entrerDernier() {
    const int dernier = m_table.nbPoint() - 1;
    m_index.add(static_cast<std::size_t>(dernier), placeDe(*m_table.getData(dernier)));
  }
  bool chercher(double x, double y, pointDuDessin& trouve) {
    for (const std::size_t i : m_index.touching({x, y, x, y})) {
      const pointDuDessin& point = *m_table.getData(static_cast<int>(i));
      if (!listePointsDuDessin::estEn(point, x, y)) continue;
      trouve = point;
      return true;
    }
    return false;
  }

private:
  static base::PlaneBox placeDe(const pointDuDessin& point) {
    // Twice as large as what counts, so that rounding leaves none out.
    constexpr double kMarge = 2.0 * listePointsDuDessin::kMemePlace;
    return {point.x - kMarge, point.y - kMarge, point.x + kMarge, point.y + kMarge};
  }
  static std::vector<base::PlaneBox> placesDe(const listePointsDuDessin& table) {
    std::vector<base::PlaneBox> places;
    for (const pointDuDessin& point : *table.getData()) places.push_back(placeDe(point));
    return places;
  }
  const listePointsDuDessin& m_table;
  base::BoxIndex m_index;
};

/// A new point at each vertex of the parallel whose model is a point of the table.
void creerPoints(listePointsDuDessin& table, const AcDbPolyline& source, const AcDbPolyline& copie,
                 double decalageZ) {
  pointsParPlace places(table);
  AcGePoint3d dernier;
  bool premier = true;
  for (unsigned int i = 0; i < source.numVerts(); ++i) {
    AcGePoint3d modele;
    AcGePoint3d place;
    pointDuDessin point;
    source.getPointAt(i, modele);
    if (!premier && !(modele.distanceTo(dernier) > kSommetNouveau)) continue;
    premier = false;
    dernier = modele;
    if (!places.chercher(modele.x, modele.y, point) || copie.getPointAt(i, place) != Acad::eOk) continue;
    point.setNomPoint(base::formater(L"%d", table.getMaxNum() + 1).c_str());
    point.setXY(place.x, place.y, point.z + decalageZ);
    point.setId({});
    table.Ajouter(point);
    places.entrerDernier();
    table.getData(table.nbPoint() - 1)->updateDrawing();
  }
}

}  // namespace

int lispPointsParDecalage() {
  listePointsDuDessin* table = tableDeTravail();
  AcDbObjectId id;
  AcGePoint3d designe;
  if (!table || !choisirPolyligne(id, designe)) return RTNORM;
  AcDbObjectPointer<AcDbPolyline> source(id);
  const ads_point base = {designe.x, designe.y, designe.z};
  ads_point passage = {0, 0, 0};
  std::optional<double> signee;
  while (!signee) {
    if (acedGetPoint(base, L"\nPoint de passage:", passage) != RTNORM) return RTNORM;
    signee = distanceSignee(*source, {passage[0], passage[1], passage[2]});
  }
  double distance = std::abs(*signee);
  if (!askDistance(veltora::base::formater(L"\nDistance :[%.4f]", distance), distance)) return RTNORM;
  distance = std::max(distance, kPlusPetiteDistance);
  auto copie = parallele(*source, *signee < 0 ? -distance : distance);
  double decalageZ = 0.0;
  if (!copie || !askDistance(L"\nDecalage :", decalageZ)) return RTNORM;
  acutPrintf(L"\nRaffaichir la table des points");  // sic
  creerPoints(*table, *source, *copie, decalageZ);
  copie->setPropertiesFrom(source);
  source.close();
  addToModelSpace(std::move(copie));
  return RTNORM;
}

}  // namespace veltora
