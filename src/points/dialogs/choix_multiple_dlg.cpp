#include "points/dialogs/choix_multiple_dlg.h"

namespace veltora {

CMultiChoice::CMultiChoice(const std::vector<std::wstring>& textes, std::vector<std::uint16_t>& coches,
                           const std::wstring& titre, const std::wstring& invite)
    : Dialog(titre), texte(this, invite), m_textes(textes), m_coches(coches) {
  liste.addColumn(L"Modeles", 100.0);
  liste.setCheckBoxes();
}

void CMultiChoice::onInit() {
  liste.clear();
  for (std::size_t i = 0; i < m_textes.size(); ++i) {
    const int rang = liste.addRow({m_textes[i]});
    liste.setChecked(rang, i < m_coches.size() && m_coches[i] != 0);
  }
}

void CMultiChoice::cocher(bool coche) {
  for (int rang = 0; rang < liste.rowCount(); ++rang) liste.setChecked(rang, coche);
}

void CMultiChoice::retourner() {
  for (int rang = 0; rang < liste.rowCount(); ++rang) liste.setChecked(rang, !liste.checked(rang));
}

void CMultiChoice::onOk() {
  for (std::size_t i = 0; i < m_coches.size(); ++i) m_coches[i] = liste.checked(static_cast<int>(i)) ? 1 : 0;
  Dialog::onOk();
}

int choisirPlusieurs(const std::vector<std::wstring>& textes, std::vector<std::uint16_t>& coches,
                     const std::wstring& texte, const std::wstring& titre, const std::wstring& nomElement) {
  if (coches.empty()) coches.resize(textes.size());
  if (coches.size() != textes.size()) return 0;
  CMultiChoice dialogue(textes, coches, titre, texte);
  dialogue.liste.setCaption(nomElement);
  return dialogue.doModal() == ui::kOk ? 1 : 0;
}

}  // namespace veltora
