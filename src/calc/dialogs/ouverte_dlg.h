#pragma once

#include "calc/traverse/obs_ouverte.h"
#include "ui/dialog.h"

namespace veltora {

/// A known station of the open traverse, with a button that computes its bearing from two points.
class VELTORA_API groupeStationConnue : public ui::Group {
public:
  groupeStationConnue(ui::Container* parent, const std::wstring& legende);

  ui::TextField numero{this, L"Numéro"};
  ui::NumberField x{this, L"X", 0.0, L"%.15g"};
  ui::NumberField y{this, L"Y", 0.0, L"%.15g"};
  ui::NumberField z{this, L"Z", 0.0, L"%.15g"};
  ui::NumberField gisement{this, L"Gisement", 0.0, L"%.15g"};
  ui::Button cal{this, L"Cal"};

  [[nodiscard]] stationConnue valeur() const;
  void montrer(const stationConnue& station);
  /// Asks for the bearing from this station; OK puts it into the field.
  void calculerGisement(int modeAngle);
};

/// The open traverse, from a known station to a known station: rows are typed or read from a file, computed
/// with a report, and their stations placed in the current table and in the drawing.
class VELTORA_API corrPolygoOuverteDLG : public ui::Dialog {
public:
  corrPolygoOuverteDLG();

  groupeStationConnue depart{this, L"Station de départ"};
  groupeStationConnue arrivee{this, L"Station d'arrivée"};
  ui::NumberField dernierAngle{this, L"Dernier Angle:", 0.0, L"%.15g"};
  ui::ComboBox angles{this, L"Angles"};
  ui::ComboBox nivellement{this, L"Nivellement"};
  ui::Group saisie{this, L"Données"};
  ui::TextField station{&saisie, L"Station"};
  ui::NumberField angle{&saisie, L"Angle", 0.0, L"%.15g"};
  ui::NumberField distance{&saisie, L"Distance", 0.0, L"%.15g"};
  ui::NumberField altitude{&saisie, L"Altitude", 0.0, L"%.15g"};
  ui::List liste{this, {}, ui::List::Selection::Single};
  ui::Button ajouter{this, L"Ajouter", [this] { ajouterSaisie(); }};
  ui::Button enlever{this, L"Enlever !", [this] { enleverLigne(); }};
  ui::Button calculer{this, L"Calculer !", [this] { calculerRapport(); }};
  ui::Button placer{this, L"Placer !!!", [this] { placerResultats(); }};
  ui::Button sauvegarder{this, L"Sauvegarder", [this] { enregistrer(); }};
  ui::Button charger{this, L"Charger", [this] { ouvrir(); }};
  ui::Button fermer{this, L"Fermer", ui::Button::Role::Cancel};

  /// What the controls hold, and the reverse.
  [[nodiscard]] polygonaleOuverteObs donnees() const;
  void montrer(const polygonaleOuverteObs& donnees);

private:
  /// Rows enough, and numbers in the fields that are computed with; a message otherwise.
  [[nodiscard]] bool pret();
  void ajouterSaisie();
  void enleverLigne();
  void calculerRapport();
  void placerResultats();
  void enregistrer();
  void ouvrir();
};

}  // namespace veltora
