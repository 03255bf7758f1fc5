#include "calc/executer_fermee.h"

#include "base/files.h"
#include "base/format.h"
#include "base/text.h"
#include "calc/obs_fermee.h"
#include "calc/placer_stations.h"
#include "report/html_document.h"

#include <cmath>
#include <cstddef>
#include <set>

namespace veltora {
namespace {

/// Longest name of a point, in bytes of the code page.
constexpr std::size_t kLongueurNomPoint = 9;
/// Ignored lines that are named one by one.
constexpr std::size_t kLignesCitees = 20;

using Remarques = std::vector<std::wstring>;

struct coordonnees {
  base::CArray<double> X, Y, Z;
};

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

void remarquerStations(const polygonaleFermeeObs& obs, const lignesPolygonale& lignes, bool placer,
                       Remarques& remarques) {
  const std::wstring derniere = lignes[lignes.size() - 1].nom;
  if (obs.nom.empty()) {
    remarques.emplace_back(L"aucune station de départ lue : le calcul part de X=0, Y=0, Z=0, gisement 0");
  } else if (base::compareNoCase(base::trim(derniere), base::trim(obs.nom)) != 0) {
    remarques.push_back(L"la dernière ligne vise « " + derniere + L" » et non la station de départ « " +
                        obs.nom + L" » : c'est le nom qu'aura le point de départ");
  }
  std::set<std::string> noms;
  for (const obsPolygonale& ligne : lignes) {
    const std::string octets = base::narrow(ligne.nom);
    const std::string court = octets.substr(0, kLongueurNomPoint);
    if (placer && court != octets) {
      remarques.push_back(base::formater(L"le nom « %s » est coupé à « %s »",
                                         static_cast<const wchar_t*>(ligne.nom), base::widen(court).c_str()));
    }
    if (placer && !noms.insert(base::toUpperAnsi(base::trim(court))).second) {
      remarques.push_back(base::formater(
          L"deux stations portent le nom « %s » : seule la dernière est placée", base::widen(court).c_str()));
    }
  }
}

bool finies(const coordonnees& c) {
  for (const base::CArray<double>* valeurs : {&c.X, &c.Y, &c.Z}) {
    for (const double valeur : *valeurs) {
      if (!std::isfinite(valeur)) return false;
    }
  }
  return true;
}

/// @return the rows after the computation
lignesPolygonale calculer(const polygonaleFermeeObs& obs, coordonnees& c, htmlDocument* rapport, bool brute,
                          bool compensee, fermeturesPolygonale& fermetures) {
  lignesPolygonale lignes = lireLignes(obs.lignes);
  calculerPolygonaleFermee(obs.nom, obs.x, obs.y, obs.z, obs.vo, obs.modeNivellement, obs.modeAngle, lignes,
                           c.X, c.Y, c.Z, rapport, brute, compensee, &fermetures);
  return lignes;
}

bool ecrireRapport(htmlDocument& rapport, const std::filesystem::path& chemin, std::wstring& erreur) {
  if (chemin.empty()) return true;
  const bool word = base::toUpperAnsi(chemin.extension().string()) == ".DOC";
  rapport.setFichier(chemin.string(), word ? htmlDocument::word : htmlDocument::simple);
  std::string raison;
  if (rapport.ecrire(&raison)) return true;
  erreur = base::fromUtf8(raison);
  return false;
}

/// Reads the file and says what was passed over. @return false with the error set
bool lire(const demandePolygonaleFermee& demande, polygonaleFermeeObs& obs,
          resultatPolygonaleFermee& resultat) {
  const std::wstring nom = base::fromUtf8(demande.fichier.string());
  const auto octets = base::lireFichier(demande.fichier);
  if (!octets) {
    resultat.erreur = L"« " + nom + L" » : fichier introuvable ou illisible";
    return false;
  }
  remarquerLignes(lireObsFermee(*octets, obs), resultat.remarques);
  resultat.modeAngle = obs.modeAngle;
  if (obs.lignes.size() >= 2) return true;
  resultat.erreur = base::formater(L"« %s » : %d ligne d'observation, il en faut au moins deux", nom.c_str(),
                                   static_cast<int>(obs.lignes.size()));
  return false;
}

bool executer(const demandePolygonaleFermee& demande, resultatPolygonaleFermee& resultat) {
  if (demande.placer && (demande.code < 1 || demande.code > 9999)) {
    resultat.erreur = base::formater(L"le code %d n'est pas compris entre 1 et 9999", demande.code);
    return false;
  }
  polygonaleFermeeObs obs;
  if (!lire(demande, obs, resultat)) return false;
  coordonnees c;
  htmlDocument rapport;
  const lignesPolygonale lignes = calculer(obs, c, &rapport, false, false, resultat.fermetures);
  remarquerStations(obs, lignes, demande.placer, resultat.remarques);
  if (!ecrireRapport(rapport, demande.rapport, resultat.erreur)) return false;
  if (!finies(c)) {
    resultat.erreur = L"coordonnées incalculables (distances nulles ?)";
    return false;
  }
  resultat.stations = stationsFermee(lignes, c.X, c.Y, c.Z);
  if (demande.dessinerBrute || demande.dessinerCompensee) {
    calculer(obs, c, nullptr, demande.dessinerBrute, demande.dessinerCompensee, resultat.fermetures);
  }
  if (demande.placer) {
    preparerCodeStations(demande.code, false);
    placerStations(resultat.stations, demande.code, demande.altitudes);
  }
  return true;
}

}  // namespace

bool executerPolygonaleFermee(const demandePolygonaleFermee& demande, resultatPolygonaleFermee& resultat) {
  resultat = {};
  const bool reussi = executer(demande, resultat);
  const std::wstring nom = base::fromUtf8(demande.fichier.filename().string());
  for (std::wstring& remarque : resultat.remarques) remarque.insert(0, nom + L", ");
  return reussi;
}

}  // namespace veltora
