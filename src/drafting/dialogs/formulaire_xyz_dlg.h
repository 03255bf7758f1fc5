#pragma once

#include "points/exchange/table_obs_xyz.h"
#include "ui/dialog.h"

namespace veltora {

class tableCodification;

/// A list of coordinates: read from `.xyz` files, sorted, numbered anew, written, placed in the drawing. The
/// lines live as long as the dialog.
class VELTORA_API CformulaireXYZ : public ui::Dialog {
public:
  /// Both live longer than the dialog.
  CformulaireXYZ(tableCodification& codes, tableObsXYZ& table);

  ui::Menu menuTable{this, L"Table"};
  ui::Menu menuPoints{this, L"&Points"};
  ui::List liste{this};

protected:
  void onInit() override { remplir(); }

private:
  void remplir();
  void charger(bool vider);
  void sauvegarder();
  void placer();
  void renumeroter();
  void ajouterCodesManquants();

  tableCodification& m_codes;
  tableObsXYZ& m_table;
};

/// The command COORDSXYZ: the form on a new, empty list and the code table.
VELTORA_API void coordsXYZ();

}  // namespace veltora
