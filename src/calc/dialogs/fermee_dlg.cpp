#include "calc/dialogs/fermee_dlg.h"

#include "calc/dialogs/mise_en_place_dlg.h"
#include "calc/dialogs/resultats_dlg.h"
#include "calc/dialogs/saisie_polygonale_dlg.h"
#include "calc/traverse/doutes_polygonale.h"
#include "calc/traverse/polygonale_fermee.h"
#include "core/imprimer_doutes.h"
#include "jobs/placer_stations.h"

namespace veltora {

corrPolygoDLG::corrPolygoDLG() : Dialog(L"Correction de polygonale fermée") {
  preparerModes(angles, nivellement);
  preparerListe(liste);
}

polygonaleFermeeObs corrPolygoDLG::donnees() const {
  polygonaleFermeeObs obs;
  obs.nom = departNumero.text();
  obs.x = departX.value();
  obs.y = departY.value();
  obs.z = departZ.value();
  obs.vo = nord.value();
  obs.modeAngle = angles.index();
  obs.modeNivellement = nivellement.index();
  obs.lignes = lignesDe(liste);
  return obs;
}

void corrPolygoDLG::montrer(const polygonaleFermeeObs& obs) {
  departNumero.setText(obs.nom);
  departX.setValue(obs.x);
  departY.setValue(obs.y);
  departZ.setValue(obs.z);
  nord.setValue(obs.vo);
  angles.setIndex(obs.modeAngle);
  nivellement.setIndex(obs.modeNivellement);
  montrerLignes(liste, obs.lignes);
}

void corrPolygoDLG::ajouterSaisie() {
  if (!saisie.validateFields()) return;
  ajouterLigne(liste, formaterLigne(station.text(), angle.value(), distance.value(), altitude.value()));
}

void corrPolygoDLG::enleverChoisie() { enleverLigne(liste); }

void corrPolygoDLG::calculerRapport() {
  if (!donneesSuffisantes(liste) || !depart.validateFields()) return;
  const polygonaleFermeeObs obs = donnees();
  lignesPolygonale lignes = lireLignes(obs.lignes);
  base::CArray<double> X, Y, Z;
  htmlDocument rapport;
  fermeturesPolygonale fermetures;
  calculerPolygonaleFermee(obs.nom, obs.x, obs.y, obs.z, obs.vo, obs.modeNivellement, obs.modeAngle, lignes,
                           X, Y, Z, &rapport, false, false, &fermetures);
  imprimerDoutes(doutesFermee(obs, fermetures));
  montrerRapport(rapport);
}

void corrPolygoDLG::placerResultats() {
  if (!donneesSuffisantes(liste) || !depart.validateFields()) return;
  CParamMisePlaceResultCalcs params;
  if (params.doModal() != ui::kOk) return;
  const polygonaleFermeeObs obs = donnees();
  const auto calculees = [&obs](bool originelle, bool compensee) {
    lignesPolygonale lignes = lireLignes(obs.lignes);
    base::CArray<double> X, Y, Z;
    calculerPolygonaleFermee(obs.nom, obs.x, obs.y, obs.z, obs.vo, obs.modeNivellement, obs.modeAngle, lignes,
                             X, Y, Z, nullptr, originelle, compensee);
    return stationsFermee(lignes, X, Y, Z);
  };
  if (!placables(calculees(false, false), params.altitudes.checked())) return;
  const auto stations = calculees(params.originelle.checked(), params.compensee.checked());
  preparerCodeStations(params.codeStations(), true);
  placerStations(stations, params.codeStations(), params.altitudes.checked());
}

void corrPolygoDLG::enregistrer() {
  if (const auto chemin = choisirObsAEcrire()) {
    ecrireObs(*chemin, [this] { return ecrireObsFermee(donnees()); });
  }
}

void corrPolygoDLG::ouvrir() {
  const auto chemin = choisirObsALire();
  if (!chemin) return;
  lireObs(*chemin, [this](const std::string& octets) {
    polygonaleFermeeObs obs = donnees();
    imprimerDoutes(lireObsFermee(octets, obs));
    montrer(obs);
  });
}

}  // namespace veltora
