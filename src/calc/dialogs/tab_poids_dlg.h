#pragma once

#include "calc/network/reseau_moindres_carres.h"
#include "ui/dialog.h"

namespace veltora {

/// The weights of a network's observations: fixed by a number, or left to the formulas.
class VELTORA_API CDlgTabPoidsObse : public ui::Dialog {
public:
  /// @param reseau outlives the dialog; its weights and formulas are changed in place
  explicit CDlgTabPoidsObse(reseauMoindresCarres& reseau);

  ui::List liste{this};
  ui::TextField poids{this, L"Poids (vider pour calcul selon formules)"};
  ui::Button fixer{this, L"Fi&xer", [this] { fixerPoids(); }};
  ui::Button formules{this, L"&Formules", [this] { ouvrirFormules(); }};
  ui::Button fermer{this, L"Fermer", ui::Button::Role::Cancel};

protected:
  void onInit() override;

private:
  void fixerPoids();
  void ouvrirFormules();
  [[nodiscard]] std::wstring nomPoint(int index) const;

  reseauMoindresCarres& m_reseau;
};

}  // namespace veltora
