#include "codes/dialogs/tab_codification_dlg.h"

#include "base/format.h"
#include "codes/dialogs/codification_dlg.h"
#include "ui/driver.h"

#include <vector>

namespace veltora {
namespace {

std::vector<std::wstring> cellules(const codifPoint& ligne) {
  return {base::formater(std::wstring(L"%5d"), ligne.code), ligne.libelle,
          base::formater(std::wstring(L"%d"), ligne.precisionAltitudes), ligne.chemin};
}

}  // namespace

CDlgTabCodification::CDlgTabCodification(tableCodification& table)
    : Dialog(L"Table codification"), m_table(table) {
  liste.addColumn(L"Code", 20);
  liste.addColumn(L"Libéllé", 30);  // sic
  liste.addColumn(L"PreciZ", 15, ui::Align::Right);
  liste.addColumn(L"Chemin", 35);
  nouveau.onClick = [this] { ajouterCode(); };
  supprimer.onClick = [this] { supprimerCodes(); };
  liste.onDoubleClick = [this](int rang) { modifierCode(rang); };
  liste.onColumn = [this](int colonne) { liste.sort(m_table.comparateur(colonne)); };
}

void CDlgTabCodification::onInit() {
  liste.clear();
  for (const codifPoint& ligne : m_table.codes) liste.addRow(cellules(ligne), ligne.code);
}

void CDlgTabCodification::ajouterCode() {
  DlgCodification dialogue(m_table, true);
  dialogue.remplir(codifPoint());
  dialogue.code.setText(L"-1");
  dialogue.libelle.setText(L" ???");
  dialogue.chemin.clear();
  if (dialogue.doModal() != ui::kOk) return;
  // Deliberate (nouveau-defauts): layers, size and decimals typed for a new code are not kept; the user sets
  // them by editing the row.
  codifPoint ligne;
  ligne.code = dialogue.codeSaisi();
  ligne.libelle = dialogue.libelle.text();
  ligne.chemin = dialogue.chemin;
  m_table.codes.Add(ligne);
  liste.addRow(cellules(ligne), ligne.code);
}

void CDlgTabCodification::modifierCode(int rang) {
  const int code = static_cast<int>(liste.data(rang));
  DlgCodification dialogue(m_table, false);
  dialogue.remplir(m_table.getOuCreerCode(code));
  if (dialogue.doModal() != ui::kOk) return;
  codifPoint& ligne = m_table.getOuCreerCode(code);
  dialogue.reprendre(ligne);
  const std::vector<std::wstring> textes = cellules(ligne);
  for (int colonne = 1; colonne <= 3; ++colonne)
    liste.setCell(rang, colonne, textes[static_cast<std::size_t>(colonne)]);
}

void CDlgTabCodification::supprimerCodes() {
  const std::vector<int> rangs = liste.selection();
  if (rangs.empty()) return;
  const int reponse = ui::messageBox(L"Confirmez la suppression\ndes éléments sélectionnés", L"Suppression",
                                     ui::Buttons::YesNo);
  if (reponse != ui::kYes) return;
  for (auto rang = rangs.rbegin(); rang != rangs.rend(); ++rang) {
    const int index = m_table.chercherCode(static_cast<int>(liste.data(*rang)));
    if (index >= 0) m_table.supprimerLigne(index);
    liste.removeRow(*rang);
  }
}

void installerDialoguesCodes() {
  class dialoguesCodes : public presentationCodes {
  public:
    void modifier(tableCodification& table, codifPoint& ligne) override {
      DlgCodification dialogue(table, false);
      dialogue.remplir(ligne);
      if (dialogue.doModal() == ui::kOk) dialogue.reprendre(ligne);
    }
    void afficher(tableCodification& table) override { CDlgTabCodification(table).doModal(); }
  };
  static dialoguesCodes dialogues;
  setPresentationCodes(&dialogues);
}

}  // namespace veltora
