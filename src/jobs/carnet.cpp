#include "jobs/carnet.h"

#include "base/csv.h"
#include "base/files.h"
#include "base/format.h"
#include "base/lines/decoded_text.h"
#include "base/paths.h"
#include "base/text.h"
#include "core/code_range.h"
#include "core/point_name.h"
#include "field/carnet_gsi.h"
#include "field/controle_gsi.h"
#include "jobs/ecrire_rapport.h"
#include "jobs/genre_fichier.h"
#include "jobs/placer_stations.h"
#include "points/exchange/table_obs_xyz.h"
#include "points/projets_topo.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

namespace veltora {
namespace {

/// Two sightings of one point that lie further apart, in metres, are not two measures of one place.
constexpr double kEcartVisees = 0.05;

std::wstring finsDe(std::string_view octets) {
  const base::DecodedText texte(octets);
  std::size_t nombres[3] = {};  // CR LF, LF, CR
  const std::string_view tout = texte.bytes();
  for (std::size_t ou = tout.find_first_of("\r\n"); ou != std::string_view::npos;
       ou = tout.find_first_of("\r\n", ou + 1)) {
    const bool deux = tout.substr(ou, 2) == "\r\n";
    ++nombres[deux ? 0 : tout[ou] == '\n' ? 1 : 2];
    if (deux) ++ou;
  }
  constexpr const wchar_t* kNoms[] = {L"CR LF", L"LF", L"CR"};
  const bool seule = std::count(std::begin(nombres), std::end(nombres), 0U) >= 2;
  std::wstring resultat;
  for (std::size_t i = 0; i < 3; ++i) {
    if (nombres[i] == 0) continue;
    resultat += (resultat.empty() ? L"" : L", ") + std::wstring(kNoms[i]);
    if (!seule) resultat += base::formater(L" (%d)", static_cast<int>(nombres[i]));
  }
  return resultat;
}

/// What the sightings of one point say of it.
struct Vu {
  std::size_t rang = 0;  ///< in the result
  double x = 0.0;
  double y = 0.0;
};

class Canevas {
public:
  explicit Canevas(resultatCarnet& resultat) : m_resultat(resultat) {}

  void rassembler() {
    for (const lectureGSI& lecture : getTableObsRayonnees().lectures)
      if (lecture.donnees.situee()) voir(lecture.donnees);
    dire();
  }

private:
  void voir(const donneesLecture& d) {
    const std::wstring nom = base::trim(base::widen(d.nom.texte()));
    if (nom.empty()) {
      ++m_sansNom;
      return;
    }
    const pointCarnet point{nom, d.x, d.y, d.present[donneesLecture::kZ] ? d.z : base::Z_ABSENT};
    const auto [ou, neuf] = m_vus.try_emplace(d.nom, Vu{m_resultat.canevas.size(), d.x, d.y});
    if (neuf) {
      m_resultat.canevas.push_back(point);
      return;
    }
    Vu& vu = ou->second;
    const bool loin = !(std::hypot(d.x - vu.x, d.y - vu.y) <= kEcartVisees);
    (loin ? m_loin : m_revus).insert(nom);
    vu.x = d.x;
    vu.y = d.y;
    m_resultat.canevas[vu.rang] = point;
  }

  static std::wstring texteDe(const std::set<std::wstring>& noms) {
    return base::formater(L"%d (%s)", static_cast<int>(noms.size()),
                          base::enumerer({noms.begin(), noms.end()}));
  }

  void dire() {
    base::Remarques& remarques = m_resultat.remarques;
    if (m_sansNom > 0)
      remarques.douter(base::formater(
          L"points connus laissés de côté, leur nom n'est fait que de zéros, de points ou de blancs : %d",
          m_sansNom));
    if (!m_loin.empty())
      remarques.douter(L"points visés plusieurs fois à plus de 5 cm d'écart, le dernier compte : " +
                       texteDe(m_loin));
    for (const std::wstring& nom : m_loin) m_revus.erase(nom);
    if (!m_revus.empty())
      remarques.ajouter(L"points visés plusieurs fois, le dernier compte : " + texteDe(m_revus));
    std::set<std::wstring> nuls;
    int sansZ = 0;
    for (const pointCarnet& p : m_resultat.canevas) {
      if (p.x == 0.0 && p.y == 0.0) nuls.insert(p.nom);
      if (p.z == base::Z_ABSENT) ++sansZ;
    }
    if (!nuls.empty()) remarques.douter(L"points connus dont X et Y valent 0 : " + texteDe(nuls));
    if (sansZ > 0) remarques.ajouter(base::formater(L"points connus sans altitude : %d", sansZ));
  }

