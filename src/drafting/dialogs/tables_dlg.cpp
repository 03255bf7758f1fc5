#include "drafting/dialogs/tables_dlg.h"

#include "base/format.h"
#include "base/text.h"
#include "ui/driver.h"

namespace veltora {

CTabListePoints::CTabListePoints(projetsTopo& projet) : Dialog(L"Tables de points"), m_projet(projet) {
  liste.addColumn(L"Nom de la table", 70.0);
  liste.addColumn(L"Nb Pts", 30.0, ui::Align::Right);
}

void CTabListePoints::remplir() {
  courante.setText(m_projet.currTable()->getNomTable());
  liste.clear();
  for (const listePointsDuDessin* table : m_projet.tablesListe)
    liste.addRow({table->getNomTable(), base::formater(L"%d", table->nbPoint())});
}

void CTabListePoints::creerTable() {
  const std::wstring voulu = base::trim(nom.text());
  const std::wstring defaut = base::formater(L"Table %d", m_projet.tablesListe.GetSize() + 1);
  m_projet.creerTablePoints(voulu.empty() ? defaut.c_str() : voulu.c_str());
  remplir();
}

void CTabListePoints::fusionnerTables() {
  const std::vector<int> choisies = liste.selection();
  if (choisies.size() < 2) {
    ui::messageBox(L"Vous devez selectionner au moins\ndeux (02) tables a fusionner", L"erreur");
    return;
  }
  std::wstring nouveau = m_projet.tablesListe.GetAt(choisies[0])->getNomTable();
  for (std::size_t i = 1; i < choisies.size(); ++i)
    nouveau = base::formater(L"%s + %s", nouveau, m_projet.tablesListe.GetAt(choisies[i])->getNomTable());
  m_projet.creerTablePoints(nouveau.c_str());
  listePointsDuDessin& fusion = *m_projet.tablesListe.GetAt(m_projet.tablesListe.GetSize() - 1);
  for (const int i : choisies) fusion.fusionnerAvec(*m_projet.tablesListe.GetAt(i));
  // Deliberate (fusion-renumerote): the points share their blocks with the tables they come from, so the
  // drawing shows the new numbers while those tables keep their names.
  fusion.renumeroter(true);
  remplir();
}

void CTabListePoints::supprimerTables() {
  const std::vector<int> choisies = liste.selection();
  for (auto i = choisies.rbegin(); i != choisies.rend(); ++i) m_projet.removeTablePoints(*i);
  remplir();
}

int CTabListePoints::seuleChoisie() const {
  const std::vector<int> choisies = liste.selection();
  if (choisies.size() == 1) return choisies[0];
  ui::messageBox(L"Selectionnez un seul element SVP", L"erreur");
  return -1;
}

void CTabListePoints::renommerTable() {
  const int choisie = seuleChoisie();
  if (choisie < 0) return;
  m_projet.tablesListe.GetAt(choisie)->setNomTable(nom.text().c_str());
  remplir();
}

void CTabListePoints::rendreCourante() {
  const int choisie = seuleChoisie();
  if (choisie < 0) return;
  m_projet.tableCourante = choisie;
  remplir();
}

void gererLeves() {
  if (tablesPoints) CTabListePoints(*tablesPoints).doModal();
}

}  // namespace veltora
