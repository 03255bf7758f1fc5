#pragma once

#include "ui/dialog.h"

namespace veltora {

/// By what criteria a drawing is lightened: surplus points would go to a layer that is frozen and hidden. No
/// command opens it and nothing acts on its values yet.
class VELTORA_API CDlgAllementDessin : public ui::Dialog {
public:
  CDlgAllementDessin();

  ui::Label entete{this, L"", L"Indiquez les criteres d'allègement du dessin."};
  ui::RadioGroup critere{
      this,
      L"",
      {L"Densité de points / surface", L"Surface occupée par les elements graphiques sur le dessin"}};
  ui::Group parametres{this, L"Parametres"};
  ui::TextField densiteMaximale{&parametres, L"Densité maximale"};
  ui::Label unite{&parametres, L"", L"%"};
  ui::ComboBox actionPreferee{
      &parametres,
      L"Action préférée",
      {L"Cacher les points", L"Cacher les altitudes, puis les points", L"Cacher les numeros, puis les points",
       L"Cacher les altitudes, les numeros , puis les points",
       L"Cacher les numeros , les altitudes, puis les points"}};
  ui::Group delestage{this, L"Délestage"};
  ui::Label texteDelestage{
      &delestage, L"",
      L"Les points en trop seront délestés vers un layer, et ce layer sera automatiquement gelé et caché. "
      L"Selectionnez le layer a utiliser, ou saisir un nom de layer à créer"};
  ui::ComboBox layerDelestage{&delestage, L"Layer"};  ///< one of the drawing, or a new name
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Annuler", ui::Button::Role::Cancel};

protected:
  void onInit() override;
};

}  // namespace veltora
