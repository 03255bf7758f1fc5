#include "calc/adjustment/depart_pondere.h"

#include "base/format.h"
#include "base/text.h"
#include "calc/adjustment/compensation.h"
#include "calc/adjustment/onde_depart.h"
#include "calc/adjustment/systeme_pondere.h"
#include "calc/angles.h"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>
#include <complex>

namespace veltora {
namespace {

using Complexe = std::complex<double>;
constexpr std::size_t kPremierAjustement = 500;  // points
constexpr int kPassesAjustement = 3;
constexpr double kPasDepart = 0.02;   // metres and radians: what the next pass would change is far less
constexpr int kReperesMax = 400;      // frames of their own that are tried
constexpr int kDesaccordsDits = 10;   // points that are told one by one
constexpr double kEchelleMax = 0.02;  // by which a frame's scale may differ from 1, where distances gave it

Complexe complexe(const AcGePoint2d& p) { return {p.x, p.y}; }

class departPlan {
public:
  explicit departPlan(reseauPondere& reseau)
      : m_reseau(reseau), m_liaisons(reseau), m_onde(m_liaisons, reseau.points.size(), true) {}

  void calculer() {
    for (std::size_t i = 0; i < m_reseau.points.size(); ++i)
      if (const pointPondere& p = m_reseau.points[i]; p.enPlan())
        m_onde.poser(static_cast<int>(i), {p.c[0], p.c[1]});
    // Far from the given points errors grow faster than the network: what is placed is adjusted each time
    // that it has doubled.
    for (std::size_t arret = kPremierAjustement; arret < m_reseau.points.size(); arret *= 2) {
      m_onde.propager(arret);
      if (m_onde.poses().size() < arret) break;
      ajusterPoses();
    }
    m_onde.propager();
    int essais = 0;
    for (std::size_t f = 0; f < m_liaisons.faisceaux.size() && essais < kReperesMax; ++f) {
      if (!utile(m_liaisons.faisceaux[f])) continue;
      ++essais;
      if (rattacher(m_liaisons.faisceaux[f]) && m_onde.propager() >= 0) f = static_cast<std::size_t>(-1);
    }
    for (std::size_t i = 0; i < m_reseau.points.size(); ++i) {
      const auto& place = m_onde.place(static_cast<int>(i));
      if (!place || m_reseau.points[i].enPlan()) continue;
      m_reseau.points[i].c[0] = place->x;
      m_reseau.points[i].c[1] = place->y;
    }
  }
  [[nodiscard]] bool indecis(int point) const { return m_onde.indecis(point); }
  /// Figures of their own whose lengths do not fit the points that they share with the known ones, and the
  /// scale that would.
  [[nodiscard]] const std::vector<std::pair<std::vector<int>, double>>& figures() const { return m_figures; }
  [[nodiscard]] std::vector<desaccordDepart> desaccords(int point) const { return m_onde.desaccords(point); }

private:
  void ajusterPoses();
  [[nodiscard]] bool utile(const faisceau& f) const {
    return !m_onde.place(f.station) || std::any_of(f.visees.begin(), f.visees.end(), [&](const auto& v) {
      return v.first >= 0 && !m_onde.place(v.first);
    });
  }

  /// A frame from one side of a beam: its length measured or, without any, taken as 1.
  bool rattacher(const faisceau& f) {
    int vise = -1;
    double longueur = 0.0;
    for (const auto& v : f.visees) {
      if (v.first < 0) continue;
      if (vise < 0) vise = v.first;
      for (const auto& cote : m_liaisons.cotes[static_cast<std::size_t>(f.station)])
        if (cote.autre == v.first && longueur == 0.0) {
          longueur = cote.longueur;
          vise = v.first;
        }
    }
    if (vise < 0) return false;
    ondeDepart repere(m_liaisons, m_reseau.points.size(), false, longueur > 0.0);
    repere.poser(f.station, {0.0, 0.0});
    repere.poser(vise, {0.0, longueur > 0.0 ? longueur : 1.0});
    repere.propager();
    return ajuster(repere, longueur > 0.0);
  }

  /// z' = a z + b over the points that both frames hold, by least squares, from the centres.
  bool ajuster(const ondeDepart& repere, bool echelle) {
    Complexe centre;
    Complexe centreLocal;
    std::vector<int> communs;
    for (const int i : repere.poses()) {
      if (!m_onde.place(i)) continue;
      communs.push_back(i);
      centre += complexe(*m_onde.place(i));
      centreLocal += complexe(*repere.place(i));
    }
    if (communs.empty() || communs.size() == repere.poses().size()) return false;
    centre /= static_cast<double>(communs.size());
    centreLocal /= static_cast<double>(communs.size());
    Complexe produit;
    double norme = 0.0;
    for (const int i : communs) {
      const Complexe z = complexe(*repere.place(i)) - centreLocal;
      produit += (complexe(*m_onde.place(i)) - centre) * std::conj(z);
      norme += std::norm(z);
    }
    Complexe a;
    if (communs.size() >= 2 && norme > 0.0) {
      a = produit / norme;
      if (echelle && std::abs(std::abs(a) - 1.0) > kEchelleMax) {
        std::sort(communs.begin(), communs.end());
        m_figures.emplace_back(communs, std::abs(a));
        return false;
      }
    } else if (!echelle || !rotationDuNord(repere, a)) {
      return false;
    }
    for (const int i : repere.poses()) {
      if (m_onde.place(i)) continue;
      const Complexe z = a * (complexe(*repere.place(i)) - centreLocal) + centre;
      m_onde.poser(i, {z.real(), z.imag()});
    }
    return true;
  }

