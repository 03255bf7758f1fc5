#include "stakeout/dialogs/params_implantation_dlg.h"

#include "stakeout/dialogs/liste_codes.h"

#include <limits>

namespace veltora {

CDlgParamsImplantationAuto::CDlgParamsImplantationAuto(const paramsImplantation& params)
    : Dialog(L"Paramètres d'implantation") {
  constexpr double kPlusPetite = 0.0001;  // drawing units
  constexpr double kPlusGrande = 1e9;
  for (ui::NumberField* champ : {&distClothoides, &distArcs, &distDroites})
    champ->setRange(kPlusPetite, kPlusGrande);
  depart.setRange(1, std::numeric_limits<std::int32_t>::max());
  codeStations.show(params.afficherCodeStations != 0);
  listerCodes(codeStations, params.codeStations);
  depart.setValue(params.courant);
  prefixe.setText(params.prefixe);
  suffixe.setText(params.suffixe);
  incrementer.setChecked(params.incrementerPrefixe != 0);
  modeClothoides.setIndex(params.modeClothoides);
  distClothoides.setValue(params.distClothoides);
  modeArcs.setIndex(params.modeArcs);
  distArcs.setValue(params.distArcs);
  interpoler.setChecked(params.interpolerDroites != 0);
  distDroites.setValue(params.distDroites);
}

void CDlgParamsImplantationAuto::prendre(paramsImplantation& params) const {
  params.initialiser(prefixe.text(), depart.intValue(), suffixe.text(), 1);
  params.depart = depart.intValue();
  if (codeStations.visible() && codeStations.index() >= 0)
    params.codeStations = static_cast<std::int32_t>(codeStations.data(codeStations.index()));
  params.incrementerPrefixe = incrementer.checked() ? 1 : 0;
  params.modeClothoides = modeClothoides.index();
  params.distClothoides = distClothoides.value();
  params.modeArcs = modeArcs.index();
  params.distArcs = distArcs.value();
  params.interpolerDroites = interpoler.checked() ? 1 : 0;
  params.distDroites = distDroites.value();
}

}  // namespace veltora
