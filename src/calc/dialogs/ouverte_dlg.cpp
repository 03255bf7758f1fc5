#include "calc/dialogs/ouverte_dlg.h"

#include "calc/dialogs/gisement_dlg.h"
#include "calc/dialogs/mise_en_place_dlg.h"
#include "calc/dialogs/resultats_dlg.h"
#include "calc/dialogs/saisie_polygonale_dlg.h"
#include "calc/traverse/doutes_polygonale.h"
#include "core/imprimer_doutes.h"
#include "jobs/placer_stations.h"

namespace veltora {

groupeStationConnue::groupeStationConnue(ui::Container* parent, const std::wstring& legende)
    : Group(parent, legende) {
  cal.beside(gisement);
}

stationConnue groupeStationConnue::valeur() const {
  return {numero.text(), x.value(), y.value(), z.value(), gisement.value()};
}

void groupeStationConnue::montrer(const stationConnue& station) {
  numero.setText(station.nom);
  x.setValue(station.x);
  y.setValue(station.y);
  z.setValue(station.z);
  gisement.setValue(station.gisement);
}

void groupeStationConnue::calculerGisement(int modeAngle) {
  CCalcGisementDlg dialogue;
  dialogue.modeAngle = modeAngle;
  dialogue.stationNom.setText(numero.text());
  dialogue.stationX.setValue(x.value());
  dialogue.stationY.setValue(y.value());
  dialogue.stationZ = z.value();
  if (dialogue.doModal() == ui::kOk) gisement.setValue(dialogue.gisementCalcule());
}

corrPolygoOuverteDLG::corrPolygoOuverteDLG() : Dialog(L"Correction Polygonale ouverte") {
  preparerModes(angles, nivellement);
  preparerListe(liste);
  for (groupeStationConnue* groupe : {&depart, &arrivee}) {
    groupe->cal.onClick = [this, groupe] { groupe->calculerGisement(angles.index()); };
  }
}

polygonaleOuverteObs corrPolygoOuverteDLG::donnees() const {
  polygonaleOuverteObs obs;
  obs.depart = depart.valeur();
  obs.arrivee = arrivee.valeur();
  obs.fermeture = dernierAngle.value();
  obs.modeAngle = angles.index();
  obs.modeNivellement = nivellement.index();
  obs.lignes = lignesDe(liste);
  return obs;
}

void corrPolygoOuverteDLG::montrer(const polygonaleOuverteObs& obs) {
  depart.montrer(obs.depart);
  arrivee.montrer(obs.arrivee);
  dernierAngle.setValue(obs.fermeture);
  angles.setIndex(obs.modeAngle);
  nivellement.setIndex(obs.modeNivellement);
  montrerLignes(liste, obs.lignes);
}

bool corrPolygoOuverteDLG::pret() {
  return donneesSuffisantes(liste) && depart.validateFields() && arrivee.validateFields() &&
         dernierAngle.validate();
}

void corrPolygoOuverteDLG::ajouterSaisie() {
  if (!saisie.validateFields()) return;
  ajouterLigne(liste, formaterLigne(station.text(), angle.value(), distance.value(), altitude.value()));
}

void corrPolygoOuverteDLG::enleverLigne() { veltora::enleverLigne(liste); }

void corrPolygoOuverteDLG::calculerRapport() {
  if (!pret()) return;
  const polygonaleOuverteObs obs = donnees();
  lignesPolygonale lignes = lireLignes(obs.lignes);
  base::CArray<double> X, Y, Z;
  htmlDocument rapport;
  fermeturesPolygonale fermetures;
  calculerPolygonaleOuverte(obs, lignes, X, Y, Z, &rapport, false, false, &fermetures);
  imprimerDoutes(doutesOuverte(obs, fermetures));
  montrerRapport(rapport);
}

void corrPolygoOuverteDLG::placerResultats() {
  if (!pret()) return;
  CParamMisePlaceResultCalcs params;
  if (params.doModal() != ui::kOk) return;
  const polygonaleOuverteObs obs = donnees();
  const auto calculees = [&obs](bool originelle, bool compensee) {
    lignesPolygonale lignes = lireLignes(obs.lignes);
    base::CArray<double> X, Y, Z;
    calculerPolygonaleOuverte(obs, lignes, X, Y, Z, nullptr, originelle, compensee);
    return stationsOuverte(obs.depart, obs.arrivee.z, lignes, X, Y, Z);
  };
  if (!placables(calculees(false, false), params.altitudes.checked())) return;
  const auto stations = calculees(params.originelle.checked(), params.compensee.checked());
  preparerCodeStations(params.codeStations(), true);
  placerStations(stations, params.codeStations(), params.altitudes.checked());
}

void corrPolygoOuverteDLG::enregistrer() {
  if (const auto chemin = choisirObsAEcrire()) {
    ecrireObs(*chemin, [this] { return ecrireObsOuverte(donnees()); });
  }
}

void corrPolygoOuverteDLG::ouvrir() {
  const auto chemin = choisirObsALire();
  if (!chemin) return;
  lireObs(*chemin, [this](const std::string& octets) {
    polygonaleOuverteObs obs = donnees();
    imprimerDoutes(lireObsOuverte(octets, obs));
    montrer(obs);
  });
}

}  // namespace veltora
