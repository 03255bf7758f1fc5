#include "stakeout/ajouter_points.h"

#include "arx/db/dbmain.h"
#include "arx/ed/acedads.h"
#include "core/picking.h"
#include "stakeout/points_element.h"

namespace veltora {
namespace {

enum class modeSaisie { kElement, kPoint, kFin };

modeSaisie saisirElement(projetImplantation& projet, const ServicesTerrain& terrain) {
  AcDbObjectId element;
  acedInitGet(0, L"Point");
  const int resultat = pickEntity(L"\nSelectionnez l'element [Point]", element);
  if (resultat == RTKWORD) return modeSaisie::kPoint;
  if (resultat == RTERROR && acdbHostApplicationServices()->workingDatabase()) return modeSaisie::kElement;
  if (resultat != RTNORM) return modeSaisie::kFin;
  const std::optional<int> points = ajouterElement(projet, terrain, element);
  if (!points)
    acutPrintf(L"\nCet élément donnerait plus d'un million de points : rien n'est ajouté.");
  else
    acutPrintf(L"\nPoints ajoutés : %d", *points);
  return modeSaisie::kElement;
}

modeSaisie saisirPoint(projetImplantation& projet, const ServicesTerrain& terrain) {
  ads_point place = {0.0, 0.0, 0.0};
  acedInitGet(0, L"Select");
  if (acedGetPoint(nullptr, L"\nPoint a implanter [Select]", place) == RTNORM) {
    ajouterPointImplantation(projet, terrain, place[0], place[1]);
    return modeSaisie::kPoint;
  }
  finirGroupe(projet);
  return modeSaisie::kElement;
}

}  // namespace

void ajouterPointImplantation(projetImplantation& projet, const ServicesTerrain& terrain, double x,
                              double y) {
  observationImplantation point;
  point.nom = projet.params.suivant();
  point.x = x;
  point.y = y;
  if (AcGePoint3d place(x, y, 0.0); terrain.calcZPoint(place)) point.z = place.z;
  projet.ajouterPoint(point);
}

void finirGroupe(projetImplantation& projet) {
  ++compteurGroupes;
  if (projet.params.incrementerPrefixe) projet.params.numeroteurEntier::incrementerPrefixe();
}

std::optional<int> ajouterElement(projetImplantation& projet, const ServicesTerrain& terrain,
                                  const AcDbObjectId& element) {
  AcGePoint3dArray places;
  {
    const AcDbObjectPointer<AcDbEntity> entite(element);
    if (entite.openStatus() != Acad::eOk || !pointsElement(*entite, projet.params, places))
      return std::nullopt;
  }
  int nombre = 0;
  for (const AcGePoint3d& place : places) {
    if (projet.pointExiste(place.x, place.y)) continue;
    ajouterPointImplantation(projet, terrain, place.x, place.y);
    ++nombre;
  }
  finirGroupe(projet);
  return nombre;
}

void saisirPoints(projetImplantation& projet) {
  const ServicesTerrain terrain;
  modeSaisie mode = modeSaisie::kElement;
  while (mode != modeSaisie::kFin)
    mode = mode == modeSaisie::kElement ? saisirElement(projet, terrain) : saisirPoint(projet, terrain);
}

}  // namespace veltora
