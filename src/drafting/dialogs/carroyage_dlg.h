#pragma once

#include "arx/db/dbid.h"
#include "drafting/grid/carroyage.h"
#include "ui/dialog.h"

#include <vector>

namespace veltora {

/// Which polylines get a grid, and how it looks. After OK the caller takes the fields.
class VELTORA_API DlgCarroyage : public ui::Dialog {
public:
  /// @param regions  the chosen polylines, in the order of choosing; they outlive the dialog
  explicit DlgCarroyage(std::vector<AcDbObjectId>& regions);
  void onOk() override;

  ui::Button selectionner{this, L"Sélectionner régions à carroyer", [this] { choisirRegions(); }};
  ui::Label nombre{this, L"", L"0 régions choisies"};
  ui::NumberField pasX{this, L"Pas sur X du carroyage", 100.0};
  ui::NumberField pasY{this, L"Pas sur Y du carroyage", 100.0};
  ui::NumberField tailleCroix{this, L"Taille des croix", 5.0};
  ui::NumberField tailleTexte{this, L"Taille des textes ", 2.0};
  ui::CheckBox internes{this, L"Ecritures externes", L"Ecritures internes", false};
  ui::ComboBox format{this, L"Format", {L"0", L"0.0", L"0.00", L"0.000", L"0.0000"}};
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Annuler", ui::Button::Role::Cancel};

private:
  void choisirRegions();
  void montrerNombre();

  std::vector<AcDbObjectId>& m_regions;
};

/// Whether a grid is of a usual size, or the user wants it all the same.
VELTORA_API bool accepterAmpleur(const ampleurCarroyage& ampleur);

/// Shows the dialog, with the polylines that were selected beforehand, and draws the grids.
VELTORA_API void carroyage();

}  // namespace veltora
