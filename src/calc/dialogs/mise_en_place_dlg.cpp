#include "calc/dialogs/mise_en_place_dlg.h"

namespace veltora {

int CParamMisePlaceResultCalcs::codeStations() const {
  const int valeur = code.intValue();
  return valeur >= 1 && valeur <= 9999 ? valeur : 100;
}

}  // namespace veltora
