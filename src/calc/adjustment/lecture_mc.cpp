#include "calc/adjustment/lecture_mc.h"

#include "base/format.h"
#include "base/lines/line_reader.h"
#include "base/text.h"
#include "calc/angles.h"
#include "calc/network/fichier_mc.h"
#include "calc/obs_jetons.h"
#include "core/nombre_suspect.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

namespace veltora {
namespace {

constexpr std::size_t kMotsConnus = 3;  // a name and two coordinates, or three names
constexpr double kEcartInfime = 0.005;  // mgr: nor that well
constexpr std::size_t kPremiereMesure = 3;
constexpr std::size_t kDerniereMesure = 5;

/// What stands behind the told words of one line.
struct suffixesMc {
  std::vector<double> ecarts;
  double longueur = base::Z_ABSENT;
  std::wstring tour;
  bool approche = false;
  bool libre = false;
  std::array<bool, 3> prevues{};
};

/// Takes the new words out of a file, so that the told reader reads the others.
class extracteurMc {
public:
  extracteurMc(std::string_view octets, base::Remarques& remarques) : m_remarques(remarques) {
    base::LineReader lignes(octets, kLongueurLigneObs);
    while (lignes.next() && m_erreur.empty()) {
      if (const auto coupe = lignes.cut()) m_remarques.ajouter(*coupe);
      m_reste += base::toUtf8(extraire(lignes.wide(), lignes.number())) + "\n";
    }
  }
  [[nodiscard]] const std::string& reste() const { return m_reste; }
  [[nodiscard]] const std::wstring& erreur() const { return m_erreur; }
  [[nodiscard]] suffixesMc de(int ligne) const {
    const auto trouve = m_suffixes.find(ligne);
    return trouve == m_suffixes.end() ? suffixesMc{} : trouve->second;
  }

private:
  std::wstring extraire(const std::wstring& ligne, int numero) {
    const std::wstring debut = base::trimLeft(ligne);
    if (debut.empty() || debut.front() == L'*') return ligne;
    std::wstring reste;
    std::size_t rang = 0;
    for (const std::wstring& mot : mots(ligne)) {
      if (rang++ >= kMotsConnus && prendre(mot, rang - 1, numero)) {
        if (mot == L"?") reste += L" 0";
        continue;
      }
      reste += L" " + mot;
    }
    return reste;
  }

  /// Words between blanks; what a double quote begins runs to the next one.
  static std::vector<std::wstring> mots(const std::wstring& ligne) {
    std::vector<std::wstring> tous;
    for (std::size_t i = 0; i < ligne.size();) {
      const bool blanc = ligne[i] == L' ' || ligne[i] == L'\t';
      const bool cite = ligne[i] == L'"';
      std::size_t fin = blanc ? i + 1 : ligne.find_first_of(cite ? L"\"" : L" \t\"", i + 1);
      if (cite && fin != std::wstring::npos) ++fin;
      fin = std::min(fin, ligne.size());
      if (!blanc) tous.push_back(ligne.substr(i, fin - i));
      i = fin;
    }
    return tous;
  }

  bool prendre(const std::wstring& mot, std::size_t rang, int numero) {
    const std::wstring haut = base::toUpper(mot);
    const std::size_t egal = haut.find(L'=');
    if (haut == L"APPROCHE" || haut == L"APPROCHÉ" || haut == L"LIBRE") {
      (haut == L"LIBRE" ? m_suffixes[numero].libre : m_suffixes[numero].approche) = true;
      return true;
    }
    if (mot == L"?" && rang >= kPremiereMesure && rang <= kDerniereMesure) {
      m_suffixes[numero].prevues.at(rang - kPremiereMesure) = true;
      return true;
    }
    if (egal == std::wstring::npos || haut.front() == L'"') return false;
    const std::wstring cle = haut.substr(0, egal);
    const std::wstring valeur = mot.substr(egal + 1);
    if (cle == L"TOUR" && !valeur.empty()) {
      m_suffixes[numero].tour = base::toUpper(valeur);
    } else if (cle == L"S" || cle == L"L") {
      const double nombre = lirePositif(mot, valeur, numero);
      if (cle == L"L") m_suffixes[numero].longueur = nombre;
      if (cle == L"S") m_suffixes[numero].ecarts.push_back(nombre);
    } else {
      refuser(numero, L"« " + mot + L" » n'est pas compris ; on attend s=, l= ou tour=, écrits sans blanc");
    }
    return true;
  }

