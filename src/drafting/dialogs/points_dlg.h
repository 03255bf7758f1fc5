#pragma once

#include "points/liste_points_du_dessin.h"
#include "ui/dialog.h"

#include <vector>

namespace veltora {

class tableCodification;

/// The points of a table: sorted by a click on a column, filtered by a code, exported, imported, placed,
/// drawn as a coordinate table; or, as a picker, one of them chosen.
class VELTORA_API DlgPntsDuDessin : public ui::Dialog {
public:
  /// Sums of the buttons shown (1 "Exporter", 2 "Table XYZ", 4 "Importer", 8 "Placer", 16
  /// "Raffraichir"), and the picker.
  enum Mode { kImportPoints = 12, kMajPoints = 16, kExportPoints = 17, kTableXYZ = 18, kChoixPoint = 100 };

  /// Both live longer than the dialog, unless the user removes the table behind it: then it closes.
  DlgPntsDuDessin(tableCodification& codes, listePointsDuDessin& table, int mode);

  /// Index in the table of the point that the picker's user chose; -1 for none.
  [[nodiscard]] int choisi() const { return m_choisi; }

  ui::ComboBox filtre{this, L"Filtre"};
  ui::List liste{this};
  ui::Button exporter{this, L"E&xporter", [this] { exporterFichier(); }};
  ui::Button tableXYZ{this, L"&Table XYZ", [this] { dessinerTable(); }};
  ui::Button importer{this, L"&Importer", [this] { importerDuDessin(); }};
  ui::Button raffraichir{this, L"&Raffraichir", [this] { relireDessin(); }};  // sic
  ui::Button placer{this, L"Placer", [this] { placerPoints(); }};
  ui::Button ok{this, L"OK", ui::Button::Role::Ok};
  ui::Button fermer{this, L"&Fermer", ui::Button::Role::Cancel};

  void onOk() override;

protected:
  void onInit() override;

private:
  void remplirFiltre();
  void remplirListe();
  void trier();
  void cliquerColonne(int colonne);
  void exporterFichier();
  void dessinerTable();
  void importerDuDessin();
  void relireDessin();
  void placerPoints();
  [[nodiscard]] bool filtreAccepte(int code) const;
  /// The selected rows, else all, in list order.
  [[nodiscard]] std::vector<pointDuDessin> pointsVoulus() const;
  /// Closes the dialog when its table is gone, removed during a prompt.
  [[nodiscard]] bool tableVivante();

  tableCodification& m_codes;
  listePointsDuDessin* m_table;
  int m_colonne = 0;
  bool m_decroissant = false;
  int m_choisi = -1;
};

/// Shows the dialog on the code table and the current table; nothing without a project.
VELTORA_API void montrerPointsDuDessin(int mode);
/// The picker on the current table. @return false when the user cancels, or without a project
VELTORA_API bool choisirPoint(AcString& nom);

}  // namespace veltora
