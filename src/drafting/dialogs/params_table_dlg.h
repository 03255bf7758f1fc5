#pragma once

#include "drafting/lists/table_dessinee.h"
#include "ui/dialog.h"

#include <vector>

namespace veltora {

/// Check boxes with two buttons: all of them, or their defaults.
class groupeCases : public ui::Group {
public:
  using Group::Group;
  void toutCocher();
  void remettreDefauts(const std::vector<bool>& defauts);

protected:
  [[nodiscard]] std::vector<ui::CheckBox*> cases() const;
};

/// How the coordinate table is drawn.
class VELTORA_API CParamTableXYZ : public ui::Dialog {
public:
  CParamTableXYZ() : Dialog(L"Params mise en place") {}

  [[nodiscard]] paramsTableXYZ params() const;

  struct Donnees : groupeCases {
    explicit Donnees(Container* parent) : groupeCases(parent, L"Données") {}
    ui::CheckBox numeros{this, L"Placer &numéros", true};
    ui::CheckBox x{this, L"Placer coordonnée &X", true};
    ui::CheckBox y{this, L"Placer coordonnée Y", true};
    ui::CheckBox z{this, L"Placer coordonnée Z", true};
    ui::CheckBox code{this, L"Placer code point", false};
    ui::CheckBox libelle{this, L"Placer libellé du code", false};
    ui::Button tout{this, L"&Tout", [this] { toutCocher(); }};
    ui::Button standard{this, L"&Std", [this] { remettreDefauts({true, true, true, true, false, false}); }};
  } donnees{this};

  ui::NumberField hauteur{this, L"Taille des textes", 2.5};
  ui::ComboBox precisionXY{this, L"Précision X,Y", {L"0", L"0.0", L"0.00", L"0.000", L"0.0000", L"0.00000"}};
  ui::ComboBox precisionZ{this, L"Précision Z", {L"0", L"0.0", L"0.00", L"0.000", L"0.0000", L"0.00000"}};

  struct Cadre : groupeCases {
    explicit Cadre(Container* parent) : groupeCases(parent, L"Cadre") {}
    ui::CheckBox colonnes{this, L"Séparer Colonnes", true};
    ui::CheckBox entete{this, L"Séparer entete", true};
    ui::CheckBox lignes{this, L"Séparer Lignes", false};
    ui::CheckBox encadrer{this, L"Encadrer", true};
    ui::Button tout{this, L"&Tout", [this] { toutCocher(); }};
    ui::Button standard{this, L"&Std", [this] { remettreDefauts({true, true, false, true}); }};
  } cadre{this};

  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Annuler", ui::Button::Role::Cancel};

protected:
  void onInit() override;
};

}  // namespace veltora