  double lirePositif(const std::wstring& mot, const std::wstring& valeur, int numero) {
    double nombre = 0.0;
    if (!base::lireReelExact(base::toUtf8(valeur), nombre)) {
      const std::wstring raison = raisonNombre(valeur);
      refuser(numero, L"« " + mot + L" » n'est pas un nombre" + (raison.empty() ? L"" : L", " + raison));
    } else if (!(nombre > 0.0) || !std::isfinite(nombre)) {
      refuser(numero, L"« " + mot + L" » : un écart-type ou une longueur doit être positif");
    }
    return nombre;
  }

  void refuser(int numero, const std::wstring& raison) {
    if (m_erreur.empty()) m_erreur = base::formater(L"ligne %d : %s", numero, raison);
  }

  base::Remarques& m_remarques;
  std::map<int, suffixesMc> m_suffixes;
  std::string m_reste;
  std::wstring m_erreur;
};

/// Makes the weighted network of what the told reader read.
class convertisseurMc {
public:
  convertisseurMc(const reseauMoindresCarres& lu, const lignesMc& lignes, const extracteurMc& suffixes,
                  reseauPondere& reseau, base::Remarques& remarques)
      : m_lu(lu), m_lignes(lignes), m_suffixes(suffixes), m_reseau(reseau), m_remarques(remarques) {}

  std::wstring convertir() {
    m_reseau.anglesParUnite = m_lu.anglesParUnite;
    for (int i = 0; i < m_lu.points.GetSize(); ++i) prendrePoint(i);
    for (int i = 0; i < m_lu.observations.GetSize() && m_erreur.empty(); ++i) prendreMesure(i);
    signalerPoids();
    return m_erreur;
  }

private:
  void prendrePoint(int i) {
    const pointACalculer& lu = m_lu.point(i);
    const bool nouveau = m_reseau.chercher(lu.nom) < 0;
    const int index = m_reseau.indexDe(lu.nom);
    pointPondere& p = m_reseau.point(index);
    const int ligne = m_lignes.points[static_cast<std::size_t>(i)];
    if (!lu.planiConnue) return;
    const suffixesMc s = m_suffixes.de(ligne);
    const std::array<double, 3> c{lu.X, lu.Y, lu.Z};
    if (!nouveau && p.ligne > 0) {
      comparer(p, c, ligne);
      return;
    }
    p.ligne = ligne;
    p.c = p.donnee = c;
    const statutCoordonnee statut = s.libre                           ? statutCoordonnee::libre
                                    : s.approche || !s.ecarts.empty() ? statutCoordonnee::approche
                                                                      : statutCoordonnee::fixe;
    for (std::size_t axe = 0; axe < 3; ++axe)
      if (c.at(axe) != base::Z_ABSENT) p.statut.at(axe) = statut;
    if (!s.ecarts.empty()) observer(index, s, c, ligne);
  }

  void observer(int point, const suffixesMc& s, const std::array<double, 3>& c, int ligne) {
    const auto donnees = std::count_if(c.begin(), c.end(), [](double v) { return v != base::Z_ABSENT; });
    if (s.ecarts.size() > 1 && static_cast<std::ptrdiff_t>(s.ecarts.size()) != donnees)
      m_remarques.douter(ligne,
                         base::formater(L"%d s= pour %d coordonnées : en donner un, ou un par coordonnée",
                                        static_cast<int>(s.ecarts.size()), static_cast<int>(donnees)));
    for (std::size_t axe = 0; axe < 3; ++axe) {
      if (c.at(axe) == base::Z_ABSENT) continue;
      mesurePonderee m;
      m.genre = static_cast<genreMesure>(static_cast<std::size_t>(genreMesure::X) + axe);
      m.station = point;
      m.valeur = c.at(axe);
      m.ecart = s.ecarts[std::min(axe, s.ecarts.size() - 1)];
      m.ligne = ligne;
      m_reseau.mesures.push_back(m);
    }
  }

