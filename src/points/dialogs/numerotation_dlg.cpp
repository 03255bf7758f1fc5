#include "points/dialogs/numerotation_dlg.h"

#include "arx/ed/acutads.h"
#include "base/text.h"
#include "points/numeroteur.h"

#include <exception>

namespace veltora {

CModeNumerotation::CModeNumerotation() : Dialog(L"Numérotation") {
  prefixe.onChange = [this] { montrerExemple(); };
  depart.onChange = [this] { montrerExemple(); };
  suffixe.onChange = [this] { montrerExemple(); };
}

void CModeNumerotation::montrerExemple() {
  exemple.setText(nomNumerote(prefixe.text(), depart.intValue(), 0, suffixe.text()));
}

int saisirNumerotation(CString& prefixe, int& depart, CString& suffixe) {
  try {
    CModeNumerotation dialogue;
    dialogue.prefixe.setText(prefixe);
    dialogue.depart.setValue(depart);
    dialogue.suffixe.setText(suffixe);
    if (dialogue.doModal() != ui::kOk) return 0;
    prefixe = dialogue.prefixe.text();
    depart = dialogue.depart.intValue();
    suffixe = dialogue.suffixe.text();
    return 1;
  } catch (const std::exception& erreur) {
    acutPrintf(L"\n%s", base::fromUtf8(erreur.what()).c_str());
    return 0;
  }
}

}  // namespace veltora
