#pragma once

#include "calc/network/formules_poids.h"
#include "ui/dialog.h"

namespace veltora {

/// The weight formulas of a network and their variables, with a trial on typed values.
class VELTORA_API CDlgFormulePoids : public ui::Dialog {
public:
  /// @param formules outlives the dialog. Its variables change at once, its texts by "Charger" and
  /// "Enregistrer"
  explicit CDlgFormulePoids(formulesPoids& formules);

  ui::TextField angles{this, L"Angles"};
  ui::Button verifierAngles{this, L"Vérifer", [this] { verifier(angles); }};  // sic
  ui::TextField gisements{this, L"Gisements"};
  ui::Button verifierGisements{this, L"Vérifer", [this] { verifier(gisements); }};  // sic
  ui::TextField distances{this, L"Distances"};
  ui::Button verifierDistances{this, L"Vérifer", [this] { verifier(distances); }};  // sic
  ui::TextField lecture{this};                                                      ///< what "Vérifer" says
  ui::List constantes{this, L"Constantes", ui::List::Selection::Single};
  ui::Button ajouter{this, L"Ajouter", [this] { ajouterVariable(); }};
  ui::Button supprimer{this, L"Supprimer", [this] { supprimerVariable(); }};
  ui::Button modifier{this, L"Modifier", [this] { modifierVariable(); }};
  ui::Button importer{this, L"Importer", [this] { importerNoms(); }};
  ui::Button charger{this, L"Charger", [this] { ouvrir(); }};
  ui::Button enregistrer{this, L"Enregistrer", [this] { sauver(); }};
  ui::Group exemple{this, L"Exemple"};
  ui::NumberField d1{&exemple, L"d1", 0.0};
  ui::NumberField d2{&exemple, L"d2", 0.0};
  ui::NumberField d3{&exemple, L"d3", 0.0};
  ui::NumberField angle{&exemple, L"angle(gr)", 0.0};
  ui::Button calculer{&exemple, L"Calculer", [this] { calculerExemple(); }};
  ui::Label poidsAngle1{&exemple, L"Poids Angle (1)"};  ///< by the angles formula
  ui::Label poidsAngle2{&exemple, L"Poids Angle (2)"};  ///< by the bearings formula
  ui::Label poidsDistance{&exemple, L"Poids dist"};
  ui::Button fermer{this, L"Fermer", ui::Button::Role::Cancel};

protected:
  void onInit() override;

private:
  void verifier(const ui::TextField& champ);
  void ajouterVariable();
  void supprimerVariable();
  void modifierVariable();
  void importerNoms();
  void ouvrir();
  void sauver();
  void calculerExemple();
  void montrerTextes();
  void montrerVariables();
  /// Index of the selected variable; -1 for none and for a system variable.
  [[nodiscard]] int variableChoisie() const;

  formulesPoids& m_formules;
};

}  // namespace veltora
