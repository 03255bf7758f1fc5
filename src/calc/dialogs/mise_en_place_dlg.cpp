#include "calc/dialogs/mise_en_place_dlg.h"

namespace veltora {

int CParamMisePlaceResultCalcs::codeStations() const { return codeOuDefaut(code.intValue(), kStationCode); }

}  // namespace veltora