  resultatCarnet& m_resultat;
  std::map<nomGSI, Vu> m_vus;
  std::set<std::wstring> m_loin;
  std::set<std::wstring> m_revus;
  int m_sansNom = 0;
};

/// Names that a point does not hold whole, and those that are the same then.
void remarquerNoms(const std::vector<pointCarnet>& canevas, base::Remarques& remarques) {
  std::vector<std::wstring> coupes;
  std::vector<std::wstring> doubles;
  std::set<std::string> vus;
  for (const pointCarnet& point : canevas) {
    const std::string court = pointName(point.nom);
    if (court != base::narrow(point.nom)) coupes.push_back(point.nom);
    if (!vus.insert(base::toUpperAnsi(base::trim(court))).second) doubles.push_back(point.nom);
  }
  if (!coupes.empty())
    remarques.ajouter(base::formater(L"noms coupés à %d caractères dans le dessin : %d (%s)",
                                     kPointNameLength, static_cast<int>(coupes.size()),
                                     base::enumerer(coupes)));
  if (!doubles.empty())
    remarques.douter(
        base::formater(L"points qui prennent au dessin la place d'un autre de même nom : %d (%s)",
                       static_cast<int>(doubles.size()), base::enumerer(doubles)));
}

bool lire(const demandeCarnet& demande, resultatCarnet& resultat, std::string& detail) {
  const std::wstring nom = base::texteDuChemin(demande.fichier);
  const auto octets = base::lireFichier(demande.fichier);
  if (!octets) {
    resultat.erreur = L"« " + nom + L" » : fichier introuvable ou illisible";
    return false;
  }
  const carnetGSI carnet = lireCarnet(*octets);
  for (const base::Remarque& coupe : carnet.remarques) resultat.remarques.douter(coupe.ligne, coupe.texte);
  getTableObsRayonnees().viderTable();
  analyseGSI analyse;
  controleGSI controle;
  analyseGSI::preparer(carnet, detail);
  for (std::size_t i = 0; i < carnet.nombreLignes(); ++i) {
    const bool propre = analyse.lire(carnet.ligne(i), detail, "\r\n") == 1;
    controle.voir(static_cast<int>(i) + 1, carnet.ligne(i), analyse.mots(), propre);
  }
  controle.remarquer(resultat.remarques);
  resultat.lignes = carnet.nombreLignes();
  resultat.mots = controle.mots();
  resultat.visees = controle.visees();
  resultat.finsDeLigne = finsDe(*octets);
  const std::wstring refus = refusDuGenre(nom, *octets, genreFichier::gsi);
  if (resultat.visees > 0) {
    if (!refus.empty()) resultat.remarques.douter(refus);
    return true;
  }
  resultat.erreur = refus.empty()
                        ? L"« " + nom + L" » ne contient aucune visée GSI (ligne qui commence par le mot 11)"
                        : refus;
  return false;
}

void remarquerDoubles(resultatCarnet& resultat) {
  const std::size_t doubles = getTableObsRayonnees().lectures.size() - resultat.visees;
  if (doubles > 0)
    resultat.remarques.ajouter(base::formater(L"visées sans X ou sans Y, deux fois dans les lectures : %d",
                                              static_cast<int>(doubles)));
}

/// The list as other jobs read it: a name is one word there.
std::string texteCanevas(resultatCarnet& resultat) {
  tableObsXYZ liste;
  int changes = 0;
  for (const pointCarnet& p : resultat.canevas) {
    pointXYZ ligne;
    ligne.nom = p.nom;
    const auto blanc = [](wchar_t c) { return c == L' ' || c == L'\t'; };
    std::replace_if(ligne.nom.begin(), ligne.nom.end(), blanc, L'_');
    if (ligne.nom != p.nom) ++changes;
    ligne.x = p.x;
    ligne.y = p.y;
    ligne.z = p.z;
    ligne.code = kStationCode;
    liste.lignes.push_back(ligne);
  }
  if (changes > 0)
    resultat.remarques.ajouter(
        base::formater(L"noms dont les blancs sont des « _ » dans la liste du canevas : %d", changes));
  return liste.contenu();
}

/// The columns of the grid "Lectures", then what a sighting holds besides.
std::string texteLectures() {
  struct Colonne {
    const char* titre;
    double donneesLecture::*valeur;
    donneesLecture::Mesure mesure;
  };
  using D = donneesLecture;
  constexpr Colonne kColonnes[] = {{"Coord X", &D::x, D::kX},
                                   {"Coord Y", &D::y, D::kY},
                                   {"Coord Z", &D::z, D::kZ},
                                   {"Angle Horiz", &D::ah, D::kAh},
                                   {"Angle Vertic", &D::av, D::kAv},
                                   {"Dist Incl", &D::di, D::kDi},
                                   {"Dist Horiz", &D::dh, D::kDh},
                                   {"Denivelee", &D::dz, D::kDz},
                                   {"Station X", &D::xStat, D::kXStat},
                                   {"Station Y", &D::yStat, D::kYStat},
                                   {"Station Z", &D::zStat, D::kZStat},
                                   {"Hauteur mire", &D::hMire, D::kHMire},
                                   {"Hauteur appareil", &D::hAppareil, D::kHAppareil}};
  std::string texte = "Id;NUM";
  for (const Colonne& colonne : kColonnes) texte += std::string(";") + colonne.titre;
  texte += "\r\n";
  int rang = 0;
  for (const lectureGSI& lecture : getTableObsRayonnees().lectures) {
    texte +=
        std::to_string(rang++) + ";" + base::champCsv(std::string(base::trim(lecture.donnees.nom.texte())));
    for (const Colonne& c : kColonnes) {
      texte += ';';
      if (lecture.donnees.present[c.mesure]) texte += base::formater("%.5f", lecture.donnees.*c.valeur);
    }
    texte += "\r\n";
  }
  return texte;
}

bool ecrire(const demandeCarnet& demande, const std::string& detail, resultatCarnet& resultat) {
  std::wstring& erreur = resultat.erreur;
  return (demande.canevas.empty() || ecrireOctets(texteCanevas(resultat), demande.canevas, erreur)) &&
         (demande.lectures.empty() || ecrireOctets(texteLectures(), demande.lectures, erreur)) &&
         ecrireOctets(detail, demande.detail, erreur);
}

bool placer(const demandeCarnet& demande, resultatCarnet& resultat) {
  std::vector<stationCalculee> points;
  for (const pointCarnet& p : resultat.canevas) points.push_back({p.nom, p.x, p.y, p.z});
  if (std::wstring refus = refusDePlacer(points, true); !refus.empty()) {
    resultat.remarques.douter(std::move(refus));
    resultat.retenu = true;
    return true;
  }
  remarquerNoms(resultat.canevas, resultat.remarques);
  resultat.retenu = resultat.remarques.douteuses() && !demande.malgreDoutes;
  if (resultat.retenu) return true;
  preparerCodeStations(kStationCode, false);
  const int avant = tablesPoints ? tablesPoints->currTable()->nbPoint() : 0;
  resultat.erreur = texteSansBloc(placerStations(points, kStationCode, true));
  resultat.places = static_cast<int>(points.size());
  const int remplaces = avant + resultat.places - (tablesPoints ? tablesPoints->currTable()->nbPoint() : 0);
  if (remplaces > 0)
    resultat.remarques.ajouter(base::formater(L"points du même nom remplacés : %d", remplaces));
  return resultat.erreur.empty();
}

bool executer(const demandeCarnet& demande, resultatCarnet& resultat) {
  std::string detail;
  if (!lire(demande, resultat, detail)) return false;
  Canevas(resultat).rassembler();
  remarquerDoubles(resultat);
  if (!ecrire(demande, detail, resultat)) return false;
  if (!demande.placer) return true;
  if (!resultat.canevas.empty()) return placer(demande, resultat);
  resultat.erreur = L"aucune visée ne donne X et Y, il n'y a rien à placer";
  return false;
}

}  // namespace

bool lireCarnetUnAppel(const demandeCarnet& demande, resultatCarnet& resultat) {
  resultat = {};
  const bool reussi = executer(demande, resultat);
  resultat.remarques.situer(base::texteDuChemin(demande.fichier.filename()));
  return reussi;
}

}  // namespace veltora
