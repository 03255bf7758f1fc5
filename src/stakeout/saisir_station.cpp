#include "stakeout/saisir_station.h"

#include "arx/db/dbblockref.h"
#include "arx/ed/acedads.h"
#include "base/text.h"
#include "core/block_attributes.h"
#include "core/picking.h"
#include "core/valider_nombre.h"
#include "core/xdata_names.h"
#include "points/attribs_points.h"
#include "points/projets_topo.h"
#include "stakeout/crayon_implantation.h"
#include "stakeout/dessin_implantation.h"
#include "stakeout/marques_implantation.h"
#include "stakeout/verifier_vue.h"

#include <memory>
#include <unordered_set>
#include <utility>

namespace veltora {
namespace {

/// Name and place of a point block; says so when it is none.
bool lireBlocPoint(const AcDbObjectId& id, AcString& nom, AcGePoint3d& position) {
  const AcDbObjectPointer<AcDbBlockReference> bloc(id);
  if (bloc.openStatus() != Acad::eOk || !bloc->hasXData(kXDataVeltora)) {
    acutPrintf(L"\nCe n'est pas un block Veltora");
    return false;
  }
  AcString numero;
  AcString cote;
  lireAttribut(*bloc, etiquettesPoints.numero, numero);
  const bool lue = lireAttribut(*bloc, etiquettesPoints.altitude, cote) && validerNombre(cote);
  nom = numero;
  position.set(bloc->position().x, bloc->position().y, lue ? base::lireReel(cote) : Z_ABSENT);
  return true;
}

/// A point of the current table by its block, or without one by the table.
bool lirePointTable(pointDuDessin& point, AcString& nom, AcGePoint3d& position) {
  if (point.getId().isLive()) return lireBlocPoint(point.getId(), nom, position);
  nom = base::widen(point.getNomPoint());
  position = point.getAs3dPnt();
  return true;
}

bool chercherNom(const std::wstring& texte, AcString& nom, AcGePoint3d& position) {
  if (!tablesPoints) return false;
  listePointsDuDessin& table = *tablesPoints->currTable();
  int rang = -1;
  return table.existPoint(texte.c_str(), rang) && lirePointTable(*table.getData(rang), nom, position);
}

bool chercherProche(AcString& nom, AcGePoint3d& position) {
  ads_point clic = {0.0, 0.0, 0.0};
  if (acedGetPoint(nullptr, L"\nCliquer à proximité de la station à utiliser", clic) != RTNORM) return false;
  pointDuDessin proche;
  return tablesPoints && tablesPoints->currTable()->findNearestTo(clic[0], clic[1], proche) &&
         lirePointTable(proche, nom, position);
}

/// @param bits  `RSG_OTHER` takes the name of a point too
bool designer(const ACHAR* invite, int bits, AcString& nom, AcGePoint3d& position) {
  AcDbObjectId id;
  acedInitGet(bits, nullptr);
  const int resultat = pickEntity(invite, id);
  if (resultat == RTKWORD) return chercherNom(typedText(), nom, position);
  return resultat == RTNORM && lireBlocPoint(id, nom, position);
}

void restreindre(projetImplantation& projet, selectionPoints& selection) {
  effacerResultats(projet);
  dessinerResultats(projet, paramsDessinImplantation::kNumero);
  acutPrintf(L"\nSelectionnez les points a implanter");
  std::vector<AcDbObjectId> entites;
  selectEntities(nullptr, nullptr, entites);
  std::unordered_set<std::uint32_t> vus;
  selectionPoints choisis;
  for (const AcDbObjectId& id : entites) {
    const AcDbObjectPointer<AcDbEntity> entite(id);
    const auto point = entite.openStatus() == Acad::eOk ? pointMarque(*entite) : std::nullopt;
    if (point && vus.insert(*point).second) choisis.push_back(*point);
  }
  effacerResultats(projet);
  if (!choisis.empty()) selection = std::move(choisis);
  dessinerResultats(projet, projet.dessin.options(), &selection);
}

template <class Travail>
void pourChaque(projetImplantation& projet, const selectionPoints& selection, Travail travail) {
  const std::unordered_set<std::uint32_t> ids(selection.begin(), selection.end());
  for (observationImplantation& point : projet.points)
    if (ids.contains(point.id)) travail(point);
}

void annuler(projetImplantation& projet, const selectionPoints& selection) {
  pourChaque(projet, selection, [](observationImplantation& point) {
    effacerDessinees(point.entitesLiens);
    point.idStation = kSansIdentifiant;
    point.visibiliteCalculee = 0;
    point.hauteurRequise = Z_ABSENT;
  });
  projet.retirerStationsInutiles();
}

/// Whether a reference can orient the station; says so when it stands at it.
bool oriente(const unPoint& station, const AcGePoint3d& reference) {
  if (station.x != reference.x || station.y != reference.y) return true;
  acutPrintf(L"\nLa référence est à la station : elle n'oriente rien.");
  return false;
}

}  // namespace

void mettreEnStation(projetImplantation& projet, selectionPoints selection) {
  dessinerResultats(projet, projet.dessin.options(), &selection);
  AcString nom;
  AcGePoint3d position(Z_ABSENT, Z_ABSENT, Z_ABSENT);
  suiteStation suite = suiteStation::kStation;
  while (suite != suiteStation::kQuitter) {
    if (suite == suiteStation::kStation) {
      suite = choisirStation(projet, selection, nom, position);
      continue;
    }
    uneStationReference station;
    station.nom = nom;
    station.x = position.x;
    station.y = position.y;
    station.z = position.z;
    suite = choisirReference(projet, selection, station);
  }
  effacerResultats(projet);
}

suiteStation choisirStation(projetImplantation& projet, selectionPoints& selection, AcString& nom,
                            AcGePoint3d& position) {
  acedInitGet(RSG_OTHER, L"Designer Proche  Restreindre Annuler");
  ads_point point = {0.0, 0.0, 0.0};
  const int resultat =
      acedGetPoint(nullptr, L"\nIndiquer la station ou [Restreindre/Designer/Proche/Annuler]", point);
  if (resultat == RTNORM) {
    nom.clear();
    position.set(point[0], point[1], 0.0);
    if (!ServicesTerrain().calcZPoint(position)) position.z = Z_ABSENT;
    return suiteStation::kReference;
  }
  const std::wstring texte = resultat == RTKWORD ? typedText() : std::wstring();
  if (texte.empty()) return suiteStation::kQuitter;
  if (base::equalNoCase(texte, L"Restreindre")) {
    restreindre(projet, selection);
    return suiteStation::kStation;
  }
  if (base::equalNoCase(texte, L"Annuler")) {
    annuler(projet, selection);
    return suiteStation::kStation;
  }
  const bool trouve = base::equalNoCase(texte, L"Proche")     ? chercherProche(nom, position)
                      : base::equalNoCase(texte, L"Designer") ? designer(L"\nBlock Point:", 0, nom, position)
                                                              : chercherNom(texte, nom, position);
  return trouve ? suiteStation::kReference : suiteStation::kStation;
}

suiteStation choisirReference(projetImplantation& projet, const selectionPoints& selection,
                              const unPoint& station) {
  if (selection.empty()) return suiteStation::kStation;
  constexpr double kVersNord = 10000.0;
  acedInitGet(RSG_OTHER, L"Nord Designer ");
  const ads_point depuis = {station.x, station.y, 0.0};
  ads_point point = {0.0, 0.0, 0.0};
  const int resultat = acedGetPoint(depuis, L"\nReference [Nord / Designer] <Nord>:", point);
  const std::wstring texte = resultat == RTKWORD ? typedText() : std::wstring();
  if (resultat != RTNORM && resultat != RTNONE && resultat != RTKWORD) return suiteStation::kQuitter;
  AcString nom;
  AcGePoint3d position(station.x, station.y + kVersNord, Z_ABSENT);
  modeOrientation mode = modeOrientation::kNord;
  if (resultat == RTNORM) {
    mode = modeOrientation::kPosition;
    position.set(point[0], point[1], Z_ABSENT);
  } else if (!texte.empty() && !base::equalNoCase(texte, L"Nord")) {
    mode = modeOrientation::kReference;
    const bool trouve = base::equalNoCase(texte, L"Designer")
                            ? designer(L"Selectionnez la station de référence ou alors saisir son Nom ",
                                       RSG_OTHER, nom, position)
                            : chercherNom(texte, nom, position);
    if (!trouve) return suiteStation::kReference;
  }
  if (!oriente(station, position)) return suiteStation::kReference;
  const std::uint32_t idMise = creerMiseEnStation(projet, station, nom, position, mode);
  pourChaque(projet, selection, [idMise](observationImplantation& visee) {
    effacerPoint(visee);
    visee.idStation = idMise;
  });
  verifierVisibilites(projet, &selection);
  dessinerResultats(projet, projet.dessin.options(), &selection);
  return suiteStation::kStation;
}

std::uint32_t creerMiseEnStation(projetImplantation& projet, const unPoint& station, const AcString& nomRef,
                                 const AcGePoint3d& position, modeOrientation mode) {
  std::unique_ptr<observationMiseEnStation> mise;
  if (mode == modeOrientation::kNord || mode == modeOrientation::kVersPosition) {
    auto orientee = std::make_unique<observationMiseEnStationOrientee>(station);
    if (mode == modeOrientation::kVersPosition)
      orientee->angleV0 = gisementImplantation(station.x, station.y, position.x, position.y);
    mise = std::move(orientee);
  } else if (mode == modeOrientation::kReference || mode == modeOrientation::kPosition) {
    uneStationReference reference;
    if (mode == modeOrientation::kReference) reference.nom = nomRef;
    reference.x = position.x;
    reference.y = position.y;
    reference.z = position.z;
    mise = std::make_unique<observationMiseEnStationVisee>(station, reference);
  } else {
    return kSansIdentifiant;
  }
  const std::uint32_t idMise = mise->idMise;
  if (projet.dessin.miseEnStation) mise->dessiner(projet.dessin.options());
  projet.ajouterStation(std::move(mise));
  return idMise;
}

}  // namespace veltora
