#include "jobs/polygonale.h"

#include "base/files.h"
#include "base/format.h"
#include "base/text.h"
#include "calc/traverse/polygonale_lue.h"
#include "jobs/ecrire_rapport.h"
#include "jobs/noms_coupes.h"
#include "jobs/placer_stations.h"
#include "report/html_document.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>

namespace veltora {
namespace {

/// Ignored lines that are named one by one.
constexpr std::size_t kLignesCitees = 20;

using Remarques = std::vector<std::wstring>;

void remarquerLignes(const std::vector<remarqueObs>& lues, Remarques& remarques) {
  std::wstring ignorees;
  std::size_t nombre = 0;
  for (const remarqueObs& remarque : lues) {
    if (remarque.genre != remarqueObs::Genre::ligneIgnoree) {
      remarques.push_back(texteRemarque(remarque));
      continue;
    }
    ++nombre;
    if (nombre <= kLignesCitees) ignorees += (nombre > 1 ? L", " : L"") + std::to_wstring(remarque.ligne);
    if (nombre == kLignesCitees + 1) ignorees += L"…";
  }
  if (nombre == 1) remarques.push_back(L"1 ligne ignorée : " + ignorees);
  if (nombre > 1) remarques.push_back(std::to_wstring(nombre) + L" lignes ignorées : " + ignorees);
}

bool finies(const std::vector<stationCalculee>& stations) {
  return std::all_of(stations.begin(), stations.end(), [](const stationCalculee& s) {
    return std::isfinite(s.x) && std::isfinite(s.y) && std::isfinite(s.z);
  });
}

/// Reads the file and says what was passed over. @return null with the error set
std::unique_ptr<polygonaleLue> lire(const demandePolygonale& demande, resultatPolygonale& resultat) {
  const std::wstring nom = base::fromUtf8(demande.fichier.string());
  const auto octets = base::lireFichier(demande.fichier);
  if (!octets) {
    resultat.erreur = L"« " + nom + L" » : fichier introuvable ou illisible";
    return nullptr;
  }
  std::vector<remarqueObs> remarques;
  std::unique_ptr<polygonaleLue> lue = lirePolygonale(*octets, remarques);
  remarquerLignes(remarques, resultat.remarques);
  resultat.modeAngle = lue->donnees().modeAngle;
  resultat.ouverte = lue->ouverte();
  if (lue->donnees().lignes.size() >= 2) return lue;
  resultat.erreur = base::formater(L"« %s » : %d ligne d'observation, il en faut au moins deux", nom.c_str(),
                                   static_cast<int>(lue->donnees().lignes.size()));
  return nullptr;
}

bool executer(const demandePolygonale& demande, resultatPolygonale& resultat) {
  if (demande.placer && (demande.code < 1 || demande.code > 9999)) {
    resultat.erreur = base::formater(L"le code %d n'est pas compris entre 1 et 9999", demande.code);
    return false;
  }
  const std::unique_ptr<polygonaleLue> lue = lire(demande, resultat);
  if (!lue) return false;
  htmlDocument rapport;
  resultat.stations = lue->calculer(&rapport, false, false, resultat.fermetures);
  for (std::wstring& phrase : lue->doutes(resultat.fermetures))
    resultat.remarques.push_back(std::move(phrase));
  if (demande.placer) {
    remarquerNoms(resultat.stations, L"deux stations", L"seule la dernière est placée", resultat.remarques);
  }
  if (!ecrireRapport(rapport, demande.rapport, resultat.erreur)) return false;
  if (!finies(resultat.stations)) {
    resultat.stations.clear();
    resultat.erreur = L"coordonnées incalculables (distances nulles ?)";
    return false;
  }
  if (demande.dessinerBrute || demande.dessinerCompensee) {
    lue->calculer(nullptr, demande.dessinerBrute, demande.dessinerCompensee, resultat.fermetures);
  }
  if (demande.placer) {
    preparerCodeStations(demande.code, false);
    placerStations(resultat.stations, demande.code, demande.altitudes);
  }
  return true;
}

}  // namespace

bool executerPolygonale(const demandePolygonale& demande, resultatPolygonale& resultat) {
  resultat = {};
  const bool reussi = executer(demande, resultat);
  const std::wstring nom = base::fromUtf8(demande.fichier.filename().string());
  for (std::wstring& remarque : resultat.remarques) remarque.insert(0, nom + L", ");
  return reussi;
}

}  // namespace veltora
