#include "stakeout/dialogs/dessin_implantation_dlg.h"

namespace veltora {

CDlgPrmDessImplantationAuto::CDlgPrmDessImplantationAuto(const paramsDessinImplantation& dessin,
                                                         const reglagesImplantation& reglages)
    : Dialog(L"Paramètres de dessin") {
  constexpr double kPlusPetite = 1e-6;  // drawing units
  constexpr double kPlusGrande = 1e6;
  constexpr int kDerniereCouleur = 255;
  for (ui::NumberField* champ : {&hauteurTexte, &largeurFleche, &longueurFleche, &croixPoint})
    champ->setRange(kPlusPetite, kPlusGrande);
  for (ui::NumberField* champ : {&nonVerifie, &visible, &nonVisible, &reference, &station})
    champ->setRange(1, kDerniereCouleur);
  groupement.setIndex(dessin.groupement);
  miseEnStation.setChecked(dessin.miseEnStation != 0);
  implantations.setChecked(dessin.implantations != 0);
  numeros.setChecked(dessin.numeros != 0);
  textes.setChecked(dessin.textes != 0);
  coordonnees.setChecked(dessin.coordonnees != 0);
  hauteurTexte.setValue(reglages.hauteurTexte);
  largeurFleche.setValue(reglages.largeurFleche);
  longueurFleche.setValue(reglages.longueurFleche);
  croixPoint.setValue(reglages.croixPoint);
  nonVerifie.setValue(reglages.couleurNonVerifie);
  visible.setValue(reglages.couleurVisible);
  nonVisible.setValue(reglages.couleurNonVisible);
  reference.setValue(reglages.couleurReference);
  station.setValue(reglages.couleurStation);
}

void CDlgPrmDessImplantationAuto::prendre(paramsDessinImplantation& dessin,
                                          reglagesImplantation& reglages) const {
  dessin.groupement = groupement.index();
  dessin.miseEnStation = miseEnStation.checked() ? 1 : 0;
  dessin.implantations = implantations.checked() ? 1 : 0;
  dessin.numeros = numeros.checked() ? 1 : 0;
  dessin.textes = textes.checked() ? 1 : 0;
  dessin.coordonnees = coordonnees.checked() ? 1 : 0;
  if (hauteurTexte.value() != reglages.hauteurTexte) reglages.poserHauteurTexte(hauteurTexte.value());
  reglages.largeurFleche = largeurFleche.value();
  reglages.longueurFleche = longueurFleche.value();
  reglages.croixPoint = croixPoint.value();
  reglages.couleurNonVerifie = nonVerifie.intValue();
  reglages.couleurVisible = visible.intValue();
  reglages.couleurNonVisible = nonVisible.intValue();
  reglages.couleurReference = reference.intValue();
  reglages.couleurStation = station.intValue();
}

}  // namespace veltora
