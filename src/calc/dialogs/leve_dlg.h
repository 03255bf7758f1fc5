#pragma once

#include "jobs/lever.h"
#include "ui/dialog.h"

namespace veltora {

/// The dialog of LEVER: a field book and known points to stations and points, which are shown, reported and
/// placed.
class VELTORA_API LeveDLG : public ui::Dialog {
public:
  LeveDLG();

  ui::Group donnees{this, L"Données"};
  ui::TextField carnet{&donnees, L"Carnet"};
  ui::Button choisirCarnet{&donnees, L"...", [this] { choisir(carnet, L"Carnets GSI|*.gsi|Tous|*.*"); }};
  ui::TextField canevas{&donnees, L"Canevas"};
  ui::Button choisirCanevas{&donnees, L"...",
                            [this] { choisir(canevas, L"Coordonnées|*.xyz|Listes|*.csv|Tous|*.*"); }};
  ui::TextField nommees{&donnees, L"Stations nommées (LIGNE=NOM,H)"};
  ui::TextField regles{&donnees, L"Règles des blocs de code"};
  ui::Button choisirRegles{&donnees, L"...", [this] { choisir(regles, L"Règles|*.txt|Tous|*.*"); }};
  ui::TextField hMire{&donnees, L"Hauteur de mire où le carnet n'en dit aucune"};
  ui::TextField hAppareil{&donnees, L"Hauteur d'appareil où le carnet n'en dit aucune"};
  ui::Group corrections{this, L"Corrections"};
  ui::CheckBox refraction{&corrections, L"Courbure et réfraction"};
  ui::NumberField coefficient{&corrections, L"Coefficient", 0.13};
  ui::NumberField facteur{&corrections, L"Facteur des distances", 1.0};
  ui::TextField projection{&corrections, L"Projection (L93, CC48, EPSG:2154)"};
  ui::Button calculer{this, L"Calculer", [this] { montrer(demande()); }};
  ui::Group resultats{this, L"Résultats"};
  ui::List stations{&resultats, L"Stations", ui::List::Selection::Single};
  ui::List references{&resultats, L"Références"};
  ui::List points{&resultats, L"Points"};
  ui::TextField remarques{&resultats, L"Remarques"};
  ui::Button rapport{this, L"Rapport", [this] { montrerLeRapport(); }};
  ui::Button enregistrer{this, L"Enregistrer...", [this] { enregistrerFichier(); }};
  ui::Button placer{this, L"Placer", [this] { placerPoints(); }};
  ui::Button fermer{this, L"Fermer", ui::Button::Role::Cancel};

private:
  void choisir(ui::TextField& champ, const wchar_t* filtre);
  /// What the fields say. Nothing, with a message, when one of them says nothing that can be meant.
  std::optional<demandeLever> demande();
  /// A height that may be blank. @return false, with a message, when the field holds something else
  static bool lireHauteur(const ui::TextField& champ, std::optional<double>& hauteur);
  /// Computes and shows. @return false when there is no result, which is told
  bool montrer(const std::optional<demandeLever>& quoi);
  void montrerReferences();
  void montrerLeRapport();
  /// Computes once more with an output. @return false when there is no result, or the user leaves doubtful
  /// points alone
  bool sortir(demandeLever& quoi, const wchar_t* question);
  /// The list of points, the network or the traverses, by the ending of the chosen name.
  void enregistrerFichier();
  void placerPoints();

  resultatLever m_resultat;
};

/// The command LEVER.
void commandeLever();

}  // namespace veltora
