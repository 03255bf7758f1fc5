#include "host/lisp/designation.h"

#include "arx/db/dbmain.h"
#include "arx/ed/acedads.h"

namespace veltora {

Reponse designerEntite(const ACHAR* invite, AcDbObjectId& id, AcGePoint3d& point) {
  // Without a drawing every attempt would fail.
  if (!acdbHostApplicationServices()->workingDatabase()) return Reponse::kFin;
  ads_name nom = {0, 0};
  ads_point place = {0, 0, 0};
  const int resultat = acedEntSel(invite, nom, place);
  if (resultat == RTERROR) return Reponse::kEncore;
  if (resultat != RTNORM || acdbGetObjectId(id, nom) != Acad::eOk) return Reponse::kFin;
  point.set(place[0], place[1], place[2]);
  return Reponse::kDonnee;
}

std::vector<AcDbObjectId> selectionnerBlocsPoints(const ACHAR* mode) {
  resbuf* filtre = acutBuildList(1001, kDonneesVeltora, RTNONE);
  ads_name jeu = {0, 0};
  const int trouve = acedSSGet(mode, nullptr, nullptr, filtre, jeu);
  acutRelRb(filtre);
  if (trouve != RTNORM) return {};
  std::vector<AcDbObjectId> entites = acedSSEntities(jeu);
  acedSSFree(jeu);
  return entites;
}

bool demanderDistance(const std::wstring& invite, double& valeur) {
  double lue = valeur;
  const int resultat = acedGetDist(nullptr, invite.c_str(), &lue);
  if (resultat == RTNORM) valeur = lue;
  return resultat == RTNORM || resultat == RTNONE;
}

bool ajouterAuDessin(std::unique_ptr<AcDbEntity> entite) {
  AcDbDatabase* dessin = acdbHostApplicationServices()->workingDatabase();
  if (!dessin) return false;
  const AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin->modelSpaceId(), AcDb::kForWrite);
  if (espace.openStatus() != Acad::eOk || espace->appendAcDbEntity(entite.get()) != Acad::eOk) return false;
  entite.release()->close();
  return true;
}

}  // namespace veltora