  /// A beam with the north tells how the frame is turned.
  bool rotationDuNord(const ondeDepart& repere, Complexe& a) const {
    for (const faisceau& f : m_liaisons.faisceaux) {
      const auto nord = std::find_if(f.visees.begin(), f.visees.end(),
                                     [](const auto& v) { return v.first == faisceau::kNord; });
      if (nord == f.visees.end()) continue;
      const auto o = repere.orientation(f);
      if (!o) continue;
      a = std::polar(1.0, *o + nord->second);
      return true;
    }
    return false;
  }

  reseauPondere& m_reseau;
  liaisonsDepart m_liaisons;
  ondeDepart m_onde;
  std::vector<std::pair<std::vector<int>, double>> m_figures;
};

void orienterTours(reseauPondere& reseau);
bool calculable(const reseauPondere& reseau, const mesurePonderee& m);

void departPlan::ajusterPoses() {
  reseauPondere copie = m_reseau;
  for (const int i : m_onde.poses()) {
    copie.point(i).c[0] = m_onde.place(i)->x;
    copie.point(i).c[1] = m_onde.place(i)->y;
  }
  orienterTours(copie);
  for (mesurePonderee& m : copie.mesures) m.ecarte = estAltimetrique(m.genre) || !calculable(copie, m);
  copie.completerEcarts();
  systemePondere systeme(copie);
  bilanPondere bilan;
  if (systeme.colonnes().nombre == 0 || !compenser(copie, systeme, bilan, kPassesAjustement, kPasDepart))
    return;
  for (const int i : m_onde.poses()) m_onde.deplacer(i, {copie.point(i).c[0], copie.point(i).c[1]});
}

void calculerHauteurs(reseauPondere& reseau) {
  std::vector<std::vector<std::pair<int, double>>> voisins(reseau.points.size());
  for (const mesurePonderee& m : reseau.mesures) {
    if (m.genre != genreMesure::denivelee || m.prevue) continue;
    voisins[static_cast<std::size_t>(m.station)].emplace_back(m.vise, m.valeur);
    voisins[static_cast<std::size_t>(m.vise)].emplace_back(m.station, -m.valeur);
  }
  std::vector<int> file;
  for (std::size_t i = 0; i < voisins.size(); ++i)
    if (reseau.points[i].enAltitude()) file.push_back(static_cast<int>(i));
  for (std::size_t k = 0; k < file.size(); ++k) {
    for (const auto& [autre, denivelee] : voisins[static_cast<std::size_t>(file[k])]) {
      if (reseau.enAltitude(autre)) continue;
      reseau.point(autre).c[2] = reseau.point(file[k]).c[2] + denivelee;
      file.push_back(autre);
    }
  }
}

/// The median of bearing less reading over the sights of each round.
void orienterTours(reseauPondere& reseau) {
  std::vector<std::vector<double>> valeurs(reseau.orientations.size());
  for (const mesurePonderee& m : reseau.mesures) {
    if (m.genre != genreMesure::direction || !reseau.enPlan(m.station) || !reseau.enPlan(m.vise)) continue;
    auto& v = valeurs[static_cast<std::size_t>(m.tour)];
    const double o = reseau.gisement(m.station, m.vise) - m.valeur;
    v.push_back(v.empty() ? o : v.front() + dansUnDemiTour(o - v.front()));
  }
  for (std::size_t t = 0; t < valeurs.size(); ++t) {
    auto& v = valeurs[t];
    if (v.empty()) continue;
    std::nth_element(v.begin(), v.begin() + static_cast<std::ptrdiff_t>(v.size() / 2), v.end());
    reseau.orientations[t] = v[v.size() / 2];
  }
}

/// Observed coordinates place a point that nothing else does.
void poserObservees(reseauPondere& reseau) {
  for (const mesurePonderee& m : reseau.mesures) {
    if (m.genre < genreMesure::X || m.prevue) continue;
    double& c = reseau.point(m.station).c.at(static_cast<std::size_t>(m.genre) -
                                             static_cast<std::size_t>(genreMesure::X));
    if (c == base::Z_ABSENT) c = m.valeur;
  }
}

bool calculable(const reseauPondere& reseau, const mesurePonderee& m) {
  if (m.genre >= genreMesure::X)
    return reseau.point(m.station).c.at(static_cast<std::size_t>(m.genre) -
                                        static_cast<std::size_t>(genreMesure::X)) != base::Z_ABSENT;
  if (m.genre == genreMesure::denivelee) return reseau.enAltitude(m.station) && reseau.enAltitude(m.vise);
  const bool reference = m.genre != genreMesure::angle || reseau.enPlan(m.reference);
  return reference && reseau.enPlan(m.station) && reseau.enPlan(m.vise);
}

/// "distance à A : -3.214 m": what of a point's measures contradicts the others.
std::wstring texteDesaccord(const reseauPondere& reseau, const desaccordDepart& d) {
  const auto nom = [&](int i) { return L"« " + reseau.point(i).nom + L" »"; };
  if (d.vide)
    return base::formater(L"les distances à %s et %s ne se coupent pas, il s'en faut de %.3f m", nom(d.de),
                          nom(d.vers), d.ecart);
  if (d.genre == genreLieu::cercle) return base::formater(L"distance à %s : %+.3f m", nom(d.de), d.ecart);
  const double grades = std::remainder(d.ecart, 2.0 * kPi) * 200.0 / kPi;
  if (d.genre == genreLieu::segment)
    return base::formater(L"angle de %s à %s : %+.4f gr", nom(d.de), nom(d.vers), grades);
  return base::formater(L"direction entre %s et lui : %+.4f gr", nom(d.de), grades);
}

/// Points that lie nowhere since their measures contradict each other. @return whether it is one
bool nommerDesaccord(const reseauPondere& reseau, const departPlan& plan, int point, int& dits,
                     base::Remarques& remarques) {
  const std::vector<desaccordDepart> desaccords = plan.desaccords(point);
  if (desaccords.empty()) return false;
  if (++dits > kDesaccordsDits) return true;
  std::vector<std::wstring> textes;
  for (const desaccordDepart& d : desaccords) textes.push_back(texteDesaccord(reseau, d));
  remarques.douter(L"les mesures de « " + reseau.point(point).nom +
                   L" » se contredisent, il est laissé de côté avec elles ; mesuré moins calculé là où elles "
                   L"s'accordent le mieux : " +
                   base::enumerer(textes));
  return true;
}

void nommerAbsents(const reseauPondere& reseau, const departPlan& plan, base::Remarques& remarques) {
  std::vector<std::wstring> sansPlan;
  std::vector<std::wstring> doubles;
  std::vector<std::wstring> sansZ;
  std::vector<std::array<bool, 2>> vus(reseau.points.size());
  int desaccords = 0;
  const auto noter = [&](int i, bool altitude) {
    bool& vu = vus[static_cast<std::size_t>(i)].at(altitude ? 1 : 0);
    if (vu) return;
    vu = true;
    if (altitude && !reseau.enAltitude(i)) sansZ.push_back(reseau.point(i).nom);
    if (!altitude && !reseau.enPlan(i) && !nommerDesaccord(reseau, plan, i, desaccords, remarques))
      (plan.indecis(i) ? doubles : sansPlan).push_back(reseau.point(i).nom);
  };
  for (const mesurePonderee& m : reseau.mesures) {
    if (!m.ecarte) continue;
    const bool altitude = estAltimetrique(m.genre);
    noter(m.station, altitude);
    if (m.vise >= 0) noter(m.vise, altitude);
    if (m.reference >= 0) noter(m.reference, altitude);
  }
  if (desaccords > kDesaccordsDits)
    remarques.douter(base::formater(L"et %d autres points dont les mesures se contredisent",
                                    desaccords - kDesaccordsDits));
  if (!sansPlan.empty())
    remarques.douter(
        L"sans coordonnées de départ, laissés de côté avec leurs mesures (îlot sans lien suffisant avec "
        L"les points donnés, ou coordonnées approchées à fournir avec « approche ») : " +
        base::enumerer(sansPlan));
  if (!sansPlan.empty() && !plan.figures().empty()) {
    std::vector<std::wstring> noms;
    for (const int i : plan.figures().front().first) noms.push_back(reseau.point(i).nom);
    remarques.douter(base::formater(
        L"une figure mesurée ne se cale pas sur %s : ses distances sont à multiplier par %.5f pour y passer",
        base::enumerer(noms), plan.figures().front().second));
  }
  if (!doubles.empty())
    remarques.douter(
        L"deux positions symétriques conviennent également, donner des coordonnées « approche » : " +
        base::enumerer(doubles));
  if (!sansZ.empty())
    remarques.douter(
        L"sans altitude de départ, aucune dénivelée ne les joint à un point d'altitude donnée : " +
        base::enumerer(sansZ));
}

}  // namespace

void calculerDepart(reseauPondere& reseau, base::Remarques& remarques) {
  poserObservees(reseau);
  departPlan plan(reseau);
  plan.calculer();
  calculerHauteurs(reseau);
  orienterTours(reseau);
  for (mesurePonderee& m : reseau.mesures) m.ecarte = !calculable(reseau, m);
  nommerAbsents(reseau, plan, remarques);
}

}  // namespace veltora
