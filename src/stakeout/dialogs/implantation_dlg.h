#pragma once

#include "stakeout/projet_implantation.h"
#include "stakeout/saisir_station.h"
#include "ui/dialog.h"

namespace veltora {

/// Points to set out, their stations and obstacles, the results: the working surface of a job.
class VELTORA_API CDlgImplantationDirecte : public ui::Dialog {
public:
  /// @param projet  outlives the dialog
  explicit CDlgImplantationDirecte(projetImplantation& projet);
  void onOk() override { generer(); }
  void onCancel() override;

  ui::List liste{this};
  ui::Button numerotation{this, L"&Numérotation", [this] { numeroter(); }};
  ui::Button miseEnStation{this, L"&Mise en station", [this] { stationner(); }};
  ui::Button obstacles{this, L"&Gérer obstacles", [this] { gererObstacles(); }};
  ui::CheckBox verifier{this, L"&Vérifier visibilité", true};
  ui::NumberField hMin{this, L"H.Min", 0.0, L"%.2f"};
  ui::NumberField hStat{this, L"H.Stat", 0.0, L"%.2f"};
  ui::Group aImplanter{this, L"Points a implanter"};
  ui::Button ajouter{&aImplanter, L"&Ajouter", [this] { ajouterPoints(); }};
  ui::Button enlever{&aImplanter, L"&Enlever", [this] { enleverPoints(); }};
  ui::Button localiser{&aImplanter, L"&Localiser", [this] { localiserPoints(); }};
  ui::Group resultats{this, L"Résultats"};
  ui::CheckBox dessiner{&resultats, L"&Dessiner"};
  ui::CheckBox exporter{&resultats, L"E&xporter"};
  ui::CheckBox schematiser{&resultats, L"&Schématiser"};
  ui::Button apercu{this, L"Aperçu", [this] { montrerApercu(); }};
  ui::Button config{this, L"Config Graphiques", [this] { configurer(); }};
  ui::Button genererResultats{this, L"Générer résultats", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Annuler", ui::Button::Role::Cancel};

protected:
  void onInit() override;

private:
  void numeroter();
  void stationner();
  void gererObstacles();
  void ajouterPoints();
  void enleverPoints();
  void localiserPoints();
  void montrerApercu();
  void configurer();
  void generer();
  void remplir();
  void choisirGroupe(int rang, bool ctrl);
  /// Both write to the box "H.Min".
  void montrerHMin();
  void montrerHStat();
  /// @return the points of the selected rows, of all for none
  [[nodiscard]] selectionPoints choisis() const;

  projetImplantation& m_projet;
};

/// The command IMPLANT2.
VELTORA_API void implantationDirecte();

}  // namespace veltora
