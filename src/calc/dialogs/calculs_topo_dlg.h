#pragma once

#include "field/dialogs/calc_import_gsi_dlg.h"
#include "ui/dialog.h"

#include <string>

namespace veltora {

/// Asks for a text of several lines.
class VELTORA_API CDlgSaisieTexte : public ui::Dialog {
public:
  explicit CDlgSaisieTexte(const std::wstring& titre, const std::wstring& invite);

  ui::Label invite;
  ui::TextField texte{this, L"Texte"};
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Annuler", ui::Button::Role::Cancel};
};

/// Page of the control points: shows and edits `canevas()`. Each button acts at once.
class VELTORA_API CDlgCalcCanevas : public ui::Page {
public:
  explicit CDlgCalcCanevas(ui::Pages* pages);

  ui::TextField station{this, L"Station"};
  ui::TextField x{this, L"X"};
  ui::TextField y{this, L"Y"};
  ui::TextField z{this, L"Z"};
  ui::TextField vo{this, L"Vo"};
  ui::List liste{this};
  ui::Button ajouter{this, L"Ajouter", [this] { ajouterSaisie(); }};
  ui::Button supprimer{this, L"Supprimer", [this] { supprimerChoisis(); }};
  ui::Button importer{this, L"Importer", [this] { importerTexte(); }};

protected:
  void onInit() override;

private:
  void ajouterSaisie();
  void supprimerChoisis();
  void importerTexte();
  void rafraichir();
};

// Deliberate (pages-inertes): the pages "Observations" and "Resultats" have controls and no action behind
// them; a network is worked in the dialog of the command.
class VELTORA_API CDlgCalcObservations : public ui::Page {
public:
  explicit CDlgCalcObservations(ui::Pages* pages);

  ui::TextField station{this, L"Station"};
  ui::TextField reference{this, L"Référence"};
  ui::TextField angle{this, L"Angle Horizontal"};
  ui::TextField distance{this, L"Distance Horizontale"};
  ui::TextField dz{this, L"Dz"};
  ui::List liste{this};
  ui::Button importer{this, L"Importer"};
  ui::Button supprimer{this, L"Supprimer"};
};

class VELTORA_API CDlgCalcResults : public ui::Page {
public:
  explicit CDlgCalcResults(ui::Pages* pages) : Page(pages, L"Resultats") {}

  ui::Button exporter{this, L"Exporter"};
  ui::Button dessiner{this, L"Dessiner"};
  ui::WebView vue{this};
};

/// The sheet of pages, a second way into the network's computation and to field books. No command opens it;
/// `veltora feuille` does.
class VELTORA_API CDlgCalculsTopo : public ui::Dialog {
public:
  CDlgCalculsTopo() : Dialog(L"Calculs topométriques") {}

  ui::Pages pages{this};
  CDlgCalcCanevas canevas{&pages};
  CDlgCalcObservations observations{&pages};
  CDlgCalcResults resultats{&pages};
  DlgCalcImportGSI importGsi{&pages};
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button annuler{this, L"Annuler", ui::Button::Role::Cancel};
};

}  // namespace veltora