  void comparer(const pointPondere& p, const std::array<double, 3>& c, int ligne) {
    if (const std::wstring texte = texteDoublon(p.nom, c, p.donnee); !texte.empty())
      m_remarques.douter(ligne, texte + base::formater(L" ; celles de la ligne %d servent", p.ligne));
  }

  void prendreMesure(int i) {
    const ObservationReduite& o = m_lu.observations.GetAt(i);
    const int ligne = m_lignes.observations[static_cast<std::size_t>(i)];
    const suffixesMc s = m_suffixes.de(ligne);
    mesurePonderee m;
    m.ligne = ligne;
    if (o.station < 0 || o.vise < 0) {
      refuser(ligne, L"« NORD » ne peut être ni station ni point visé, seulement référence");
      return;
    }
    m.station = indexDe(o.station);
    m.vise = indexDe(o.vise);
    m.valeur = o.mesure;
    m.genre = o.type == ObservationReduite::kDistance    ? genreMesure::distance
              : o.type == ObservationReduite::kDenivelee ? genreMesure::denivelee
              : o.reference < 0                          ? genreMesure::gisement
                                                         : genreMesure::angle;
    if (m.genre == genreMesure::angle) m.reference = indexDe(o.reference);
    if (o.type == ObservationReduite::kAngle && !s.tour.empty()) mettreEnTour(m, s.tour);
    if (m.genre == genreMesure::denivelee) m.longueur = longueurDe(i, ligne, s);
    m.prevue = s.prevues.at(static_cast<std::size_t>(o.type));
    if (m.station == m.vise ||
        (m.genre == genreMesure::angle && (m.reference == m.vise || m.reference == m.station))) {
      m_remarques.douter(ligne, L"visée d'un point sur lui-même, ignorée : " + m_reseau.nommer(m));
      return;
    }
    if (m.genre == genreMesure::distance && !m.prevue && !(m.valeur > 0.0)) {
      m_remarques.douter(ligne, L"distance nulle ou négative, ignorée : " + m_reseau.nommer(m));
      return;
    }
    if (m.genre == genreMesure::denivelee && s.longueur != base::Z_ABSENT && longueurInvraisemblable(m))
      m_remarques.douter(
          ligne, base::formater(L"longueur de %.15g m pour une dénivelée de %.3f m : l= se donne en mètres",
                                m.longueur, m.valeur));
    donnerEcart(m, o, s, i);
    m_reseau.mesures.push_back(m);
  }

  int indexDe(int lu) { return m_reseau.indexDe(m_lu.point(lu).nom); }

  void mettreEnTour(mesurePonderee& m, const std::wstring& tour) {
    const auto [entree, nouveau] = m_tours.try_emplace({m.station, tour}, -1);
    if (nouveau) entree->second = m_reseau.ajouterTour(m.station);
    m.genre = genreMesure::direction;
    m.reference = -1;
    m.tour = entree->second;
  }

  double longueurDe(int i, int ligne, const suffixesMc& s) const {
    if (s.longueur != base::Z_ABSENT || i == 0) return s.longueur;
    const ObservationReduite& avant = m_lu.observations.GetAt(i - 1);
    const bool memeLigne = m_lignes.observations[static_cast<std::size_t>(i - 1)] == ligne;
    return memeLigne && avant.type == ObservationReduite::kDistance ? avant.mesure : base::Z_ABSENT;
  }

