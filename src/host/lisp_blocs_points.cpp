// LISP functions that move point blocks and their altitudes: c:VNDEPORTPNTS, c:VNAJUSTERZ.

#include "arx/db/dbblockref.h"
#include "arx/db/dbcurve.h"
#include "arx/db/dbmain.h"
#include "arx/ed/acedads.h"
#include "base/format.h"
#include "drafting/rattach_z_dlg.h"
#include "host/designation.h"
#include "host/fonctions_lisp.h"
#include "points/attribs_points.h"
#include "points/attributs_bloc.h"
#include "points/projets_topo.h"

#include <algorithm>
#include <cmath>

namespace veltora {
namespace {

constexpr double kPlusPetiteDistance = 0.0001;
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
    const Reponse reponse = designerEntite(L"\nSelectionnez le Chemin où projeter les points", id, designe);
    if (reponse == Reponse::kFin) return false;
    if (reponse == Reponse::kDonnee && AcDbObjectPointer<AcDbCurve>(id).openStatus() == Acad::eOk)
      return true;
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

/// Moves a block onto the path in the plane when it is near enough.
void porterSurChemin(const AcDbObjectId& id, const AcDbCurve& chemin, double distance) {
  const AcDbObjectPointer<AcDbBlockReference> bloc(id, AcDb::kForWrite);
  if (bloc.openStatus() != Acad::eOk) return;
  const AcGePoint3d place = bloc->position();
  AcGePoint3d proche;
  if (chemin.getClosestPointTo({place.x, place.y, 0.0}, proche) != Acad::eOk) return;
  const AcGeVector3d ecart(proche.x - place.x, proche.y - place.y, 0.0);
  if (!(ecart.length() <= distance)) return;
  bloc->transformBy(AcGeMatrix3d::translation(ecart));
  if (tablesPoints) tablesPoints->notifyPositionPoint(id, {proche.x, proche.y, 0.0}, kMasqueXY);
}

void decalerBloc(const AcDbObjectId& id, double decalage, bool prevenir) {
  pointDuDessin point;
  if (!point.updateFromDrawing(id) || point.z == Z_ABSENT) return;
  point.z += decalage;
  CString altitude;
  point.getZAsString(altitude);
  ecrireAttribut(id, etiquettesPoints.altitude, altitude);
  if (prevenir && tablesPoints) tablesPoints->notifyPositionPoint(id, point.getAs3dPnt(), kMasqueZ);
}

}  // namespace

int lispVnDeportPnts() {
  AcDbObjectId id;
  if (!choisirChemin(id)) return RTNORM;
  double distance = distanceAuChemin();
  if (!demanderDistance(base::formater(L"\nDistance :[%.4f]", distance), distance)) return RTNORM;
  distance = distanceAuChemin() = std::max(std::abs(distance), kPlusPetiteDistance);
  const AcDbObjectPointer<AcDbCurve> chemin(id);
  if (chemin.openStatus() != Acad::eOk) return RTNORM;
  montrerChemin(*chemin, distance);
  for (const AcDbObjectId& bloc : selectionnerBlocsPoints(nullptr)) porterSurChemin(bloc, *chemin, distance);
  return RTNORM;
}

int lispVnAjusterZ() {
  CDlgRattachZ dialogue;
  if (dialogue.doModal() != ui::kOk) return RTNORM;
  const bool tous = dialogue.tousLesPoints();
  const double decalage = dialogue.decalage();
  for (const AcDbObjectId& bloc : selectionnerBlocsPoints(tous ? L"X" : nullptr))
    decalerBloc(bloc, decalage, !tous);
  if (tous && tablesPoints) tablesPoints->decalZ(decalage);
  return RTNORM;
}

}  // namespace veltora
