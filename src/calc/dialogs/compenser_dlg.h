#pragma once

#include "jobs/compenser.h"
#include "ui/dialog.h"

namespace veltora {

/// A network adjusted with weights: its file, the standard deviations, the results, what is drawn of them.
/// Each button computes anew from the fields.
class VELTORA_API DlgCompenser : public ui::Dialog {
public:
  DlgCompenser();

  ui::TextField fichier{this, L"Réseau (.mc, .gkf)"};
  ui::Button parcourir{this, L"Choisir le réseau", [this] { choisir(); }};
  ui::NumberField angle{this, L"Angle (mgr)", 1.0};
  ui::NumberField direction{this, L"Direction (mgr)", 1.0};
  ui::NumberField gisement{this, L"Gisement (mgr)", 1.0};
  ui::NumberField distance{this, L"Distance (mm)", 5.0};
  ui::NumberField ppm{this, L"Distance (mm/km)", 5.0};
  ui::NumberField nivellement{this, L"Nivellement (mm)", 0.0};
  ui::NumberField racineKm{this, L"Nivellement (mm par racine de km)", 2.0};
  ui::NumberField centrageStation{this, L"Centrage de la station (mm)", 0.0};
  ui::NumberField centrageVise{this, L"Centrage du point visé (mm)", 0.0};
  ui::ComboBox robuste{this, L"Estimation robuste", {L"aucune", L"danoise", L"Huber"}};
  ui::CheckBox prevoir{this, L"Prévoir sans mesures"};
  ui::Button calculer{this, L"Calculer", [this] { executer(false, {}); }};
  ui::TextField resultats{this, L"Résultats"};  ///< read only
  ui::NumberField echelle{this, L"Agrandissement des ellipses (0 : automatique)", 0.0};
  ui::Button dessiner{this, L"Dessiner", [this] { executer(true, {}); }};
  ui::Button rapport{this, L"Rapport", [this] { ecrireRapport(); }};
  ui::Button fermer{this, L"Fermer", ui::Button::Role::Cancel};

private:
  void choisir();
  void ecrireRapport();
  void montrer(const resultatCompenser& resultat);
  void executer(bool dessin, const std::wstring& fichierRapport);
};

}  // namespace veltora