  /// The standard deviation of a measure: its own `s=`, else its weight's.
  void donnerEcart(mesurePonderee& m, const ObservationReduite& o, const suffixesMc& s, int i) {
    std::size_t rang = 0;
    while (static_cast<std::size_t>(i) > rang &&
           m_lignes.observations[static_cast<std::size_t>(i) - rang - 1] == m.ligne)
      ++rang;
    if (!s.ecarts.empty()) {
      compterEcarts(m.ligne, s, i, rang);
      if (rang < s.ecarts.size()) m.ecart = s.ecarts[rang] / (estAngulaire(m.genre) ? kMilligrades : 1.0);
      if (!estAngulaire(m.genre) && m.ecart > kEcartDemesure)
        m_remarques.douter(m.ligne,
                           base::formater(L"écart-type de %.1f m : s= se donne en mètres pour les longueurs, "
                                          L"sans doute des millimètres",
                                          m.ecart));
    }
    if (estAngulaire(m.genre) && m.ecart > 0.0 && m.ecart * kMilligrades < kEcartInfime)
      m_remarques.douter(m.ligne,
                         base::formater(L"écart-type de %g mgr : s= se donne en milligrades pour les angles, "
                                        L"sans doute des grades",
                                        m.ecart * kMilligrades));
    if (m.ecart > 0.0 || o.poids == base::Z_ABSENT) return;
    if (!(o.poids > 0.0)) {
      refuser(m.ligne, L"poids nul ou négatif");
      return;
    }
    m.ecart = 1.0 / std::sqrt(o.poids);
    ++m_parPoids;
  }

  void compterEcarts(int ligne, const suffixesMc& s, int i, std::size_t rang) {
    std::size_t nombre = rang + 1;
    for (std::size_t k = static_cast<std::size_t>(i) + 1;
         k < m_lignes.observations.size() && m_lignes.observations[k] == ligne; ++k)
      ++nombre;
    if (rang == 0 && nombre != s.ecarts.size())
      m_remarques.douter(ligne,
                         base::formater(L"%d s= pour %d mesures : en donner un par mesure, dans leur ordre",
                                        static_cast<int>(s.ecarts.size()), static_cast<int>(nombre)));
  }

  void signalerPoids() {
    if (m_parPoids == 0) return;
    const bool tous = static_cast<std::size_t>(m_parPoids) == m_reseau.mesures.size();
    const std::wstring texte =
        base::formater(L"%d poids du fichier pris pour 1/s², s en radians et en mètres", m_parPoids);
    if (tous)
      m_remarques.ajouter(texte);
    else
      m_remarques.douter(
          texte + L", les autres mesures ont l'écart-type de leur genre : poids et écarts-types se mêlent");
  }

  void refuser(int ligne, const std::wstring& raison) {
    if (m_erreur.empty()) m_erreur = base::formater(L"ligne %d : %s", ligne, raison);
  }

  const reseauMoindresCarres& m_lu;
  const lignesMc& m_lignes;
  const extracteurMc& m_suffixes;
  reseauPondere& m_reseau;
  base::Remarques& m_remarques;
  std::map<std::pair<int, std::wstring>, int> m_tours;
  int m_parPoids = 0;
  std::wstring m_erreur;
};

}  // namespace

std::wstring lireMcPondere(std::string_view octets, reseauPondere& reseau, base::Remarques& remarques) {
  reseau.points.clear();
  const extracteurMc extracteur(octets, remarques);
  if (!extracteur.erreur().empty()) return extracteur.erreur();
  reseauMoindresCarres lu;
  lignesMc lignes;
  if (!lireMc(extracteur.reste(), lu, &remarques, &lignes))
    return lu.points.empty() ? L"aucun point" : L"aucune observation";
  return convertisseurMc(lu, lignes, extracteur, reseau, remarques).convertir();
}

std::wstring peserParFormules(reseauPondere& reseau, formulesPoids& formules) {
  formules.compiler();
  for (mesurePonderee& m : reseau.mesures) {
    if (m.ecart > 0.0 || m.ecarte || m.genre >= genreMesure::denivelee) continue;
    const double d1 = reseau.distance(m.station, m.vise);
    double poids = 0.0;
    if (m.genre == genreMesure::distance)
      poids = formules.poidsDistance(d1);
    else if (m.genre == genreMesure::angle)
      // In the order of the unweighted adjustment, for which the formulas in use are written.
      poids = formules.poidsAngle(reseau.distance(m.station, m.reference), d1,
                                  reseau.distance(m.reference, m.vise), m.valeur);
    else
      poids = formules.poidsGisement(d1, m.valeur);
    if (!(poids > 0.0) || !std::isfinite(poids)) return reseau.nommer(m);
    m.ecart = 1.0 / std::sqrt(poids);
  }
  return {};
}

}  // namespace veltora
