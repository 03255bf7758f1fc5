#pragma once

#include "ui/dialog.h"

namespace veltora {

/// Shift of altitudes: the difference, or what an altitude becomes. Previous altitude, new altitude and
/// difference are kept from one use to the next, to full precision; the fields show four decimals.
class VELTORA_API CDlgRattachZ : public ui::Dialog {
public:
  CDlgRattachZ();
  /// What is added to the altitudes, drawing units.
  [[nodiscard]] double decalage() const { return m_difference; }
  /// All points, not a selection.
  [[nodiscard]] bool tousLesPoints() const { return pointsAModifier.index() == 0; }
  void onOk() override;

  ui::NumberField altitudePrecedente{this, L"Altitude précédente", 0.0, L"%.4f"};
  ui::Button select{this, L"Select", [this] { prendrePoint(); }};
  ui::Group groupeMode{this, L"Mode"};
  ui::RadioGroup mode{&groupeMode, L"", {L"Nouvelle altitude", L"Différence d'altitudes"}};
  // The fields of the two modes; the captions of the modes themselves name the buttons.
  ui::NumberField nouvelleAltitude{&groupeMode, L"Altitude", 0.0, L"%.4f"};
  ui::NumberField differenceAltitudes{&groupeMode, L"Différence", 0.0, L"%.4f"};
  ui::RadioGroup pointsAModifier{
      this, L"Points à modifier", {L"Tous les points", L"Sélection de points seulement"}};
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Annuler", ui::Button::Role::Cancel};

protected:
  void onInit() override;

private:
  void montrer();
  void activerChamps();
  void prendrePoint();

  double m_precedente = 0.0;
  double m_nouvelle = 0.0;
  double m_difference = 0.0;
};

}  // namespace veltora
