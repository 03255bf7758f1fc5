#include "stakeout/obstacle_implantation.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dbcircle.h"
#include "arx/db/dblines.h"
#include "arx/ed/edgraphics.h"
#include "calc/angles.h"
#include "core/compteur_identifiants.h"
#include "core/resbuf_serializer.h"
#include "stakeout/marques_implantation.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace veltora {
namespace {

constexpr std::int32_t kMagieLineaire = 71209;
constexpr std::int32_t kMagiePonctuel = 87340;

/// The items of a mark, the application's name included; empty unless it holds exactly these types.
std::vector<const resbuf*> lireMarque(const chaineResbuf& chaine, std::initializer_list<short> types,
                                      std::int32_t magie) {
  std::vector<const resbuf*> elements;
  for (const resbuf* e = chaine.tete; e; e = e->rbnext) elements.push_back(e);
  const bool bonne = std::ranges::equal(elements, types, {}, [](const resbuf* e) { return e->restype; });
  if (!bonne || elements[1]->resval.rlong != magie) elements.clear();
  return elements;
}

bool poserMarque(const AcDbObjectId& objet, resbuf* marque) {
  const chaineResbuf chaine(marque);
  const AcDbObjectPointer<AcDbEntity> entite(objet, AcDb::kForWrite);
  return entite.openStatus() == Acad::eOk && !entite->layerState().locked &&
         entite->setXData(chaine.tete) == Acad::eOk;
}

void trait(double x1, double y1, double x2, double y2, int couleur) {
  const ads_point de = {x1, y1, 0.0};
  const ads_point vers = {x2, y2, 0.0};
  acedGrDraw(de, vers, couleur, 0);
}

/// As the plan view shows them: level curves are cut at their altitude, of others each piece is laid down.
void couperEnPlan(const AcDbCurve& courbe, const AcDbLine& ligne, AcGePoint3dArray& points) {
  AcDbExtents boite;
  if (courbe.getGeomExtents(boite) != Acad::eOk) boite = {};
  const std::vector<AcGeCurvePiece> pieces = courbe.pieces();
  if (pieces.empty()) return;
  const double z = pieces.front().start.z;
  const auto a = ligne.startPoint();
  const auto b = ligne.endPoint();
  if (boite.isEmpty() || boite.minPoint().z == boite.maxPoint().z) {
    courbe.intersectWith(std::make_unique<AcDbLine>(AcGePoint3d(a.x, a.y, z), AcGePoint3d(b.x, b.y, z)).get(),
                         AcDb::kOnBothOperands, points);
    return;
  }
  const auto couper = [&](const AcGePoint3d& de, const AcGePoint3d& vers) {
    AcDbLine(AcGePoint3d(de.x, de.y, 0.0), AcGePoint3d(vers.x, vers.y, 0.0))
        .intersectWith(&ligne, AcDb::kOnBothOperands, points);
  };
  for (const AcGeCurvePiece& piece : pieces) {
    AcGePoint3d depuis = piece.start;
    for (const double part : piece.isArc || piece.bezier ? piece.chords() : std::vector<double>{1.0}) {
      const AcGePoint3d jusque = piece.pointAt(part);
      couper(depuis, jusque);
      depuis = jusque;
    }
  }
}

}  // namespace

obstacleImplantation::obstacleImplantation() : idObstacle(compteurIdentifiants::commun().suivant()) {}

bool obstacleImplantation::retirerMarque() {
  return !objet.isLive() || poserMarque(objet, acutBuildList(1001, kXDataObstacles, RTNONE));
}

bool obstacleLineaireImplantation::ecrireMarque() {
  return poserMarque(objet, acutBuildList(1001, kXDataObstacles, 1071, kMagieLineaire, 1040, hauteur, 1071,
                                          static_cast<std::int32_t>(idObstacle), RTNONE));
}

int obstacleLineaireImplantation::lireDepuis(const AcDbObjectId& objectId) {
  const AcDbObjectPointer<AcDbEntity> entite(objectId);
  if (entite.openStatus() != Acad::eOk) return 0;
  const chaineResbuf chaine(entite->xData(kXDataObstacles));
  const auto marque = lireMarque(chaine, {1001, 1071, 1040, 1071}, kMagieLineaire);
  if (marque.empty()) return 0;
  objet = objectId;
  hauteur = marque[2]->resval.rreal;
  idObstacle = static_cast<std::uint32_t>(marque[3]->resval.rlong);
  return 1;
}

