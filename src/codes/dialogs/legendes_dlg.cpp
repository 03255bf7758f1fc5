#include "codes/dialogs/legendes_dlg.h"

#include "arx/ed/acedads.h"
#include "base/format.h"
#include "codes/legend/description_bloc.h"

namespace veltora {

CTableLegendes::CTableLegendes(const std::vector<ligneLegende>& lignes)
    : Dialog(L"Table des légendes"), m_lignes(lignes) {
  liste.setCheckBoxes();
  liste.addColumn(L"Block", 15.0);
  liste.addColumn(L"Description", 40.0);
  liste.addColumn(L"Occur", 10.0, ui::Align::Right);
  liste.addColumn(L"Taille X", 15.0, ui::Align::Right);
  liste.addColumn(L"Taille Y", 15.0, ui::Align::Right);
  constexpr double kPlusPetite = 1e-6;
  constexpr double kPlusGrande = 1e6;
  tailleTextes.setRange(kPlusPetite, kPlusGrande);
  tailleBlocs.setRange(kPlusPetite, kPlusGrande);
  distanceLignes.setRange(0.0, kPlusGrande);
  longueurTrait.setRange(0.0, kPlusGrande);
  longueurTrait.hide();
  legendeLayers.onChange = [this] { longueurTrait.show(legendeLayers.checked()); };
}

void CTableLegendes::onInit() {
  liste.clear();
  for (const ligneLegende& ligne : m_lignes)
    liste.addRow({ligne.bloc.nom, ligne.description, base::formater(L"%d", ligne.bloc.occurrences),
                  base::formater(L"%.2f", ligne.bloc.tailleX), base::formater(L"%.2f", ligne.bloc.tailleY)});
}

void CTableLegendes::onOk() {
  if (tailleTextes.validate() && distanceLignes.validate() && tailleBlocs.validate() &&
      (!legendeLayers.checked() || longueurTrait.validate()))
    Dialog::onOk();
}

std::vector<ligneLegende> CTableLegendes::choisies() const {
  std::vector<ligneLegende> lignes;
  for (std::size_t i = 0; i < m_lignes.size(); ++i)
    if (liste.checked(static_cast<int>(i))) lignes.push_back(m_lignes[i]);
  return lignes;
}

demandeLegende CTableLegendes::demande() const {
  return {tailleTextes.value(),  distanceLignes.value(),  tailleBlocs.value(),
          longueurTrait.value(), legendeLayers.checked(), grouper.checked()};
}

void CTableLegendes::cocher(const std::function<bool(int rang)>& voulue) {
  for (int rang = 0; rang < liste.rowCount(); ++rang) liste.setChecked(rang, voulue(rang));
}

void CTableLegendes::cocherUtilises() {
  cocher([this](int rang) { return m_lignes[static_cast<std::size_t>(rang)].bloc.occurrences >= 1; });
}

void tableLegendes() {
  std::vector<ligneLegende> lignes;
  for (infoBlocks& bloc : listerBlocs()) {
    std::wstring description = descriptionBloc(bloc.idBlock);
    lignes.push_back({std::move(bloc), std::move(description)});
  }
  CTableLegendes dialogue(lignes);
  if (dialogue.doModal() != ui::kOk) return;
  ads_point coin = {0.0, 0.0, 0.0};
  if (acedGetPoint(nullptr, L"\nPosition des la table des légendes", coin) != RTNORM) return;  // sic
  dessinerLegende(dialogue.choisies(), dialogue.demande(), {coin[0], coin[1]});
}

}  // namespace veltora
