#include "jobs/lever.h"

#include "base/files.h"
#include "base/format.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "base/text.h"
#include "calc/leve/rapport_leve.h"
#include "core/code_range.h"
#include "core/point_name.h"
#include "jobs/echec.h"
#include "jobs/echelle_projection.h"
#include "jobs/ecrire_rapport.h"
#include "jobs/genre_fichier.h"
#include "jobs/placer_liste.h"
#include "points/exchange/table_obs_xyz.h"
#include "points/projets_topo.h"
#include "report/html_document.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

namespace veltora {
namespace {

constexpr double kHauteurMax = 10.0;  // metres, of an instrument

bool lireFichier(const std::filesystem::path& chemin, std::string& octets, resultatLever& resultat) {
  auto lus = base::lireFichier(chemin);
  if (!lus)
    return echec(resultat, L"« " + base::texteDuChemin(chemin) + L" » : fichier introuvable ou illisible");
  octets = *std::move(lus);
  return true;
}

bool lireCanevas(const demandeLever& demande, std::vector<pointConnuLeve>& canevas, resultatLever& resultat) {
  listeLue liste;
  resultatPoints lecture;
  const bool lue = lireListePoints({demande.canevas, {}, {}}, liste, lecture);
  resultat.remarques.ajouter(lecture.remarques);
  if (!lue) return echec(resultat, lecture.erreur);
  for (const ligneListe& ligne : liste.lignes) {
    pointConnuLeve point{std::wstring(ligne.point.nom), ligne.point.x, ligne.point.y, {}};
    if (ligne.point.z != base::Z_ABSENT) point.z = ligne.point.z;
    canevas.push_back(std::move(point));
  }
  resultat.connus = static_cast<int>(canevas.size());
  return true;
}

bool lireCarnetDuLeve(const demandeLever& demande, lectureLeve& leve, resultatLever& resultat) {
  std::string octets;
  if (!lireFichier(demande.carnet, octets, resultat)) return false;
  reglesCodesGSI regles = reglesUsuelles();
  if (!demande.regles.empty()) {
    std::string texte;
    if (!lireFichier(demande.regles, texte, resultat)) return false;
    base::Remarques remarques;
    regles = lireReglesCodes(texte, remarques);
    remarques.situer(base::texteDuChemin(demande.regles.filename()));
    resultat.remarques.ajouter(remarques);
  }
  leve = lireLeveGSI(lireCarnet(octets), std::move(regles), demande.stations);
  resultat.visees = leve.visees;
  const std::wstring nom = base::texteDuChemin(demande.carnet);
  const std::wstring refus = refusDuGenre(nom, octets, genreFichier::gsi);
  if (leve.visees > 0) {
    if (!refus.empty()) leve.remarques.douter(refus);
    return true;
  }
  if (refus.empty()) resultat.remarques.citer(leve.remarques);
  return echec(resultat,
               refus.empty() ? L"« " + nom + L" » ne contient aucune visée GSI (mot 11 et mesures)" : refus);
}

/// Takes scale and height of the projection into the factor of the distances.
bool mettreAlEchelle(const demandeLever& demande, const std::vector<pointConnuLeve>& canevas,
                     optionsLeve& options, resultatLever& resultat) {
  if (demande.projection.empty()) return true;
  const auto nombre = static_cast<double>(canevas.size());
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  int altitudes = 0;
  for (const pointConnuLeve& point : canevas) {
    x += point.x / nombre;
    y += point.y / nombre;
    z += point.z.value_or(0.0);
    altitudes += point.z ? 1 : 0;
  }
  if (altitudes > 0) z /= altitudes;
  const auto echelle = calculerEchelle(demande.projection, x, y, z, resultat.erreur);
  if (!echelle) return false;
  options.facteur *= echelle->facteur();
  resultat.corrections =
      base::formater(L" (%s : projection %.8f, altitude moyenne %.0f m %.8f)",
                     base::fromUtf8(echelle->systeme), echelle->projection, z, echelle->altitude);
  return true;
}

/// Code and observation of a point: a code that is no number is a label of the code table.
class Points {
public:
  explicit Points(const resultatCalculLeve& calcul) {
    for (const std::wstring& nom : calcul.libres) m_stations.insert(nom);
    for (const pointDuLeve& point : calcul.points) ajouter(point);
  }
  listeLue liste;

private:
  void ajouter(const pointDuLeve& point) {
    ligneListe ligne;
    ligne.point.nom = point.nom;
    ligne.point.x = point.x;
    ligne.point.y = point.y;
    ligne.point.z = point.z.value_or(base::Z_ABSENT);
    ligne.point.obs = point.observation;
    coder(point, ligne);
    liste.lignes.push_back(std::move(ligne));
  }
  void coder(const pointDuLeve& point, ligneListe& ligne) {
    double nombre = 0.0;
    if (point.code.empty()) {
      ligne.point.code = m_stations.contains(point.nom) ? kStationCode : kSmallestCode;
    } else if (base::lireReelExact(base::narrow(point.code), nombre) && nombre >= kSmallestCode &&
               nombre <= kLargestCode && nombre == static_cast<int>(nombre)) {
      ligne.point.code = static_cast<int>(nombre);
    } else {
      const auto [ou, neuf] = m_libelles.try_emplace(point.code, static_cast<int>(liste.libelles.size()));
      if (neuf) liste.libelles.push_back(point.code);
      ligne.libelle = ou->second;
    }
  }