void obstacleLineaireImplantation::surligner(int couleur) const {
  constexpr double kPlusPetite = 0.00000001;  // drawing units; a smaller extent draws nothing
  constexpr double kMarge = 0.01;             // of the larger side
  const AcDbObjectPointer<AcDbEntity> entite(objet);
  AcDbExtents boite;
  if (entite.openStatus() != Acad::eOk || entite->getGeomExtents(boite) != Acad::eOk) return;
  const AcGePoint3d bas = boite.minPoint();
  const AcGePoint3d haut = boite.maxPoint();
  const double cote = std::max(haut.x - bas.x, haut.y - bas.y);
  if (cote < kPlusPetite) return;
  const double m = kMarge * cote;
  trait(bas.x - m, bas.y - m, haut.x + m, bas.y - m, couleur);
  trait(haut.x + m, bas.y - m, haut.x + m, haut.y + m, couleur);
  trait(haut.x + m, haut.y + m, bas.x - m, haut.y + m, couleur);
  trait(bas.x - m, haut.y + m, bas.x - m, bas.y - m, couleur);
}

bool obstacleLineaireImplantation::intersections(const AcDbLine& ligne, AcGePoint3dArray& sortie) const {
  const AcDbObjectPointer<AcDbCurve> courbe(objet);
  if (courbe.openStatus() != Acad::eOk) return false;
  AcGePoint3dArray points;
  couperEnPlan(*courbe, ligne, points);
  for (const AcGePoint3d& point : points) sortie.emplace_back(point.x, point.y, 0.0);
  return !points.empty();
}

bool obstaclePonctuelImplantation::ecrireMarque() {
  return poserMarque(objet, acutBuildList(1001, kXDataObstacles, 1071, kMagiePonctuel, 1040, hauteur, 1041,
                                          rayon, 1071, static_cast<std::int32_t>(idObstacle), RTNONE));
}

int obstaclePonctuelImplantation::lireDepuis(const AcDbObjectId& objectId) {
  const AcDbObjectPointer<AcDbEntity> entite(objectId);
  if (entite.openStatus() != Acad::eOk) return 0;
  const chaineResbuf chaine(entite->xData(kXDataObstacles));
  const auto marque = lireMarque(chaine, {1001, 1071, 1040, 1041, 1071}, kMagiePonctuel);
  if (marque.empty()) return 0;
  objet = objectId;
  hauteur = marque[2]->resval.rreal;
  rayon = marque[3]->resval.rreal;
  idObstacle = static_cast<std::uint32_t>(marque[4]->resval.rlong);
  if (const auto* const bloc = AcDbBlockReference::cast(entite.object())) {
    x = bloc->position().x;
    y = bloc->position().y;
  }
  return 1;
}

void obstaclePonctuelImplantation::surligner(int couleur) const {
  constexpr int kCotes = 32;
  if (x == Z_ABSENT || y == Z_ABSENT || rayon == Z_ABSENT) return;
  const auto sommet = [this](int i) {
    const double angle = 2.0 * kPi * i / kCotes;
    return AcGePoint2d(x + rayon * std::cos(angle), y + rayon * std::sin(angle));
  };
  for (int i = 0; i < kCotes; ++i) trait(sommet(i).x, sommet(i).y, sommet(i + 1).x, sommet(i + 1).y, couleur);
}

bool obstaclePonctuelImplantation::intersections(const AcDbLine& ligne, AcGePoint3dArray& sortie) const {
  if (x == Z_ABSENT || y == Z_ABSENT || !(std::abs(rayon) < Z_ABSENT) || !objet.isLive()) return false;
  const std::size_t avant = sortie.size();
  AcDbCircle({x, y, 0.0}, AcGeVector3d::kZAxis, std::abs(rayon))
      .intersectWith(&ligne, AcDb::kOnBothOperands, sortie);
  return sortie.size() > avant;
}

}  // namespace veltora
