#include "jobs/polygonale.h"

#include "base/files.h"
#include "base/format.h"
#include "base/paths.h"
#include "base/text.h"
#include "calc/traverse/nivellement.h"
#include "calc/traverse/polygonale_lue.h"
#include "jobs/ecrire_rapport.h"
#include "jobs/genre_fichier.h"
#include "jobs/noms_coupes.h"
#include "jobs/placer_stations.h"
#include "report/html_document.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace veltora {
namespace {

bool finies(const std::vector<stationCalculee>& stations) {
  return std::all_of(stations.begin(), stations.end(), [](const stationCalculee& s) {
    return std::isfinite(s.x) && std::isfinite(s.y) && std::isfinite(s.z);
  });
}

/// Reads the file and says what was passed over. @return null with the error set
std::unique_ptr<polygonaleLue> lire(const demandePolygonale& demande, resultatPolygonale& resultat) {
  const std::wstring nom = base::texteDuChemin(demande.fichier);
  const auto octets = base::lireFichier(demande.fichier);
  if (!octets) {
    resultat.erreur = L"« " + nom + L" » : fichier introuvable ou illisible";
    return nullptr;
  }
  resultat.erreur = refusDuGenre(nom, *octets, genreFichier::obs);
  if (!resultat.erreur.empty()) return nullptr;
  base::Remarques lues;
  std::unique_ptr<polygonaleLue> lue = lirePolygonale(*octets, lues);
  resultat.remarques.ajouterGroupees(lues);
  resultat.modeAngle = lue->donnees().modeAngle;
  resultat.ouverte = lue->ouverte();
  if (lue->donnees().lignes.size() >= 2) return lue;
  resultat.erreur = base::formater(L"« %s » : %d ligne d'observation, il en faut au moins deux", nom.c_str(),
                                   static_cast<int>(lue->donnees().lignes.size()));
  return nullptr;
}

void direLimites(const polygonaleLue& lue, const tolerancesPolygonale& tolerances,
                 resultatPolygonale& resultat) {
  const std::size_t angles = lue.donnees().lignes.size() + (lue.ouverte() ? 1 : 0);
  resultat.limiteAngulaire = limiteAngulaire(tolerances, angles, resultat.modeAngle);
  if (compenseAltitudes(lue.donnees().modeNivellement))
    resultat.limiteAltitude = limiteAltitude(resultat.fermetures.D);
}

bool executer(const demandePolygonale& demande, resultatPolygonale& resultat) {
  if (demande.placer && !isPointCode(demande.code)) {
    resultat.erreur = base::formater(L"le code %d n'est pas compris entre %d et %d", demande.code,
                                     kSmallestCode, kLargestCode);
    return false;
  }
  const std::unique_ptr<polygonaleLue> lue = lire(demande, resultat);
  if (!lue) return false;
  htmlDocument rapport;
  resultat.stations = lue->calculer(&rapport, false, false, resultat.fermetures);
  direLimites(*lue, demande.tolerances, resultat);
  if (finies(resultat.stations))
    resultat.remarques.ajouter(lue->doutes(resultat.fermetures, demande.tolerances));
  if (demande.placer) {
    remarquerNoms(resultat.stations, L"deux stations", L"seule la dernière est placée", resultat.remarques);
  }
  if (!ecrireRapport(rapport, demande.rapport, resultat.erreur)) return false;
  if (!finies(resultat.stations)) {
    resultat.stations.clear();
    resultat.erreur = L"coordonnées incalculables (distances nulles ?)";
    return false;
  }
  resultat.retenu = resultat.remarques.douteuses() && !demande.malgreDoutes;
  if (resultat.retenu) return true;
  if (demande.dessinerBrute || demande.dessinerCompensee) {
    lue->calculer(nullptr, demande.dessinerBrute, demande.dessinerCompensee, resultat.fermetures);
  }
  if (demande.placer) {
    preparerCodeStations(demande.code, false);
    resultat.erreur = texteSansBloc(placerStations(resultat.stations, demande.code, demande.altitudes));
  }
  return resultat.erreur.empty();
}

}  // namespace

bool executerPolygonale(const demandePolygonale& demande, resultatPolygonale& resultat) {
  resultat = {};
  const bool reussi = executer(demande, resultat);
  resultat.remarques.situer(base::texteDuChemin(demande.fichier.filename()));
  return reussi;
}

}  // namespace veltora
