#pragma once

#include "field/carnet_gsi.h"
#include "ui/dialog.h"

namespace veltora {

/// The dialog of IMPORTGSI: a field book, and what its lines decode to.
class VELTORA_API ImportGSI : public ui::Dialog {
public:
  ImportGSI();

  ui::TextField fichier{this, L"Fichier"};
  ui::Button parcourir{this, L"...", [this] { choisirFichier(); }};
  ui::TextField brut{this, L"Données"};
  ui::TextField analyse{this, L"Analyse"};
  ui::Button analyser{this, L"Analyser", [this] { analyserLignes(); }};
  ui::ProgressBar progression{this};
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Cancel", ui::Button::Role::Cancel};

private:
  void choisirFichier();
  void analyserLignes();

  carnetGSI m_carnet;
};

}  // namespace veltora
