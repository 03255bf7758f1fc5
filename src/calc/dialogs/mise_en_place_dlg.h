#pragma once

#include "core/code_range.h"
#include "ui/dialog.h"

namespace veltora {

/// How the stations of a traverse are placed in the drawing.
class VELTORA_API CParamMisePlaceResultCalcs : public ui::Dialog {
public:
  CParamMisePlaceResultCalcs() : Dialog(L"Params mise en place") {}

  /// The code typed; `kStationCode` when it is none.
  [[nodiscard]] int codeStations() const { return codeOuDefaut(code.intValue(), kStationCode); }

  ui::NumberField code{this, L"Code des stations", kStationCode, L"%d", ui::NumberField::kInteger};
  ui::CheckBox altitudes{this, L"Ne pas placer les altitudes", L"Placer les altitudes", false};
  ui::CheckBox originelle{this, L"Dessiner la polygonale originelle"};
  ui::CheckBox compensee{this, L"Dessiner la polygonale compensée"};
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Annuler", ui::Button::Role::Cancel};
};

}  // namespace veltora
