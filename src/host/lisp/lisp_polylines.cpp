#include "host/lisp/lisp_polylines.h"

#include "arx/db/dblines.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbpl.h"
#include "arx/ed/acedads.h"
#include "base/uncopyable.h"
#include "codes/selectionner_code.h"
#include "core/drawing_space.h"
#include "core/picking.h"
#include "drafting/dialogs/polylines_2d_dlg.h"
#include "drafting/polylines/projeter_polyligne.h"
#include "points/point_du_dessin.h"

#include <cmath>
#include <memory>
#include <vector>

namespace veltora {
namespace {

constexpr double kMarge = 5.0;  // of what is shown around the guides, drawing units
constexpr double kDistance = 2.0;

/// The parallels of a polyline at both sides and the view on them, for as long as the user chooses.
class guidesProjection : private Uncopyable {
public:
  guidesProjection(const AcDbPolyline& polyligne, double distance) : m_vue(acedView()) {
    polyligne.getGeomExtents(m_boite);
    for (const double cote : {distance, -distance}) {
      std::vector<AcDbCurve*> courbes;
      if (distance != 0.0) polyligne.getOffsetCurves(cote, courbes);
      for (AcDbCurve* courbe : courbes) ajouter(std::unique_ptr<AcDbCurve>(courbe));
    }
    acedZoomWindow(coin(-kMarge), coin(kMarge));
  }
  ~guidesProjection() {
    for (const AcDbObjectId& id : m_guides) {
      const AcDbObjectPointer<AcDbEntity> guide(id, AcDb::kForWrite);
      if (guide.openStatus() == Acad::eOk) guide->erase();
    }
    acedSetView(m_vue.center, m_vue.height);
  }
  /// A corner of what the guides take up: the lower left for a negative margin, the upper right otherwise.
  [[nodiscard]] AcGePoint2d coin(double marge) const {
    const AcGePoint3d& p = marge < 0.0 ? m_boite.minPoint() : m_boite.maxPoint();
    return {p.x + marge, p.y + marge};
  }

private:
  void ajouter(std::unique_ptr<AcDbCurve> courbe) {
    AcDbExtents boite;
    if (courbe->getGeomExtents(boite) == Acad::eOk) m_boite.addExt(boite);
    courbe->setDatabaseDefaults(acdbHostApplicationServices()->workingDatabase());
    m_guides.push_back(addToModelSpace(std::move(courbe)));
  }
  AcEdView m_vue;
  AcDbExtents m_boite;
  std::vector<AcDbObjectId> m_guides;
};

/// Where the point blocks of the code and the points of the drawing lie among the entities.
std::vector<AcGePoint2d> placesDesPoints(const std::vector<AcDbObjectId>& entites, int code) {
  std::vector<AcGePoint2d> places;
  for (const AcDbObjectId& id : entites) {
    pointDuDessin bloc;
    if (bloc.updateFromDrawing(id)) {
      if (code == kTousLesCodes || bloc.getCode() == code) places.emplace_back(bloc.x, bloc.y);
      continue;
    }
    const AcDbObjectPointer<AcDbPoint> point(id);
    if (point.openStatus() == Acad::eOk) places.emplace_back(point->position().x, point->position().y);
  }
  return places;
}

/// What lies around a polyline of at least one vertex, the code chosen meanwhile.
/// @return false when the user cancels
bool choisirVoisins(const AcDbObjectId& id, double distance, std::vector<AcDbObjectId>& entites, int& code) {
  AcGePoint2d bas;
  AcGePoint2d haut;
  {
    const AcDbObjectPointer<AcDbPolyline> polyligne(id);
    const guidesProjection guides(*polyligne, distance);
    const double marge = kMarge + std::abs(distance);
    bas = guides.coin(-marge);
    haut = guides.coin(marge);
    if (!selectionnerCode(code)) return false;
  }
  selectCrossing(bas, haut, entites);
  return true;
}

}  // namespace

int lispProjPoly() {
  AcDbObjectId id;
  if (pickEntity(L"\nSelectionnez la polyline à projeter ", id) != RTNORM) return RTNORM;
  if (AcDbObjectPointer<AcDbPolyline>(id).openStatus() != Acad::eOk) {
    acutPrintf(L"\nCe n'est pas une polyline");
    return RTNORM;
  }
  if (AcDbObjectPointer<AcDbPolyline>(id)->layerState().locked) {
    acutPrintf(L"\nLa polyline est sur un layer verrouillé : elle reste telle quelle");
    return RTNORM;
  }
  double distance = kDistance;
  if (!askDistance(L"\nDistance de recherche <2.0>:", distance)) return RTNORM;
  std::vector<AcDbObjectId> entites;
  int code = 0;
  if (!choisirVoisins(id, distance, entites, code)) return RTNORM;
  constexpr std::size_t kTropPeu = 2;
  int sommets = 0;
  if (entites.size() > kTropPeu) {
    const AcDbObjectPointer<AcDbPolyline> polyligne(id, AcDb::kForWrite);
    if (polyligne.openStatus() != Acad::eOk) return RTNORM;
    sommets = projeterPolyligne(*polyligne, placesDesPoints(entites, code), distance);
  }
  if (sommets > 0)
    acutPrintf(L"\n%d sommets", sommets);
  else
    acutPrintf(L"\nMoins de deux points à projeter : la polyline reste telle quelle");
  return RTNORM;
}

int lispPol3dToPol2d() {
  polylines3dEn2d();
  return RTNORM;
}

}  // namespace veltora
