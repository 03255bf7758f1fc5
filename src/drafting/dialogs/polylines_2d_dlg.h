#pragma once

#include "arx/db/dbid.h"
#include "drafting/polylines/polylines_2d.h"
#include "ui/dialog.h"

#include <cstdint>
#include <string>
#include <vector>

namespace veltora {

/// Which 3D polylines become light ones, at which altitude, on which layers. After OK the caller takes
/// `selection` and `demande`.
class VELTORA_API CPol3DToPol2DDlg : public ui::Dialog {
public:
  CPol3DToPol2DDlg();
  [[nodiscard]] const std::vector<AcDbObjectId>& selection() const { return m_selection; }
  /// What the controls tell.
  [[nodiscard]] demandePolylines2d demande() const;
  void onOk() override;

  ui::Group polylines{this, L"Polylines à traiter "};
  ui::Button selectionner{&polylines, L"Selectionner", [this] { choisirPolylines(); }};
  ui::Label nombre{&polylines, L"", L"0 polylines selectionnees"};
  ui::Label filtre{&polylines, L"Se limiter aux layers suivants:", L"** Tous **"};
  ui::Button choisir{&polylines, L"Choisir", [this] { choisirLayers(); }};
  ui::RadioGroup modeAltitude{
      this,
      L"Altitude des polylines à créer",
      {L"Altitude 0", L"La premiere", L"La plua basse", L"La moyenne", L"La plus haute"}};  // sic
  ui::CheckBox supprimerOriginales{this, L"Supprimer les polylines de départ"};
  ui::RadioGroup modeLayer{this,
                           L"Création des polylines",
                           {L"Mettre les polyline 2D dans le meme layer que les originales",
                            L"Creer un layer à partir du layer d'origine"}};
  ui::TextField modeleLayer{this, L"Modèle", L"{LAYER}-2D"};
  ui::NumberField couleurLayer{this, L"Couleur", 7, L"%d", ui::NumberField::kInteger};
  ui::Label aide{this, L"",
                 L"Utiliser {LAYER} pour reprendre le nm du layer.  Ex {LAYER}-2D creera un layer "
                 L"PROJET_PLINES-2D pour les polylines provenant du layer PROJET_PLINES"};  // sic
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Annuler", ui::Button::Role::Cancel};

private:
  void choisirPolylines();
  void choisirLayers();
  void montrer();

  std::vector<AcDbObjectId> m_selection;
  std::vector<AcDbObjectId> m_layers;  ///< of the selection, in the order met
  std::vector<std::wstring> m_noms;    ///< theirs
  std::vector<std::uint16_t> m_coches;
};

/// Shows the dialog and makes the polylines that the user asks for.
VELTORA_API void polylines3dEn2d();

}  // namespace veltora
