#pragma once

#include "calc/traverse/obs_fermee.h"
#include "ui/dialog.h"

namespace veltora {

/// The closed traverse: rows are typed or read from a file, computed with a report, and their stations placed
/// in the current table and in the drawing. A new dialog begins with the defaults.
class VELTORA_API corrPolygoDLG : public ui::Dialog {
public:
  corrPolygoDLG();

  ui::Group depart{this, L"Station de départ"};
  ui::TextField departNumero{&depart, L"Numéro", L"ST1"};
  ui::NumberField departX{&depart, L"X", 1000.0, L"%.15g"};
  ui::NumberField departY{&depart, L"Y", 1000.0, L"%.15g"};
  ui::NumberField departZ{&depart, L"Z", 100.0, L"%.15g"};
  ui::NumberField nord{&depart, L"Nord", 0.0, L"%.15g"};
  ui::ComboBox angles{this, L"Angles"};
  ui::ComboBox nivellement{this, L"Nivellement"};
  ui::Group saisie{this, L"Données"};
  ui::TextField station{&saisie, L"Station", L"ST2"};
  ui::NumberField angle{&saisie, L"Angle", 0.0, L"%.15g"};
  ui::NumberField distance{&saisie, L"Distance", 0.0, L"%.15g"};
  ui::NumberField altitude{&saisie, L"Altitude", 0.0, L"%.15g"};
  ui::List liste{this, {}, ui::List::Selection::Single};
  ui::Button ajouter{this, L"Ajouter", [this] { ajouterSaisie(); }};
  ui::Button enlever{this, L"Enlever !", [this] { enleverChoisie(); }};
  ui::Button calculer{this, L"Calculer !", [this] { calculerRapport(); }};
  ui::Button placer{this, L"Placer !!!", [this] { placerResultats(); }};
  ui::Button sauvegarder{this, L"Sauvegarder", [this] { enregistrer(); }};
  ui::Button charger{this, L"Charger", [this] { ouvrir(); }};
  ui::Button fermer{this, L"Fermer", ui::Button::Role::Cancel};

  /// What the controls hold, and the reverse.
  [[nodiscard]] polygonaleFermeeObs donnees() const;
  void montrer(const polygonaleFermeeObs& donnees);

private:
  void ajouterSaisie();
  void enleverChoisie();
  void calculerRapport();
  void placerResultats();
  void enregistrer();
  void ouvrir();
};

}  // namespace veltora
