#include "drafting/dialogs/points_dlg.h"

#include "arx/db/dbmain.h"
#include "arx/ed/acedads.h"
#include "base/format.h"
#include "base/suivi.h"
#include "base/text.h"
#include "codes/table_codification.h"
#include "drafting/dialogs/params_table_dlg.h"
#include "points/dialogs/import_dessin_dlg.h"
#include "points/exchange/exporter_points.h"
#include "points/projets_topo.h"
#include "points/tri_points.h"
#include "ui/driver.h"

#include <algorithm>

namespace veltora {
namespace {

constexpr const wchar_t* kTousLesCodes = L"*** TOUS LES CODES ***";
constexpr const wchar_t* kFiltreExport =
    L"Fichier N° X Y Z (.xyz)|*.xyz|Fichier Texte N° X Y Z (.TXT)|*.txt|Document word (.doc)|*.doc|"
    L"Fichier HTML(.htm)|*.htm; *.htm";

std::vector<std::wstring> cellules(const pointDuDessin& point, int rang) {
  return {base::formater(L"%d", rang + 1), base::widen(point.nomPoint), texteCoordonnee(point.x, 4),
          texteCoordonnee(point.y, 4),     texteCoordonnee(point.z, 4), base::formater(L"%d", point.code)};
}

}  // namespace

DlgPntsDuDessin::DlgPntsDuDessin(tableCodification& codes, listePointsDuDessin& table, int mode)
    : Dialog(L"Points du dessin"), m_codes(codes), m_table(&table) {
  liste.addColumn(L"Ordre", 10.0, ui::Align::Right);
  liste.addColumn(L"Num", 18.0);
  for (const wchar_t* titre : {L"X", L"Y", L"Z"}) liste.addColumn(titre, 20.0, ui::Align::Right);
  liste.addColumn(L"Code", 12.0, ui::Align::Right);
  const bool choix = mode == kChoixPoint;
  const int boutons = choix ? 0 : mode;
  exporter.show((boutons & 1) != 0);
  tableXYZ.show((boutons & 2) != 0);
  importer.show((boutons & 4) != 0);
  placer.show((boutons & 8) != 0);
  raffraichir.show((boutons & 16) != 0);
  ok.show(choix);
  if (choix) {
    liste.setSelectionMode(ui::List::Selection::Single);
    liste.onDoubleClick = [this](int) { onOk(); };
  }
  filtre.onChange = [this] { remplirListe(); };
  liste.onColumn = [this](int colonne) { cliquerColonne(colonne); };
}

void DlgPntsDuDessin::onInit() {
  remplirFiltre();
  remplirListe();
}

void DlgPntsDuDessin::remplirFiltre() {
  const std::wstring ancien = filtre.text();
  filtre.clear();
  filtre.addItem(kTousLesCodes);
  for (const codifPoint& ligne : m_codes.codes)
    filtre.addItem(base::formater(L"%04d   %s", ligne.code, ligne.libelle), ligne.code);
  filtre.setIndex(std::max(0, filtre.find(ancien)));
}

bool DlgPntsDuDessin::filtreAccepte(int code) const {
  return filtre.index() <= 0 || filtre.data(filtre.index()) == code;
}

void DlgPntsDuDessin::remplirListe() {
  liste.clear();
  liste.reserve(m_table->nbPoint());
  for (int i = 0; i < m_table->nbPoint(); ++i) {
    const pointDuDessin& point = *m_table->getData(i);
    if (filtreAccepte(point.code)) liste.addRow(cellules(point, i), i);
  }
  if (m_colonne != 0 || m_decroissant) trier();
}

void DlgPntsDuDessin::cliquerColonne(int colonne) {
  m_decroissant = colonne == m_colonne && !m_decroissant;
  m_colonne = colonne;
  trier();
}

void DlgPntsDuDessin::trier() {
  const std::vector<int> rangs = rangsPoints(*m_table, static_cast<colonnePoints>(m_colonne));
  const auto rang = [&rangs](long long i) {
    return i >= 0 && static_cast<std::size_t>(i) < rangs.size() ? rangs[static_cast<std::size_t>(i)] : 0;
  };
  const int sens = m_decroissant ? -1 : 1;
  liste.sort([&rang, sens](long long a, long long b) { return sens * (rang(a) - rang(b)); });
}

std::vector<pointDuDessin> DlgPntsDuDessin::pointsVoulus() const {
  std::vector<pointDuDessin> points;
  const std::vector<int> choisies = liste.selection();
  const int nombre = choisies.empty() ? liste.rowCount() : static_cast<int>(choisies.size());
  points.reserve(static_cast<std::size_t>(nombre));
  for (int k = 0; k < nombre; ++k) {
    const int rangee = choisies.empty() ? k : choisies[static_cast<std::size_t>(k)];
    points.push_back(*m_table->getData(static_cast<int>(liste.data(rangee))));
  }
  return points;
}

bool DlgPntsDuDessin::tableVivante() {
  const bool vivante = tablesPoints && std::count(tablesPoints->tablesListe.begin(),
                                                  tablesPoints->tablesListe.end(), m_table) != 0;
  if (!vivante) endDialog(ui::kCancel);
  return vivante;
}

void DlgPntsDuDessin::exporterFichier() {
  base::FileRequest demande;
  demande.extension = L"XYZ";
  demande.filter = kFiltreExport;
  demande.save = true;
  const auto choix = ui::chooseFile(demande);
  if (!choix) return;
  const std::vector<pointDuDessin> points = pointsVoulus();
  std::wstring raison;
  if (!exporterPoints(points, choix->path, raison) && !raison.empty()) acutPrintf(L"\n%s", raison);
}

void DlgPntsDuDessin::dessinerTable() {
  CParamTableXYZ dialogue;
  if (dialogue.doModal() != ui::kOk) return;
  const std::vector<pointDuDessin> points = pointsVoulus();
  ads_point coin = {0.0, 0.0, 0.0};
  {
    const ui::HiddenDialog cachee(*this);
    if (acedGetPoint(nullptr, L"\nPosition de la table des coordonnées", coin) != RTNORM) return;
  }
  const paramsTableXYZ params = dialogue.params();
  if (points.empty() || params.aucuneColonne()) {
    ui::messageBox(L"pas de point choisi", L"Abandon");
    return;
  }
  if (!tableVivante()) return;
  dessinerTableXYZ(params, points, m_codes, AcGePoint3d(coin[0], coin[1], 0.0));
}

void DlgPntsDuDessin::importerDuDessin() {
  {
    const ui::HiddenDialog cachee(*this);
    importerPointsDuDessin(*m_table);
  }
  if (!tableVivante()) return;
  remplirFiltre();
  remplirListe();
}

void DlgPntsDuDessin::relireDessin() {
  m_table->updateFromDrawing();
  remplirListe();
}

void DlgPntsDuDessin::placerPoints() {
  m_codes.creerTousLayers(acdbHostApplicationServices()->workingDatabase());
  base::Suivi suivi(m_table->nbPoint());
  for (pointDuDessin& point : *m_table->getData()) {
    if (filtreAccepte(point.code)) point.updateDrawing();
    suivi.avancer();
    if (suivi.arrete()) break;
  }
}

void DlgPntsDuDessin::onOk() {
  const int rangee = liste.selectedRow();
  if (rangee < 0) {
    ui::messageBox(L"Selectionnez un seul element SVP", L"erreur");
    return;
  }
  m_choisi = static_cast<int>(liste.data(rangee));
  Dialog::onOk();
}

void montrerPointsDuDessin(int mode) {
  if (tablesPoints) DlgPntsDuDessin(getTableCodification(), *tablesPoints->currTable(), mode).doModal();
}

bool choisirPoint(AcString& nom) {
  if (!tablesPoints) return false;
  listePointsDuDessin& table = *tablesPoints->currTable();
  DlgPntsDuDessin dialogue(getTableCodification(), table, DlgPntsDuDessin::kChoixPoint);
  if (dialogue.doModal() != ui::kOk || dialogue.choisi() < 0) return false;
  nom = base::widen(table.getData(dialogue.choisi())->nomPoint);
  return true;
}

}  // namespace veltora
