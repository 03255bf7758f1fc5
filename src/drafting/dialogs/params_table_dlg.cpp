#include "drafting/dialogs/params_table_dlg.h"

namespace veltora {

std::vector<ui::CheckBox*> groupeCases::cases() const {
  std::vector<ui::CheckBox*> liste;
  for (ui::Control* controle : controls())
    if (auto* coche = dynamic_cast<ui::CheckBox*>(controle)) liste.push_back(coche);
  return liste;
}

void groupeCases::toutCocher() {
  for (ui::CheckBox* coche : cases()) coche->setChecked(true);
}

void groupeCases::remettreDefauts(const std::vector<bool>& defauts) {
  const std::vector<ui::CheckBox*> liste = cases();
  for (std::size_t i = 0; i < liste.size() && i < defauts.size(); ++i) liste[i]->setChecked(defauts[i]);
}

void CParamTableXYZ::onInit() {
  const paramsTableXYZ defauts;
  hauteur.setRange(0.001, 1e6);
  precisionXY.setIndex(defauts.decimalesXY);
  precisionZ.setIndex(defauts.decimalesZ);
}

paramsTableXYZ CParamTableXYZ::params() const {
  paramsTableXYZ p;
  p.numeros = donnees.numeros.checked();
  p.x = donnees.x.checked();
  p.y = donnees.y.checked();
  p.z = donnees.z.checked();
  p.code = donnees.code.checked();
  p.libelle = donnees.libelle.checked();
  p.hauteur = hauteur.value();
  p.decimalesXY = precisionXY.index();
  p.decimalesZ = precisionZ.index();
  p.cadre = (cadre.colonnes.checked() ? paramsTableXYZ::kColonnes : 0) |
            (cadre.entete.checked() ? paramsTableXYZ::kEntete : 0) |
            (cadre.lignes.checked() ? paramsTableXYZ::kLignes : 0) |
            (cadre.encadrer.checked() ? paramsTableXYZ::kEncadrer : 0);
  return p;
}

}  // namespace veltora
