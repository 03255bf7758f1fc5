#pragma once

#include "field/carnet_gsi.h"
#include "ui/dialog.h"

#include <string>

namespace veltora {

/// Page of the sheet "Calculs topométriques": shows a field book, what it decodes to, and the table's points
/// and sightings.
class VELTORA_API DlgCalcImportGSI : public ui::Page {
public:
  explicit DlgCalcImportGSI(ui::Pages* pages);

  ui::TextField fichier{this, L"Fichier de données"};
  ui::Button parcourir{this, L"...", [this] { choisirFichier(); }};
  ui::TextField format{this, L"Format"};
  ui::List canevas{this, L"Canevas"};
  ui::Button copierCanevas{this, L"Copier", [this] { copier(canevas); }};
  ui::List lectures{this, L"Lectures"};
  ui::Button copierLectures{this, L"Copier", [this] { copier(lectures); }};
  ui::Button analyse{this, L"Analyse", [this] { analyser(); }};
  // Deliberate (gsi-boutons-inertes): both buttons are there without effect.
  ui::Button config{this, L"Config"};
  ui::Button transferer{this, L"Transferer pour calculs"};  // sic
  ui::Button brutes{this, L"Données brutes", [this] { format.setText(m_brut); }};
  ui::Button detailDonnees{this, L"Detail des données", [this] { format.setText(m_detail); }};  // sic

private:
  void choisirFichier();
  void analyser();
  void montrerCanevas();
  void montrerLectures();
  static void copier(const ui::List& grille);

  carnetGSI m_carnet;
  std::wstring m_brut;
  std::wstring m_detail;
};

/// Asks for a field book and reads its lines; a file that cannot be read gives none.
/// @return false, both unchanged, when the user chooses no file
bool choisirCarnet(std::wstring& chemin, carnetGSI& carnet);

}  // namespace veltora
