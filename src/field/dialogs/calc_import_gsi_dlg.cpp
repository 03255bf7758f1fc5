#include "field/dialogs/calc_import_gsi_dlg.h"

#include "base/files.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "base/text.h"
#include "ui/driver.h"

#include <numeric>
#include <vector>

namespace veltora {
namespace {

constexpr const wchar_t* kFiltreGsi = L"Leica GSI|*.gsi|Sans extension|*.|Tous|*.*|Text|*.TXT||";

std::wstring nombre(double valeur, bool connu, int decimales) {
  std::string texte;
  if (connu) base::ajouterFixe(texte, valeur, decimales);
  return base::widen(texte);
}

void ajouterCellules(const std::vector<std::wstring>& cellules, std::wstring& texte) {
  for (std::size_t i = 0; i < cellules.size(); ++i) texte += (i > 0 ? L"\t" : L"") + cellules[i];
  texte += L"\r\n";
}

}  // namespace

bool choisirCarnet(std::wstring& chemin, carnetGSI& carnet) {
  base::FileRequest demande;
  demande.extension = L"*.TXT";
  demande.filter = kFiltreGsi;
  const auto reponse = ui::chooseFile(demande);
  if (!reponse) return false;
  chemin = reponse->path;
  const auto octets = base::lireFichier(base::cheminDuTexte(chemin));
  carnet = octets ? lireCarnet(*octets) : carnetGSI();
  return true;
}

DlgCalcImportGSI::DlgCalcImportGSI(ui::Pages* pages) : Page(pages, L"Import GSI") {
  parcourir.beside(fichier);
  copierCanevas.beside(canevas);
  copierLectures.beside(lectures);
  format.setMultiline();
  format.setReadOnly();
  for (const wchar_t* titre : {L"NUM", L"Coord X", L"Coord Y", L"Coord Z"}) canevas.addColumn(titre, 25.0);
  for (const wchar_t* titre :
       {L"Id", L"NUM", L"Coord X", L"Coord Y", L"Coord Z", L"Angle Horiz", L"Angle Vertic", L"Dist Incl"})
    lectures.addColumn(titre, 12.5);
}

void DlgCalcImportGSI::choisirFichier() {
  std::wstring chemin;
  if (!choisirCarnet(chemin, m_carnet)) return;
  fichier.setText(chemin);
  m_brut = m_carnet.brut();
  format.setText(m_brut);
}

void DlgCalcImportGSI::analyser() {
  getTableObsRayonnees().viderTable();
  std::string detail;
  analyseGSI lecteur;
  analyseGSI::preparer(m_carnet, detail);
  for (std::size_t i = 0; i < m_carnet.nombreLignes(); ++i) lecteur.lire(m_carnet.ligne(i), detail, "\r\n");
  m_detail = base::widen(detail);
  montrerCanevas();
  montrerLectures();
}

void DlgCalcImportGSI::montrerCanevas() {
  constexpr int kDecimales = 4;
  canevas.clear();
  tableObsRayonnees& table = getTableObsRayonnees();
  std::vector<nomGSI> noms;
  table.nomsCanevasListe(noms);
  donneesLecture d;
  for (const nomGSI& nom : noms) {
    if (table.lirePointCanevas(nom, d))
      canevas.addRow({base::widen(nom.texte()), nombre(d.x, true, kDecimales), nombre(d.y, true, kDecimales),
                      nombre(d.z, d.present[donneesLecture::kZ], kDecimales)});
  }
}

void DlgCalcImportGSI::montrerLectures() {
  constexpr int kDecimales = 5;
  lectures.clear();
  for (const lectureGSI& lecture : getTableObsRayonnees().lectures) {
    const donneesLecture& d = lecture.donnees;
    const auto cellule = [&d](double valeur, donneesLecture::Mesure mesure) {
      return nombre(valeur, d.present[mesure], kDecimales);
    };
    lectures.addRow({std::to_wstring(lectures.rowCount()), base::widen(d.nom.texte()),
                     cellule(d.x, donneesLecture::kX), cellule(d.y, donneesLecture::kY),
                     cellule(d.z, donneesLecture::kZ), cellule(d.ah, donneesLecture::kAh),
                     cellule(d.av, donneesLecture::kAv), cellule(d.di, donneesLecture::kDi)});
  }
}

void DlgCalcImportGSI::copier(const ui::List& grille) {
  std::wstring texte;
  std::vector<std::wstring> cellules;
  for (const ui::List::Column& colonne : grille.columns()) cellules.push_back(colonne.caption);
  ajouterCellules(cellules, texte);
  std::vector<int> rangs = grille.selection();
  if (rangs.empty()) {
    rangs.resize(static_cast<std::size_t>(grille.rowCount()));
    std::iota(rangs.begin(), rangs.end(), 0);
  }
  for (const int rang : rangs) {
    for (std::size_t i = 0; i < cellules.size(); ++i) cellules[i] = grille.cell(rang, static_cast<int>(i));
    ajouterCellules(cellules, texte);
  }
  ui::copyToClipboard(texte);
  ui::messageBox(L"Données copiées dans le presse papier", L"Copie vers presse papier");
}

}  // namespace veltora
