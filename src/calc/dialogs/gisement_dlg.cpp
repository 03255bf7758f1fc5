#include "calc/dialogs/gisement_dlg.h"

#include "base/format.h"
#include "calc/angles.h"

namespace veltora {

CCalcGisementDlg::CCalcGisementDlg() : Dialog(L"Calcul de gisement") {
  for (ui::NumberField* champ : {&stationX, &stationY, &directionX, &directionY}) {
    champ->onChange = [this] { gisement.setText(base::formater(L"%.4f", gisementCalcule())); };
  }
}

void CCalcGisementDlg::onInit() { unite.setText(std::wstring(uniteDeMode(modeAngle).motCle)); }

double CCalcGisementDlg::gisementCalcule() const {
  return calculGisement(stationX.value(), stationY.value(), directionX.value(), directionY.value(),
                        modeAngle);
}

}  // namespace veltora
