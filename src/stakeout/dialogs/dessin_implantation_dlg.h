#pragma once

#include "stakeout/params_implantation.h"
#include "ui/dialog.h"

namespace veltora {

/// What the results show in the drawing, their sizes and colours. After OK the caller takes the values by
/// `prendre`.
class VELTORA_API CDlgPrmDessImplantationAuto : public ui::Dialog {
public:
  CDlgPrmDessImplantationAuto(const paramsDessinImplantation& dessin, const reglagesImplantation& reglages);
  void prendre(paramsDessinImplantation& dessin, reglagesImplantation& reglages) const;

  ui::RadioGroup groupement{
      this, L"Groupement", {L"Ne pas grouper", L"Grouper par mise en station", L"Tout grouper"}};
  ui::Group contenu{this, L"Dessiner"};
  ui::CheckBox miseEnStation{&contenu, L"Mise en station"};
  ui::CheckBox implantations{&contenu, L"Implantations"};
  ui::CheckBox numeros{&contenu, L"Numéros"};
  ui::CheckBox textes{&contenu, L"Textes"};
  ui::CheckBox coordonnees{&contenu, L"Coordonnées"};
  ui::Group tailles{this, L"Tailles"};
  ui::NumberField hauteurTexte{&tailles, L"Hauteur des textes"};
  ui::NumberField largeurFleche{&tailles, L"Largeur des flèches"};
  ui::NumberField longueurFleche{&tailles, L"Longueur des flèches"};
  ui::NumberField croixPoint{&tailles, L"Croix des points"};
  ui::Group couleurs{this, L"Couleurs"};
  ui::NumberField nonVerifie{&couleurs, L"Point non vérifié", 7, L"%d", ui::NumberField::kInteger};
  ui::NumberField visible{&couleurs, L"Point visible", 4, L"%d", ui::NumberField::kInteger};
  ui::NumberField nonVisible{&couleurs, L"Point non visible", 1, L"%d", ui::NumberField::kInteger};
  ui::NumberField reference{&couleurs, L"Mise en station - Ref", 6, L"%d", ui::NumberField::kInteger};
  ui::NumberField station{&couleurs, L"Mise en station - Obs", 1, L"%d", ui::NumberField::kInteger};
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Annuler", ui::Button::Role::Cancel};
};

}  // namespace veltora
