#include "stakeout/dialogs/implantation_auto_dlg.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dbmain.h"
#include "arx/ed/acedads.h"
#include "base/format.h"
#include "base/text.h"
#include "core/block_attributes.h"
#include "core/imprimer_doutes.h"
#include "core/picking.h"
#include "jobs/planifier_implantation.h"
#include "points/projets_topo.h"
#include "stakeout/dialogs/dessin_implantation_dlg.h"
#include "stakeout/dialogs/liste_codes.h"
#include "stakeout/dialogs/params_implantation_dlg.h"
#include "stakeout/listes_plan.h"
#include "stakeout/points_element.h"
#include "ui/driver.h"

#include <algorithm>
#include <initializer_list>
#include <optional>

namespace veltora {
namespace {

constexpr double kReferenceMin = 1.0;  // drawing units, likewise the next
constexpr double kReferenceMax = 1000.0;

enum Origine { kGroupe, kListe, kEcran };

const listePointsDuDessin& table() { return *tablesPoints->currTable(); }

std::wstring nomDe(int index) {
  return index < 0 ? L"-" : base::widen(table().getData(index)->getNomPoint());
}

std::vector<std::wstring> ligneStation(const planImplantationAuto& plan, const viseesPlan& liste) {
  double moindre = Z_ABSENT;
  double plusGrande = 0.0;
  for (const int rang : liste.points) {
    moindre = std::min(moindre, liste.distanceVers(plan, rang));
    plusGrande = std::max(plusGrande, liste.distanceVers(plan, rang));
  }
  return {nomDe(liste.station), nomDe(liste.reference), std::to_wstring(liste.points.size()),
          base::formater(L"%.2f", moindre), base::formater(L"%.2f", plusGrande)};
}

std::optional<std::wstring> nomTexte() {
  base::FileRequest demande;
  demande.filter = L"Fichier texte(.txt)|*.txt|Fichier HTML(.htm)|*.htm; *.html|Tous (*.*)|*.*||";
  demande.extension = L"txt";
  demande.save = true;
  demande.confirmOverwrite = true;
  const auto choix = ui::chooseFile(demande);
  return choix ? std::optional(choix->path) : std::nullopt;
}

}  // namespace

DlgChoixPoints::DlgChoixPoints() : Dialog(L"Choix dans la liste") {
  const std::pair<const wchar_t*, double> colonnes[] = {
      {L"Num", 30.0}, {L"X", 25.0}, {L"Y", 25.0}, {L"Code", 20.0}};
  for (const auto& [titre, part] : colonnes) liste.addColumn(titre, part);
  liste.reserve(table().nbPoint());
  for (int i = 0; i < table().nbPoint(); ++i) {
    const pointDuDessin& p = *table().getData(i);
    liste.addRow(
        {nomDe(i), base::formater(L"%.4f", p.x), base::formater(L"%.4f", p.y), std::to_wstring(p.code)}, i);
  }
}

CDlgImplantationAuto::CDlgImplantationAuto() : Dialog(L"Implantation automatique") {
  const std::pair<const wchar_t*, double> colonnes[] = {{L"Station", 25.0},
                                                        {L"Référence", 25.0},
                                                        {L"Points", 14.0},
                                                        {L"Dist. min", 18.0},
                                                        {L"Dist. max", 18.0}};
  for (const auto& [titre, part] : colonnes) liste.addColumn(titre, part);
  for (ui::NumberField* champ : {&distanceMin, &distanceMax}) champ->setRange(0.0, 1e9);
  listerCodes(groupe, 1);
  m_params.afficherCodeStations = 1;
  critere.onChange = plusLointain.onChange = [this] { planifier(); };
  origine.onChange = [this] { groupe.enable(origine.index() == kGroupe); };
}

void CDlgImplantationAuto::onInit() { planifier(); }

bool CDlgImplantationAuto::planifier() {
  if (!validateFields()) return false;
  m_plan.numerotation.initialiser(m_params.prefixe, m_params.depart, m_params.suffixe, 1);
  m_plan.preparer(m_points, m_params.codeStations, m_noms);
  m_plan.choisirReferences(
      plusLointain.checked() ? planImplantationAuto::kLointaine : planImplantationAuto::kProche,
      kReferenceMin, kReferenceMax);
  if (critere.index() == 1) m_plan.minimiserStations(distanceMin.value(), distanceMax.value());
  nombreStations.setText(base::formater(L"%d stations, code %d", static_cast<int>(m_plan.stations().size()),
                                        m_params.codeStations));
  nombrePoints.setText(base::formater(L"%d points", m_plan.nbPoints()));
  liste.clear();
  for (const viseesPlan& visees : viseesDuPlan(m_plan))
    liste.addRow(ligneStation(m_plan, visees), visees.station);
  return true;
}

void CDlgImplantationAuto::parametrer() {
  CDlgParamsImplantationAuto d(m_params);
  if (d.doModal() != ui::kOk) return;
  d.prendre(m_params);
  planifier();
}

void CDlgImplantationAuto::prendre(int index) {
  const pointDuDessin& p = *table().getData(index);
  m_points.emplace_back(p.x, p.y);
  m_noms.push_back(nomDe(index));
}

void CDlgImplantationAuto::choisirPoints() {
  if (origine.index() == kGroupe) choisirGroupe();
  if (origine.index() == kListe) choisirListe();
  if (origine.index() == kEcran) choisirEcran();
  planifier();
}

void CDlgImplantationAuto::choisirGroupe() {
  m_points.clear();
  m_noms.clear();
  for (int i = 0; i < table().nbPoint(); ++i)
    if (table().getData(i)->code == groupe.data(groupe.index())) prendre(i);
}

void CDlgImplantationAuto::choisirListe() {
  DlgChoixPoints d;
  if (d.doModal() != ui::kOk) return;
  m_points.clear();
  m_noms.clear();
  for (const int rang : d.liste.selection()) prendre(static_cast<int>(d.liste.data(rang)));
}

void CDlgImplantationAuto::choisirEcran() {
  const ui::HiddenDialog cache(*this);
  acutPrintf(L"\nSelectionnez les points a implanter");
  std::vector<AcDbObjectId> entites;
  if (selectEntities(nullptr, nullptr, entites) != RTNORM) return;
  m_points.clear();
  m_noms.clear();
  numeroteurEntier numerotation;
  numerotation.initialiser(m_params.prefixe, m_params.depart, m_params.suffixe, 1);
  for (const AcDbObjectId& id : entites) {
    const AcDbObjectPointer<AcDbEntity> entite(id);
    AcGePoint3dArray lieux;
    if (entite.openStatus() != Acad::eOk || !pointsElement(*entite, m_params, lieux)) continue;
    AcString numero;
    const auto* const bloc = AcDbBlockReference::cast(entite.object());
    if (bloc) lireAttribut(*bloc, L"NUMPT", numero);
    for (const AcGePoint3d& lieu : lieux) {
      m_points.emplace_back(lieu.x, lieu.y);
      m_noms.push_back(numero.empty() ? numerotation.suivant() : numero);
    }
  }
}

void CDlgImplantationAuto::montrerDistances() {
  if (!planifier()) return;
  base::Remarques remarques;
  controlerPlan(m_plan, distanceMin.value(), distanceMax.value(), remarques);
  imprimerDoutes(remarques);
  if (!remarques.douteuses()) acutPrintf(L"\nToutes les distances sont dans la portée voulue.");
}

void CDlgImplantationAuto::montrerApercu() {
  if (!planifier()) return;
  const ui::HiddenDialog cache(*this);
  paramsDessinImplantation passager = m_dessin;
  passager.groupement = passager.kSans;
  const std::vector<AcDbObjectId> dessinees = schematiserPlan(m_plan, passager);
  std::wstring reponse;
  acedGetString(0, L"\nPause :", reponse);
  for (const AcDbObjectId& id : dessinees)
    if (const AcDbObjectPointer<AcDbEntity> entite(id, AcDb::kForWrite); entite.openStatus() == Acad::eOk)
      entite->erase();
}

void CDlgImplantationAuto::configurer() {
  reglagesImplantation& reglages = reglagesImplantation::commun();
  CDlgPrmDessImplantationAuto d(m_dessin, reglages);
  // The picture has neither, and colours of its own.
  for (ui::Control* inutile :
       std::initializer_list<ui::Control*>{&d.numeros, &d.coordonnees, &d.croixPoint, &d.couleurs})
    inutile->show(false);
  if (d.doModal() == ui::kOk) d.prendre(m_dessin, reglages);
}

bool CDlgImplantationAuto::accepterDoutes() {
  base::Remarques remarques;
  controlerPlan(m_plan, distanceMin.value(), distanceMax.value(), remarques);
  if (!remarques.douteuses()) return true;
  std::wstring texte;
  for (const std::wstring& phrase : remarques.phrases()) texte += phrase + L"\n";
  return ui::messageBox(texte + L"Continuer ?", L"Implantation automatique", ui::Buttons::YesNo) == ui::kYes;
}

void CDlgImplantationAuto::generer() {
  if (!placer.checked() && !exporter.checked() && !schematiser.checked()) return;
  if (!planifier()) return;
  if (m_plan.nbPoints() == 0 || m_plan.stations().empty()) {
    ui::messageBox(
        m_plan.nbPoints() == 0 ? L"Aucun point à implanter." : L"Aucun point n'a le code des stations.",
        L"Implantation automatique");
    return;
  }
  if (!accepterDoutes()) return;
  // All is asked before anything is done: what is cancelled leaves the drawing as it is.
  std::optional<AcGePoint3d> coin;
  if (placer.checked()) {
    const ui::HiddenDialog cache(*this);
    ads_point lu = {0.0, 0.0, 0.0};
    if (acedGetPoint(nullptr, L"\nPosition des textes :", lu) != RTNORM) return;
    coin = AcGePoint3d(lu[0], lu[1], lu[2]);
  }
  if (exporter.checked()) {
    const std::optional<std::wstring> chemin = nomTexte();
    if (!chemin) return;
    std::wstring erreur;
    if (!ecrirePlan(m_plan, *chemin, erreur)) {
      ui::messageBox(L"Les résultats ne sont pas écrits : " + erreur, L"Implantation automatique");
      return;
    }
  }
  if (coin) dessinerTablesPlan(m_plan, *coin, reglagesImplantation::commun().hauteurTexte);
  if (schematiser.checked()) schematiserPlan(m_plan, m_dessin);
  endDialog(ui::kOk);
}

void implantationAuto() {
  if (!acdbHostApplicationServices()->workingDatabase() || !tablesPoints) return;
  CDlgImplantationAuto().doModal();
}

}  // namespace veltora
