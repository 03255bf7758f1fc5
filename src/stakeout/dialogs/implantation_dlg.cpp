#include "stakeout/dialogs/implantation_dlg.h"

#include "arx/db/dbmain.h"
#include "arx/ed/acedads.h"
#include "base/format.h"
#include "stakeout/ajouter_points.h"
#include "stakeout/dessin_implantation.h"
#include "stakeout/dialogs/dessin_implantation_dlg.h"
#include "stakeout/dialogs/params_implantation_dlg.h"
#include "stakeout/listes_implantation.h"
#include "stakeout/saisir_obstacles.h"
#include "ui/driver.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <unordered_set>

namespace veltora {
namespace {

std::vector<std::wstring> ligneGrille(const projetImplantation& projet,
                                      const observationImplantation& point) {
  const observationMiseEnStation* const mise = projet.station(point.idStation);
  const auto texte = [](double valeur) { return coteImplantation(valeur); };
  return {point.nom,
          texte(point.x),
          texte(point.y),
          texte(point.z),
          mise ? mise->texteStation() : L"",
          mise ? mise->texteReference() : L"",
          celluleAngle(mise, point),
          mise ? texte(distanceImplantation(*mise, point)) : L"",
          point.visibiliteCalculee ? base::formater(L"%.2f", point.hauteurRequise) : L""};
}

std::optional<AcGePoint3d> placeTextes() {
  ads_point place = {0.0, 0.0, 0.0};
  if (acedGetPoint(nullptr, L"\nPosition des textes", place) != RTNORM) return std::nullopt;
  return AcGePoint3d(place[0], place[1], place[2]);
}

std::optional<std::wstring> nomRapport() {
  base::FileRequest demande;
  demande.filter = L"Fichier WORD(.doc)|*.doc|Fichier HTML(.htm)|*.htm; *.html|Tous (*.*)|*.*||";
  demande.extension = L"XYZ";
  demande.save = true;
  demande.confirmOverwrite = true;
  const auto choix = ui::chooseFile(demande);
  return choix ? std::optional(choix->path) : std::nullopt;
}

void montrerLieu(const projetImplantation& projet, const selectionPoints& choisis) {
  constexpr double kMarge = 0.5;
  const std::unordered_set<std::uint32_t> ids(choisis.begin(), choisis.end());
  AcDbExtents boite;
  for (const observationImplantation& point : projet.points)
    if (ids.contains(point.id) && point.situe()) boite.addPoint({point.x, point.y, 0.0});
  if (boite.isEmpty()) return;
  acedZoomWindow({boite.minPoint().x - kMarge, boite.minPoint().y - kMarge},
                 {boite.maxPoint().x + kMarge, boite.maxPoint().y + kMarge});
}

}  // namespace

CDlgImplantationDirecte::CDlgImplantationDirecte(projetImplantation& projet)
    : Dialog(L"Implantation"), m_projet(projet) {
  const std::pair<const wchar_t*, double> colonnes[] = {
      {L"Num", 10.0}, {L"X", 14.0},     {L"Y", 14.0},        {L"Z", 10.0},     {L"Station", 12.0},
      {L"Ref", 12.0}, {L"Angle", 11.0}, {L"Distance", 10.0}, {L"Visible", 7.0}};
  for (const auto& [titre, part] : colonnes) liste.addColumn(titre, part);
  liste.onClick = [this](int rang, bool ctrl) { choisirGroupe(rang, ctrl); };
  verifier.onChange = [this] { m_projet.verifierVisibilite = verifier.checked() ? 1 : 0; };
  hMin.onLeave = [this] {
    reglagesImplantation::commun().hauteurMin = hauteurAdmise(hMin.value());
    montrerHMin();
  };
  hStat.setText({});
  hStat.onLeave = [this] {
    if (hStat.text().empty()) return;
    m_projet.hauteurStation = hauteurAdmise(hStat.value());
    montrerHStat();
  };
}

void CDlgImplantationDirecte::onInit() {
  verifier.setChecked(m_projet.verifierVisibilite != 0);
  montrerHMin();
  montrerHStat();
  remplir();
}

// Deliberate (hmin-boite): the box "H.Min" shows both heights, whichever was written last; the box "H.Stat"
// is never refreshed.
void CDlgImplantationDirecte::montrerHMin() { hMin.setValue(reglagesImplantation::commun().hauteurMin); }

void CDlgImplantationDirecte::montrerHStat() { hMin.setValue(m_projet.hauteurStation); }

void CDlgImplantationDirecte::onCancel() {
  oublierResultats(m_projet);
  Dialog::onCancel();
}

void CDlgImplantationDirecte::remplir() {
  liste.clear();
  liste.reserve(m_projet.points.GetSize());
  for (const observationImplantation& point : m_projet.points)
    liste.addRow(ligneGrille(m_projet, point), point.id);
  numerotation.enable(m_projet.points.empty());
}

void CDlgImplantationDirecte::choisirGroupe(int rang, bool ctrl) {
  if (rang < 0 || rang >= m_projet.points.GetSize()) return;
  const std::int32_t groupe = m_projet.points.GetAt(rang).groupe;
  for (int i = 0; i < m_projet.points.GetSize(); ++i) {
    const bool sien = m_projet.points.GetAt(i).groupe == groupe;
    if (sien || !ctrl) liste.select(i, sien);
  }
}

selectionPoints CDlgImplantationDirecte::choisis() const {
  selectionPoints ids;
  for (const int rang : liste.selection()) ids.push_back(static_cast<std::uint32_t>(liste.data(rang)));
  if (ids.empty())
    for (const observationImplantation& point : m_projet.points) ids.push_back(point.id);
  return ids;
}

void CDlgImplantationDirecte::numeroter() {
  CDlgParamsImplantationAuto dialogue(m_projet.params);
  if (dialogue.doModal() == ui::kOk) dialogue.prendre(m_projet.params);
}

void CDlgImplantationDirecte::stationner() {
  const ui::HiddenDialog cache(*this);
  veltora::mettreEnStation(m_projet, choisis());
  remplir();
}

void CDlgImplantationDirecte::gererObstacles() {
  const ui::HiddenDialog cache(*this);
  saisirObstacles(m_projet);
}

void CDlgImplantationDirecte::ajouterPoints() {
  const ui::HiddenDialog cache(*this);
  saisirPoints(m_projet);
  effacerResultats(m_projet);
  remplir();
}

void CDlgImplantationDirecte::enleverPoints() {
  if (liste.selection().empty()) return;
  m_projet.retirerPoints(choisis());
  remplir();
}

void CDlgImplantationDirecte::localiserPoints() {
  if (liste.selection().empty()) return;
  const ui::HiddenDialog cache(*this);
  montrerLieu(m_projet, choisis());
  dessinerResultats(m_projet, m_projet.dessin.options());
  std::wstring mot;
  do {
    acedRedraw(nullptr, 0);
    acedInitGet(0, L"Redessiner _ Redraw");
  } while (acedGetKword(L"\nPause [Redessiner]:", mot) == RTNORM);
  effacerResultats(m_projet);
}

void CDlgImplantationDirecte::montrerApercu() {
  const ui::HiddenDialog cache(*this);
  dessinerResultats(m_projet, m_projet.dessin.options());
  std::wstring reponse;
  acedGetString(0, L"\nPause :", reponse);
  effacerResultats(m_projet);
}

void CDlgImplantationDirecte::configurer() {
  reglagesImplantation& reglages = reglagesImplantation::commun();
  CDlgPrmDessImplantationAuto dialogue(m_projet.dessin, reglages);
  if (dialogue.doModal() == ui::kOk) dialogue.prendre(m_projet.dessin, reglages);
}

void CDlgImplantationDirecte::generer() {
  if (!dessiner.checked() && !exporter.checked() && !schematiser.checked()) return;
  constexpr double kFacteurTextes = 1.5;
  // All is asked before anything is done: what is cancelled leaves the job as it is.
  std::optional<AcGePoint3d> place;
  if (schematiser.checked()) {
    const ui::HiddenDialog cache(*this);
    place = placeTextes();
    if (!place) return;
  }
  if (exporter.checked()) {
    const std::optional<std::wstring> chemin = nomRapport();
    if (!chemin) return;
    std::wstring erreur;
    const std::wstring extension = std::filesystem::path(*chemin).extension().wstring();
    if (!exporterImplantation(m_projet, *chemin, extension, erreur)) {
      ui::messageBox(L"Le rapport n'est pas écrit : " + erreur, L"Implantation");
      return;
    }
  }
  if (place) dessinerTables(m_projet, *place, reglagesImplantation::commun().hauteurTexte * kFacteurTextes);
  if (dessiner.checked()) {
    dessinerResultats(m_projet, m_projet.dessin.options());
    grouperResultats(m_projet);
  }
  oublierResultats(m_projet);
  endDialog(ui::kOk);
}

void implantationDirecte() {
  if (!acdbHostApplicationServices()->workingDatabase()) return;
  projetImplantation projet;
  CDlgImplantationDirecte(projet).doModal();
}

}  // namespace veltora
