#include "host/lisp/lisp_blocs_points.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dbcurve.h"
#include "arx/db/dbmain.h"
#include "arx/ed/acedads.h"
#include "base/format.h"
#include "base/suivi.h"
#include "core/block_attributes.h"
#include "core/picking.h"
#include "drafting/dialogs/rattach_z_dlg.h"
#include "host/lisp/lisp_decalage.h"
#include "points/attribs_points.h"
#include "points/projets_topo.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace veltora {
namespace {

constexpr int kMasqueXY = 3;
constexpr int kMasqueZ = 4;

/// Blocks farther from the path stay; kept for the run, drawing units.
double& distanceAuChemin() {
  static double distance = 0.5;
  return distance;
}

bool choisirChemin(AcDbObjectId& id) {
  AcGePoint3d designe;
  for (;;) {
    const Answer reponse = pickEntityOrLeave(L"\nSelectionnez le Chemin où projeter les points", id, designe);
    if (reponse == Answer::kEnd) return false;
    if (reponse == Answer::kGiven && AcDbObjectPointer<AcDbCurve>(id).openStatus() == Acad::eOk) return true;
    acutPrintf(L"\nCe n'est pas une courbe, recommencez ");
  }
}

/// Shows the path with what lies within the distance, for the user to select there.
void montrerChemin(const AcDbCurve& chemin, double distance) {
  AcDbExtents boite;
  if (chemin.getGeomExtents(boite) != Acad::eOk) return;
  acedZoomWindow({boite.minPoint().x - distance, boite.minPoint().y - distance},
                 {boite.maxPoint().x + distance, boite.maxPoint().y + distance});
}

/// Moves a block onto the path in the plane when it is near enough. @return false when it stays
bool porterSurChemin(const AcDbObjectId& id, AcDbCurveSearch& chemin, double distance, AcGePoint3d& proche) {
  const AcDbObjectPointer<AcDbBlockReference> bloc(id, AcDb::kForWrite);
  if (bloc.openStatus() != Acad::eOk) return false;
  const AcGePoint3d place = bloc->position();
  if (!chemin.closestWithin(distance, {place.x, place.y, 0.0}, proche)) return false;
  const AcGeVector3d ecart(proche.x - place.x, proche.y - place.y, 0.0);
  return ecart.length() <= distance && bloc->transformBy(AcGeMatrix3d::translation(ecart)) == Acad::eOk;
}

/// Shifts the altitude that a block shows. @return false when it shows none
bool decalerBloc(const AcDbObjectId& id, double decalage, AcGePoint3d& place) {
  pointDuDessin point;
  if (!point.updateFromDrawing(id) || point.z == Z_ABSENT) return false;
  point.z += decalage;
  CString altitude;
  point.getZAsString(altitude);
  ecrireAttribut(id, etiquettesPoints.altitude, altitude);
  place = point.getAs3dPnt();
  return true;
}

/// Works on each block, with progress, until the user stops it.
/// @return the blocks that were moved, with their places
template <class Traitement>
placesBlocs traiterBlocs(const std::vector<AcDbObjectId>& blocs, bool& arrete, Traitement traiter) {
  placesBlocs places;
  base::Suivi suivi(static_cast<long long>(blocs.size()) - 1);
  for (const AcDbObjectId& bloc : blocs) {
    arrete = suivi.arrete();
    if (arrete) break;
    AcGePoint3d place;
    if (traiter(bloc, place)) places.emplace(bloc, place);
    suivi.avancer();
  }
  return places;
}

}  // namespace

int lispVnDeportPnts() {
  AcDbObjectId id;
  if (!choisirChemin(id)) return RTNORM;
  double distance = distanceAuChemin();
  if (!askDistance(base::formater(L"\nDistance :[%.4f]", distance), distance)) return RTNORM;
  distance = distanceAuChemin() = std::max(std::abs(distance), kPlusPetiteDistance);
  const AcDbObjectPointer<AcDbCurve> chemin(id);
  if (chemin.openStatus() != Acad::eOk) return RTNORM;
  montrerChemin(*chemin, distance);
  AcDbCurveSearch recherche(*chemin);
  bool arrete = false;
  const placesBlocs portes =
      traiterBlocs(selectPointBlocks(nullptr), arrete, [&](const AcDbObjectId& bloc, AcGePoint3d& place) {
        return porterSurChemin(bloc, recherche, distance, place);
      });
  if (tablesPoints) tablesPoints->notifyPositionPoints(portes, kMasqueXY);
  return RTNORM;
}

int lispVnAjusterZ() {
  CDlgRattachZ dialogue;
  if (dialogue.doModal() != ui::kOk) return RTNORM;
  const bool tous = dialogue.tousLesPoints();
  const double decalage = dialogue.decalage();
  bool arrete = false;
  const placesBlocs decales = traiterBlocs(
      selectPointBlocks(tous ? L"X" : nullptr), arrete,
      [&](const AcDbObjectId& bloc, AcGePoint3d& place) { return decalerBloc(bloc, decalage, place); });
  if (!tablesPoints) return RTNORM;
  // Stopped halfway, the tables follow the blocks that were done.
  if (tous && !arrete)
    tablesPoints->decalZ(decalage);
  else
    tablesPoints->notifyPositionPoints(decales, kMasqueZ);
  return RTNORM;
}

}  // namespace veltora
