#pragma once

#include "stakeout/params_implantation.h"
#include "ui/dialog.h"

namespace veltora {

/// How points are named, and where they stand along clothoids, arcs and straight lines. After OK the caller
/// takes the values by `prendre`.
class VELTORA_API CDlgParamsImplantationAuto : public ui::Dialog {
public:
  explicit CDlgParamsImplantationAuto(const paramsImplantation& params);
  /// Writes the values into `params`; the numbering begins anew.
  void prendre(paramsImplantation& params) const;

  ui::ComboBox codeStations{this, L"Code des stations"};
  ui::NumberField depart{this, L"Num départ", 1, L"%d", ui::NumberField::kInteger};
  ui::TextField prefixe{this, L"Préfixe"};
  ui::TextField suffixe{this, L"Suffixe"};
  ui::CheckBox incrementer{this, L"Incrémenation Automatique du préfixe"};  // sic
  ui::Group clothoides{this, L"Clothoides"};
  ui::RadioGroup modeClothoides{
      &clothoides, L"", {L"Interpolation par pas", L"Implantation suivt erreur max"}};
  ui::NumberField distClothoides{&clothoides, L"Dist / Err max"};
  ui::Group arcs{this, L"Arcs"};
  ui::RadioGroup modeArcs{&arcs, L"", {L"Interpolation par pas", L"Implantation suivt erreur max"}};
  ui::NumberField distArcs{&arcs, L"Dist / Err max"};
  ui::CheckBox interpoler{this, L"Interpoler sur alignements droits"};
  ui::NumberField distDroites{this, L"Distance"};
  ui::Button continuer{this, L"Continuer", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Annuler", ui::Button::Role::Cancel};
};

}  // namespace veltora
