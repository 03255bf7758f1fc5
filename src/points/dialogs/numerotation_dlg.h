#pragma once

#include "arx/adesk.h"
#include "ui/dialog.h"

namespace veltora {

/// Prefix, first number and suffix of names that are given to a whole table.
class VELTORA_API CModeNumerotation : public ui::Dialog {
public:
  CModeNumerotation();

  ui::TextField prefixe{this, L"Préfixe"};
  ui::NumberField depart{this, L"Numéro de départ", 1.0, L"%d", ui::NumberField::kInteger};
  ui::TextField suffixe{this, L"Suffixe"};
  ui::Label exemple{this, L"Exemple:"};
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Annuler", ui::Button::Role::Cancel};

private:
  void montrerExemple();
};

/// Asks with these values as a start. @return 1 with the values typed; 0 with the values unchanged when the
/// user cancels or the dialog fails, which is then printed
VELTORA_API int saisirNumerotation(CString& prefixe, int& depart, CString& suffixe);

}  // namespace veltora