  std::set<std::wstring> m_stations;
  std::map<std::wstring, int> m_libelles;
};

/// The file of a traverse, from 0.
std::filesystem::path fichierPolygonale(const std::filesystem::path& premier, std::size_t rang) {
  if (rang == 0) return premier;
  return premier.parent_path() /
         (premier.stem().string() + "_" + std::to_string(rang + 1) + premier.extension().string());
}

/// Names that nobody gave take no file away.
bool polygonalesLibres(const demandeLever& demande, resultatLever& resultat) {
  if (demande.polygonale.empty()) return true;
  for (std::size_t i = 1; i < resultat.polygonales.size(); ++i) {
    const std::filesystem::path chemin = fichierPolygonale(demande.polygonale, i);
    std::error_code erreur;
    if (std::filesystem::exists(chemin, erreur))
      return echec(resultat, base::formater(L"le carnet contient %d polygonales et « %s » existe déjà : "
                                            L"choisissez un autre nom, ou ôtez-le",
                                            static_cast<int>(resultat.polygonales.size()),
                                            base::texteDuChemin(chemin)));
  }
  return true;
}

bool ecrirePolygonales(const demandeLever& demande, resultatLever& resultat) {
  if (demande.polygonale.empty()) return true;
  if (resultat.polygonales.empty())
    resultat.remarques.ajouter(
        L"aucune polygonale, ni entre deux stations connues ni fermée sur l'une : pas de fichier .obs");
  for (std::size_t i = 0; i < resultat.polygonales.size(); ++i) {
    const std::filesystem::path chemin = fichierPolygonale(demande.polygonale, i);
    if (!ecrireOctets(resultat.polygonales[i].contenu, chemin, resultat.erreur)) return false;
    resultat.ecrites.push_back(chemin);
  }
  return true;
}

/// The list as other jobs read it: a name is one word there, and so is a code.
std::string texteListe(const listeLue& points) {
  tableObsXYZ liste;
  for (const ligneListe& ligne : points.lignes) {
    pointXYZ point = ligne.point;
    std::wstring nom(point.nom);
    std::replace(nom.begin(), nom.end(), L' ', L'_');
    point.nom = nom;
    if (ligne.libelle >= 0) {
      const std::wstring& libelle = points.libelles[static_cast<std::size_t>(ligne.libelle)];
      point.obs = libelle + (std::wstring(point.obs).empty() ? L"" : L" ") + std::wstring(point.obs);
    }
    liste.lignes.push_back(point);
  }
  return liste.contenu();
}

bool placerPoints(listeLue& liste, resultatLever& resultat) {
  resultatPoints placement;
  const bool place = placerListe({}, liste, placement);
  resultat.remarques.ajouter(placement.remarques);
  if (!place) return echec(resultat, placement.erreur);
  resultat.places = placement.nombre;
  return true;
}

}  // namespace

std::optional<stationNommee> lireStationNommee(std::wstring_view texte) {
  const std::size_t egal = texte.find(L'=');
  if (egal == std::wstring_view::npos) return {};
  stationNommee station;
  double ligne = 0.0;
  if (!base::lireReelExact(base::toUtf8(texte.substr(0, egal)), ligne) || ligne < 1.0 || ligne > 1e9 ||
      ligne != std::floor(ligne))
    return {};
  station.ligne = static_cast<int>(ligne);
  const std::wstring_view reste = texte.substr(egal + 1);
  const std::size_t virgule = reste.rfind(L',');
  station.nom = base::trim(reste.substr(0, virgule));
  if (station.nom.empty()) return {};
  if (virgule == std::wstring_view::npos) return station;
  double hauteur = 0.0;
  if (!base::lireReelExact(base::toUtf8(reste.substr(virgule + 1)), hauteur) || !(hauteur >= 0.0) ||
      hauteur > kHauteurMax)
    return {};
  station.hauteur = hauteur;
  return station;
}

bool lever(const demandeLever& demande, resultatLever& resultat) {
  resultat = {};
  if (!tablesPoints) return echec(resultat, kSansProjet);
  std::vector<pointConnuLeve> canevas;
  lectureLeve leve;
  if (!lireCanevas(demande, canevas, resultat) || !lireCarnetDuLeve(demande, leve, resultat)) return false;
  base::Remarques remarques = std::move(leve.remarques);
  optionsLeve options = demande.options;
  if (!mettreAlEchelle(demande, canevas, options, resultat)) return false;
  resultat.corrections = texteCorrections(options) + resultat.corrections;
  resultat.calcul = calculerLeve(leve.leve, canevas, options);
  remarques.ajouter(resultat.calcul.remarques);
  remarques.situer(base::texteDuChemin(demande.carnet.filename()));
  resultat.remarques.citer(remarques);
  resultat.calcul.remarques = resultat.remarques;
  const auto& stations = resultat.calcul.stations;
  if (std::none_of(stations.begin(), stations.end(), [](const auto& s) { return s.refus.empty(); }))
    return echec(resultat, L"aucune station n'a pu être calculée");
  resultat.polygonales = polygonalesDuLeve(resultat.calcul, canevas);
  if (!polygonalesLibres(demande, resultat)) return false;
  htmlDocument rapport;
  rapportLeve(resultat.calcul, resultat.corrections, rapport);
  if (!ecrireRapport(rapport, demande.rapport, resultat.erreur) ||
      !ecrireOctets(reseauDuLeve(resultat.calcul, canevas), demande.reseau, resultat.erreur) ||
      !ecrirePolygonales(demande, resultat))
    return false;
  Points points(resultat.calcul);
  if (demande.placer) remarquerNoms(points.liste, resultat.remarques);
  resultat.retenu = resultat.remarques.douteuses() && !demande.malgreDoutes;
  if (resultat.retenu) return true;
  if (!ecrireOctets(texteListe(points.liste), demande.points, resultat.erreur)) return false;
  return !demande.placer || placerPoints(points.liste, resultat);
}

}  // namespace veltora
