#include "jobs/reseau.h"

#include "base/files.h"
#include "base/paths.h"
#include "base/text.h"
#include "calc/network/fichier_mc.h"
#include "calc/network/remarques_reseau.h"
#include "calc/network/residus_reseau.h"
#include "core/code_range.h"
#include "jobs/ecrire_rapport.h"
#include "jobs/genre_fichier.h"
#include "jobs/noms_coupes.h"
#include "jobs/placer_reseau.h"
#include "jobs/placer_stations.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace veltora {
namespace {

bool lire(const demandeReseau& demande, reseauMoindresCarres& reseau, resultatReseau& resultat) {
  const std::wstring nom = L"« " + base::texteDuChemin(demande.fichier) + L" »";
  const auto octets = base::lireFichier(demande.fichier);
  if (!octets) {
    resultat.erreur = nom + L" : fichier introuvable ou illisible";
    return false;
  }
  resultat.erreur = refusDuGenre(base::texteDuChemin(demande.fichier), *octets, genreFichier::mc);
  if (!resultat.erreur.empty()) return false;
  const bool suffisant = lireMc(*octets, reseau, &resultat.remarques);
  if (!suffisant) {
    resultat.erreur = nom + (reseau.points.empty() ? L" : aucun point" : L" : aucune observation");
    return false;
  }
  const bool nord = std::any_of(reseau.observations.begin(), reseau.observations.end(),
                                [](const auto& o) { return o.station == -1 || o.vise == -1; });
  if (nord) resultat.erreur = nom + L" : « NORD » ne peut être ni station ni point visé, seulement référence";
  return !nord;
}

void compter(const reseauMoindresCarres& reseau, resultatReseau& resultat) {
  const recensementReseau recensement = recenser(reseau);
  resultat.connus = recensement.connus;
  resultat.aCalculer = recensement.aCalculer;
  resultat.unites = recensement.unites;
  for (const ObservationReduite& o : reseau.observations) {
    if (o.type == ObservationReduite::kAngle) ++resultat.angles;
    if (o.type == ObservationReduite::kDistance) ++resultat.distances;
    if (o.type == ObservationReduite::kDenivelee) ++resultat.denivelees;
  }
}

/// Computes X and Y, then heights. @return the whole log
std::wstring calculer(reseauMoindresCarres& reseau, resultatReseau& resultat) {
  std::wstring premiere;
  std::wstring derniere;
  const bilanIteration bilan = iterer(reseau, derniere, &premiere);
  compter(reseau, resultat);
  resultat.passes = bilan.passes;
  resultat.convergence = bilan.convergence;
  remarquerObservations(reseau, resultat.remarques);
  remarquerPlan(reseau, bilan, resultat.remarques);
  std::vector<residuObservation> residus = residusPlan(reseau);
  std::wstring journal = L"Première passe" + premiere;
  journal += L"\r\n\r\nPasse " + std::to_wstring(bilan.passes) + derniere;
  if (resultat.denivelees > 0) {
    // The heights start anew from what is usable for them; X and Y are kept, and which points have them.
    std::wstring altitudes;
    reseau.calculerAlti(altitudes);
    journal += L"\r\n\r\nAltitudes" + altitudes;
    remarquerAltitudes(reseau, resultat.remarques);
    const std::vector<residuObservation> hauteurs = residusAltitudes(reseau);
    residus.insert(residus.end(), hauteurs.begin(), hauteurs.end());
  }
  resultat.residus = tableauResidus(reseau, residus);
  journal += L"\r\n\r\nRésidus";
  for (const std::wstring& ligne : tableauComplet(reseau, residus)) journal += L"\r\n" + ligne;
  return journal + L"\r\n";
}

double ouAbsent(double valeur) { return std::isfinite(valeur) ? valeur : base::Z_ABSENT; }

void rassembler(const reseauMoindresCarres& reseau, resultatReseau& resultat) {
  for (const pointACalculer& p : reseau.points) {
    pointReseau calcule{p.nom, ouAbsent(p.X), ouAbsent(p.Y), ouAbsent(p.Z)};
    if (calcule.y == base::Z_ABSENT) calcule.x = base::Z_ABSENT;
    const bool plan = !p.planiConnue && calcule.x != base::Z_ABSENT;
    const bool altitude = !p.altiConnue && calcule.z != base::Z_ABSENT;
    if (plan || altitude) resultat.calcules.push_back(calcule);
  }
}

/// Points with a height only have no place in the drawing.
void remarquerSansPlace(const reseauMoindresCarres& reseau, resultatReseau& resultat) {
  std::vector<std::wstring> noms;
  for (const pointReseau& p : resultat.calcules)
    if (p.x == base::Z_ABSENT) noms.push_back(p.nom);
  if (!noms.empty() && nivellementSeul(reseau))
    resultat.remarques.ajouter(L"sans X ni Y, ces points ne sont pas placés : " + base::enumerer(noms));
}

bool placer(const reseauMoindresCarres& reseau, resultatReseau& resultat) {
  const std::vector<stationCalculee> points = pointsSitues(reseau);
  if (std::wstring refus = refusDePlacer(points, true); !refus.empty()) {
    resultat.remarques.douter(std::move(refus));
    resultat.retenu = true;
    return true;
  }
  remarquerNoms(points, L"deux points", L"seul le dernier est placé", resultat.remarques);
  remarquerSansPlace(reseau, resultat);
  preparerCodeStations(kStationCode, false);
  resultat.erreur = texteSansBloc(placerReseau(points));
  resultat.places = static_cast<int>(points.size());
  return resultat.erreur.empty();
}

bool executer(const demandeReseau& demande, resultatReseau& resultat) {
  reseauMoindresCarres reseau;
  if (!lire(demande, reseau, resultat)) return false;
  const std::wstring journal = calculer(reseau, resultat);
  rassembler(reseau, resultat);
  if (!ecrireOctets(base::narrow(journal), demande.journal, resultat.erreur)) return false;
  if (resultat.calcules.empty()) {
    resultat.erreur = resultat.aCalculer.empty()
                          ? L"aucun point à calculer : tous ceux du fichier sont connus"
                          : L"aucun point n'a pu être calculé";
    return false;
  }
  resultat.retenu = resultat.remarques.douteuses() && !demande.malgreDoutes;
  return !demande.placer || resultat.retenu || placer(reseau, resultat);
}

}  // namespace

bool executerReseau(const demandeReseau& demande, resultatReseau& resultat) {
  resultat = {};
  const bool reussi = executer(demande, resultat);
  resultat.remarques.situer(base::texteDuChemin(demande.fichier.filename()));
  return reussi;
}

}  // namespace veltora
