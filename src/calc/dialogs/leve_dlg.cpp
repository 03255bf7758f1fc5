#include "calc/dialogs/leve_dlg.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "base/text.h"
#include "calc/dialogs/choisir_sortie.h"
#include "calc/dialogs/resultats_dlg.h"
#include "calc/leve/rapport_leve.h"
#include "report/html_document.h"
#include "ui/driver.h"

#include <algorithm>
#include <cmath>

namespace veltora {
namespace {

constexpr double kHauteurMax = 100.0;  // metres

}  // namespace

LeveDLG::LeveDLG() : Dialog(L"Levé : du carnet aux coordonnées") {
  choisirCarnet.beside(carnet);
  choisirCanevas.beside(canevas);
  choisirRegles.beside(regles);
  coefficient.setRange(-1.0, 1.0);
  coefficient.disable();
  facteur.setRange(0.9, 1.1);
  refraction.onChange = [this] { coefficient.enable(refraction.checked()); };
  stations.addColumn(L"Station", 16.0);
  stations.addColumn(L"Origine", 14.0);
  for (const wchar_t* titre : {L"X", L"Y", L"Z", L"V0 (gr)", L"emq (mgr)"})
    stations.addColumn(titre, 14.0, ui::Align::Right);
  references.addColumn(L"Référence", 25.0);
  for (const wchar_t* titre : {L"Distance", L"dH (mgr)", L"Latéral (mm)", L"dD (mm)", L"dZ (mm)"})
    references.addColumn(titre, 15.0, ui::Align::Right);
  points.addColumn(L"Point", 16.0);
  for (const wchar_t* titre : {L"X", L"Y", L"Z", L"Visé de", L"Ecart (mm)"})
    points.addColumn(titre, 14.0, ui::Align::Right);
  points.addColumn(L"Code", 14.0);
  stations.onChange = [this] { montrerReferences(); };
  remarques.setMultiline();
  remarques.setReadOnly();
  rapport.disable();
  enregistrer.disable();
  placer.disable();
}

void LeveDLG::choisir(ui::TextField& champ, const wchar_t* filtre) {
  base::FileRequest demande;
  demande.filter = filtre;
  if (const auto reponse = ui::chooseFile(demande)) champ.setText(reponse->path);
}

std::optional<demandeLever> LeveDLG::demande() {
  if (!validateFields()) return {};
  for (const ui::TextField* champ : {&carnet, &canevas}) {
    if (!base::trim(champ->text()).empty()) continue;
    ui::messageBox(L"Choisissez un carnet GSI et un canevas.", L"Erreur de données");
    return {};
  }
  demandeLever quoi;
  quoi.carnet = base::cheminDuTexte(carnet.text());
  quoi.canevas = base::cheminDuTexte(canevas.text());
  quoi.options.facteur = facteur.value();
  if (refraction.checked()) quoi.options.refraction = coefficient.value();
  quoi.regles = base::cheminDuTexte(regles.text());
  if (!lireHauteur(hMire, quoi.options.hMire) || !lireHauteur(hAppareil, quoi.options.hAppareil)) return {};
  quoi.projection = base::toUtf8(base::trim(projection.text()));
  std::wstring reste = nommees.text();
  while (!base::trim(reste).empty()) {
    const std::size_t fin = std::min(reste.find(L';'), reste.size());
    const std::wstring une = base::trim(reste.substr(0, fin));
    reste.erase(0, fin + 1);
    if (une.empty()) continue;
    const auto station = lireStationNommee(une);
    if (!station) {
      ui::messageBox(L"« " + une + L" » : une station se donne par LIGNE=NOM ou LIGNE=NOM,HAUTEUR.",
                     L"Erreur de données");
      return {};
    }
    quoi.stations.push_back(*station);
  }
  return quoi;
}

bool LeveDLG::lireHauteur(const ui::TextField& champ, std::optional<double>& hauteur) {
  const std::wstring texte = base::trim(champ.text());
  if (texte.empty()) return true;
  double lue = 0.0;
  if (base::lireReelExact(base::toUtf8(texte), lue) && std::fabs(lue) <= kHauteurMax) {
    hauteur = lue;
    return true;
  }
  ui::messageBox(L"« " + texte + L" » n'est pas une hauteur en mètres.", L"Erreur de données");
  return false;
}

bool LeveDLG::montrer(const std::optional<demandeLever>& quoi) {
  if (!quoi) return false;
  const bool calcule = lever(*quoi, m_resultat);
  for (ui::List* liste : {&stations, &references, &points}) liste->clear();
  std::wstring texte;
  for (const std::wstring& phrase : m_resultat.remarques.phrases()) texte += phrase + L"\n";
  remarques.setText(texte);
  rapport.enable(calcule);
  enregistrer.enable(calcule);
  placer.enable(calcule);
  if (!calcule) {
    ui::messageBox(L"Pas de calcul : " + m_resultat.erreur + L".", L"Erreur de données");
    return false;
  }
  for (const stationDuLeve& s : m_resultat.calcul.stations) {
    if (!s.refus.empty()) {
      stations.addRow({s.nom, L"pas calculée"});
      continue;
    }
    stations.addRow({s.nom, nomOrigine(s.origine), base::formater(L"%.3f", s.place.x),
                     base::formater(L"%.3f", s.place.y), texteMesure(s.place.z, L"%.3f"),
                     base::formater(L"%.5f", s.place.g0), texteMesure(s.place.emq, L"%.2f", 1000.0)});
  }
  for (const pointDuLeve& p : m_resultat.calcul.points)
    points.addRow({p.nom, base::formater(L"%.3f", p.x), base::formater(L"%.3f", p.y),
                   texteMesure(p.z, L"%.3f"), base::formater(L"%d", static_cast<int>(p.stations.size())),
                   p.ecart > 0.0 ? base::formater(L"%.1f", p.ecart * 1000.0) : std::wstring(L"-"), p.code});
  return true;
}

void LeveDLG::montrerReferences() {
  references.clear();
  const int rang = stations.selectedRow();
  if (rang < 0) return;
  for (const referenceLeve& r : m_resultat.calcul.stations[static_cast<std::size_t>(rang)].place.references)
    references.addRow({r.mesure.nom + (r.fausse ? L" (à vérifier)" : L""),
                       base::formater(L"%.3f", r.distance), texteMesure(r.ecartH, L"%.2f", 1000.0),
                       texteMesure(r.lateral, L"%.1f", 1000.0), texteMesure(r.ecartD, L"%.1f", 1000.0),
                       texteMesure(r.ecartZ, L"%.1f", 1000.0)});
}

void LeveDLG::montrerLeRapport() {
  if (!montrer(demande())) return;
  htmlDocument document;
  rapportLeve(m_resultat.calcul, m_resultat.corrections, document);
  montrerRapport(document);
}

bool LeveDLG::sortir(demandeLever& quoi, const wchar_t* question) {
  if (!montrer(quoi)) return false;
  if (!m_resultat.retenu) return true;
  if (ui::messageBox(std::wstring(L"Des résultats sont à vérifier (voir Remarques). ") + question, L"Levé",
                     ui::Buttons::YesNo) != ui::kYes)
    return false;
  quoi.malgreDoutes = true;
  return montrer(quoi);
}

void LeveDLG::enregistrerFichier() {
  std::optional<demandeLever> quoi = demande();
  if (!quoi) return;
  const auto nom = choisirSortie(L"Points (.xyz)|*.xyz|Réseau (.mc)|*.mc|Polygonales (.obs)|*.obs", L"xyz",
                                 {quoi->carnet, quoi->canevas, quoi->regles});
  if (!nom) return;
  const std::filesystem::path fichier = base::cheminDuTexte(*nom);
  const std::wstring suffixe = base::terminaison(fichier);
  const bool liste = suffixe != L"mc" && suffixe != L"obs";
  (liste ? quoi->points : suffixe == L"mc" ? quoi->reseau : quoi->polygonale) = fichier;
  if (!(liste ? sortir(*quoi, L"Enregistrer les points malgré tout ?") : montrer(quoi))) return;
  if (suffixe == L"obs" && m_resultat.ecrites.empty())
    ui::messageBox(L"Le carnet ne contient aucune polygonale.", L"Levé");
  else
    ui::messageBox(L"Fichier enregistré : " + *nom, L"Levé");
}

void LeveDLG::placerPoints() {
  std::optional<demandeLever> quoi = demande();
  if (!quoi) return;
  quoi->placer = true;
  if (sortir(*quoi, L"Placer les points malgré tout ?"))
    ui::messageBox(base::formater(L"Points placés : %d", m_resultat.places), L"Levé");
}

void commandeLever() { LeveDLG().doModal(); }

}  // namespace veltora
