#include "jobs/compenser.h"

#include "base/files.h"
#include "base/paths.h"
#include "base/text.h"
#include "calc/adjustment/epoques.h"
#include "calc/adjustment/lecture_gkf.h"
#include "calc/adjustment/lecture_mc.h"
#include "calc/adjustment/rapport_compense.h"
#include "calc/adjustment/textes_compenses.h"
#include "core/code_range.h"
#include "core/file_serializer.h"
#include "drafting/networks/dessin_reseau.h"
#include "jobs/ecrire_rapport.h"
#include "jobs/genre_fichier.h"
#include "jobs/placer_stations.h"
#include "jobs/rendre.h"
#include "report/html_document.h"

namespace veltora {
namespace {

std::wstring lire(const demandeCompenser& demande, const std::filesystem::path& chemin, reseauPondere& reseau,
                  base::Remarques& remarques) {
  const std::wstring nom = L"« " + base::texteDuChemin(chemin) + L" »";
  const auto octets = base::lireFichier(chemin);
  if (!octets) return nom + L" : fichier introuvable ou illisible";
  reseau.ecarts = demande.ecarts;
  if (estGkf(*octets)) {
    const std::wstring erreur = lireGkf(*octets, reseau, remarques);
    return erreur.empty() ? erreur : nom + L", " + erreur;
  }
  if (std::wstring refus = refusDuGenre(base::texteDuChemin(chemin), *octets, genreFichier::mc);
      !refus.empty())
    return refus;
  const std::wstring erreur = lireMcPondere(*octets, reseau, remarques);
  return erreur.empty() ? erreur : nom + L", " + erreur;
}

std::wstring lireFormules(const std::filesystem::path& chemin, formulesPoids& formules) {
  FileSerializer fichier(base::narrow(base::texteDuChemin(chemin)), false);
  formules.reinitialiser();
  if (fichier.estOuvert() && formules.lire(fichier)) return {};
  return L"« " + base::texteDuChemin(chemin) + L" » : formules de poids introuvables ou illisibles";
}

constexpr std::size_t kMesuresMontrees = 15;

void montrer(const reseauCompense& r, resultatCompenser& resultat) {
  resultat.bilan = lignesBilan(r);
  resultat.points = lignesPoints(r);
  resultat.mesures = lignesMesures(r, kMesuresMontrees);
  resultat.paires = lignesPaires(r, false);
}

/// Sides and ellipses, then the points with their blocks.
std::wstring dessiner(const demandeCompenser& demande, const reseauCompense& r, resultatCompenser& resultat) {
  std::vector<stationCalculee> points;
  for (const pointPondere& p : r.reseau.points)
    if (p.enPlan()) points.push_back({p.nom, p.c[0], p.c[1], p.c[2]});
  resultat.echelleEllipses = demande.echelleEllipses > 0.0 ? demande.echelleEllipses : echelleDesEllipses(r);
  if (std::wstring refus = dessinerReseau(r, resultat.echelleEllipses); !refus.empty()) return refus;
  preparerCodeStations(kStationCode, false);
  const int sansBloc = placerStations(points, kStationCode, true);
  resultat.places = static_cast<int>(points.size());
  return texteSansBloc(sansBloc);
}

std::wstring rendre(const demandeCompenser& demande, resultatCompenser& resultat) {
  demandeRendu rendu;
  rendu.fichier = base::texteDuChemin(demande.plan);
  resultatRendu fait;
  const bool bon = rendreDessin(rendu, fait);
  resultat.remarques.ajouter(fait.remarques);
  return bon ? std::wstring() : fait.erreur;
}

std::wstring ecrire(const demandeCompenser& demande, const reseauCompense& r) {
  std::wstring erreur;
  if (!demande.json.empty() && !ecrireOctets(jsonCompense(r), demande.json, erreur)) return erreur;
  if (demande.rapport.empty()) return {};
  htmlDocument rapport;
  rapportCompense(r, rapport);
  ecrireRapport(rapport, demande.rapport, erreur);
  return erreur;
}

std::wstring ajuster(const demandeCompenser& demande, const std::filesystem::path& chemin,
                     reseauCompense& r) {
  if (std::wstring erreur = lire(demande, chemin, r.reseau, r.remarques); !erreur.empty()) return erreur;
  formulesPoids formules;
  choixPonderes choix{demande.methode, demande.prevoir, nullptr, demande.paires};
  if (!demande.formules.empty()) {
    if (std::wstring erreur = lireFormules(demande.formules, formules); !erreur.empty()) return erreur;
    choix.formules = &formules;
  }
  std::wstring erreur = compenserReseau(choix, r);
  r.remarques.situer(base::texteDuChemin(chemin.filename()));
  return erreur;
}

/// The later epoch, adjusted likewise and held against the first.
std::wstring comparer(const demandeCompenser& demande, const reseauCompense& r, resultatCompenser& resultat) {
  reseauCompense seconde;
  if (std::wstring erreur = ajuster(demande, demande.epoque, seconde); !erreur.empty()) return erreur;
  resultat.remarques.ajouter(seconde.remarques);
  comparaisonEpoques comparaison;
  if (std::wstring erreur = comparerEpoques(r, seconde, comparaison); !erreur.empty()) return erreur;
  resultat.epoques = lignesEpoques(comparaison);
  std::vector<std::wstring> noms;
  for (const pointCompare& p : comparaison.points)
    if (p.bouge) noms.push_back(p.nom);
  if (!noms.empty())
    resultat.remarques.douter(L"points qui ont bougé entre les deux époques : " + base::enumerer(noms));
  return {};
}

}  // namespace

bool executerCompenser(const demandeCompenser& demande, resultatCompenser& resultat) {
  resultat = {};
  reseauCompense r;
  resultat.erreur = ajuster(demande, demande.fichier, r);
  resultat.remarques = r.remarques;
  if (resultat.erreur.empty() && !demande.epoque.empty()) resultat.erreur = comparer(demande, r, resultat);
  if (!resultat.erreur.empty()) return false;
  montrer(r, resultat);
  resultat.retenu = demande.dessiner && resultat.remarques.douteuses() && !demande.malgreDoutes;
  if (demande.dessiner && !resultat.retenu) resultat.erreur = dessiner(demande, r, resultat);
  if (resultat.erreur.empty() && !demande.plan.empty() && !resultat.retenu)
    resultat.erreur = rendre(demande, resultat);
  if (resultat.erreur.empty()) resultat.erreur = ecrire(demande, r);
  return resultat.erreur.empty();
}

}  // namespace veltora
