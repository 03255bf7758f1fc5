#include "stakeout/plan_implantation_auto.h"

#include "base/box_index.h"
#include "points/projets_topo.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>
#include <numeric>
#include <unordered_map>

namespace veltora {
namespace {

constexpr double kReferenceMin = 1.0;  // drawing units, likewise the next
constexpr double kReferenceMax = 1000.0;
constexpr double kDebutRecherche = 1e36;
constexpr double kAutreLieu = 0.000001;

const pointDuDessin& pointDeTable(int index) {
  const listePointsDuDessin& table = *tablesPoints->currTable();
  return *table.getData(index);
}

double distanceEntre(double x1, double y1, double x2, double y2) { return std::hypot(x2 - x1, y2 - y1); }

bool avant(const planImplantationAuto::entree& a, const planImplantationAuto::entree& b) {
  return a.distance != b.distance ? a.distance < b.distance : a.station < b.station;
}

/// The stations by place: the nearest ones of a point without asking all of them.
class stationsProches {
public:
  explicit stationsProches(const std::vector<int>& stations) : m_stations(stations) {
    std::vector<base::PlaneBox> boites;
    for (const int station : stations) {
      const pointDuDessin& p = pointDeTable(station);
      m_lieux.emplace_back(p.x, p.y);
      boites.push_back({p.x, p.y, p.x, p.y});
    }
    m_index = std::make_unique<base::BoxIndex>(boites);
  }

  /// Writes the `nombre` first ones by `avant`. @param nombre  at most as many as there are stations
  void chercher(int rang, const AcGePoint2d& point, std::size_t nombre,
                planImplantationAuto::entree* sortie) {
    constexpr double kPlusLoin = 1e40;  // beyond all coordinates
    // A station within the square but out of its circle says nothing of those outside: they may be nearer.
    for (double rayon = m_rayon;; rayon *= 2.0) {
      const double cote = rayon * (1.0 + 1e-9) + std::max(std::fabs(point.x), std::fabs(point.y)) * 1e-12;
      const bool tout = !(rayon < kPlusLoin);
      m_trouvees.clear();
      if (tout)
        for (std::size_t i = 0; i < m_lieux.size(); ++i) prendre(rang, point, i);
      else
        for (const std::size_t i :
             m_index->touching({point.x - cote, point.y - cote, point.x + cote, point.y + cote}))
          prendre(rang, point, i);
      if (!tout) std::erase_if(m_trouvees, [rayon](const auto& e) { return !(e.distance <= rayon); });
      if (m_trouvees.size() < nombre) continue;
      const auto fin = m_trouvees.begin() + static_cast<std::ptrdiff_t>(nombre);
      std::partial_sort(m_trouvees.begin(), fin, m_trouvees.end(), avant);
      std::copy(m_trouvees.begin(), fin, sortie);
      // Points follow their neighbours: the next one will need about as much.
      m_rayon = std::max(1e-3, std::min(rayon, std::prev(fin)->distance * 1.25));
      return;
    }
  }

private:
  void prendre(int rang, const AcGePoint2d& point, std::size_t i) {
    m_trouvees.push_back({rang, m_stations[i], distanceEntre(point.x, point.y, m_lieux[i].x, m_lieux[i].y)});
  }

  const std::vector<int>& m_stations;
  std::vector<AcGePoint2d> m_lieux;
  std::unique_ptr<base::BoxIndex> m_index;
  std::vector<planImplantationAuto::entree> m_trouvees;
  double m_rayon = 1.0;
};

}  // namespace

planImplantationAuto::planImplantationAuto() { numerotation.initialiser(L"A", 1, L"", 1); }

void planImplantationAuto::preparer(const std::vector<AcGePoint2d>& points, int code,
                                    const std::vector<AcString>& noms) {
  m_code = code;
  m_points = points;
  m_noms = noms;
  m_noms.resize(std::min(m_noms.size(), m_points.size()));
  while (m_noms.size() < m_points.size()) m_noms.push_back(numerotation.suivant());
  m_stations.clear();
  const int nombre = tablesPoints ? tablesPoints->currTable()->nbPoint() : 0;
  for (int i = 0; i < nombre; ++i)
    if (pointDeTable(i).code == code) m_stations.push_back(i);
  remplirTable();
  choisirReferences(kProche, kReferenceMin, kReferenceMax);
}

void planImplantationAuto::remplirTable() {
  m_colonnes = std::min(static_cast<int>(m_stations.size()), kStationsMax);
  const auto largeur = static_cast<std::size_t>(m_colonnes);
  m_table.assign(m_points.size() * largeur, {});
  if (m_colonnes == 0) return;
  stationsProches proches(m_stations);
  for (std::size_t i = 0; i < m_points.size(); ++i)
    proches.chercher(static_cast<int>(i), m_points[i], largeur, m_table.data() + i * largeur);
}

std::vector<int> planImplantationAuto::candidatesDe(int mode) const {
  if (mode != kProcheDeTous && mode != kLointaineDeTous) return m_stations;
  const int nombre = tablesPoints ? tablesPoints->currTable()->nbPoint() : 0;
  std::vector<int> tous(static_cast<std::size_t>(nombre));
  std::iota(tous.begin(), tous.end(), 0);
  return tous;
}

void planImplantationAuto::choisirReferences(int mode, double dmin, double dmax) {
  m_mode = mode;
  std::vector<bool> connue(static_cast<std::size_t>(tablesPoints ? tablesPoints->currTable()->nbPoint() : 0));
  for (const int station : m_stations) connue[static_cast<std::size_t>(station)] = true;
  for (const entree& e : m_table)
    if (!connue[static_cast<std::size_t>(e.station)]) {
      connue[static_cast<std::size_t>(e.station)] = true;
      m_stations.push_back(e.station);
    }
  // Of all points only those of the code can be one: they are looked for once.
  std::vector<int> candidates = candidatesDe(mode);
  std::erase_if(candidates, [this](int i) { return pointDeTable(i).code != m_code; });
  m_references.clear();
  m_positionsReferences.clear();
  for (const int station : m_stations) {
    const int reference =
        referenceParmi(candidates, station, mode == kProche || mode == kProcheDeTous, dmin, dmax);
    m_references.push_back(reference);
    m_positionsReferences.push_back(reference < 0 ? 0.0 : pointDeTable(reference).x);
    m_positionsReferences.push_back(reference < 0 ? 0.0 : pointDeTable(reference).y);
  }
}

int planImplantationAuto::referencePour(int station, int mode, double dmin, double dmax) const {
  return referenceParmi(candidatesDe(mode), station, mode == kProche || mode == kProcheDeTous, dmin, dmax);
}

int planImplantationAuto::referenceParmi(const std::vector<int>& candidates, int station, bool proche,
                                         double dmin, double dmax) const {
  const pointDuDessin& depuis = pointDeTable(station);
  int prise = -1;
  double meilleure = kDebutRecherche;
  int voisine = -1;
  double moindre = kDebutRecherche;
  int lointaine = -1;
  double plusGrande = 0.0;
  for (const int i : candidates) {
    const pointDuDessin& p = pointDeTable(i);
    if (i == station || p.code != m_code) continue;
    const double d = distanceEntre(depuis.x, depuis.y, p.x, p.y);
    if (dmin <= d && d <= dmax) {
      if (prise < 0 || (proche ? d < meilleure : d > meilleure)) prise = i, meilleure = d;
      continue;
    }
    if (lointaine < 0 || d > plusGrande) lointaine = i, plusGrande = d;
    if (d > kAutreLieu && d < moindre) voisine = i, moindre = d;
  }
  if (prise >= 0) return prise;
  return proche ? voisine : lointaine;
}

void planImplantationAuto::minimiserStations(double dmin, double dmax) {
  const auto rangs = static_cast<std::size_t>(m_colonnes);
  std::unordered_map<int, std::vector<int>> servis;  // points that a station reaches
  for (const entree& e : m_table)
    if (dmin <= e.distance && e.distance <= dmax) servis[e.station].push_back(e.point);
  std::vector<bool> attribue(m_points.size());
  std::vector<int> restants(m_stations.size());
  for (std::size_t i = 0; i < m_stations.size(); ++i)
    restants[i] = static_cast<int>(servis[m_stations[i]].size());
  std::unordered_map<int, std::size_t> places;
  for (std::size_t i = 0; i < m_stations.size(); ++i) places.emplace(m_stations[i], i);
  while (true) {
    const auto plus = std::max_element(restants.begin(), restants.end());
    if (plus == restants.end() || *plus == 0) return;
    const int station = m_stations[static_cast<std::size_t>(plus - restants.begin())];
    for (const int point : servis[station]) {
      const auto rang = static_cast<std::size_t>(point);
      if (attribue[rang]) continue;
      attribue[rang] = true;
      const auto ligne = m_table.begin() + static_cast<std::ptrdiff_t>(rang * rangs);
      for (auto e = ligne; e != ligne + m_colonnes; ++e)
        if (dmin <= e->distance && e->distance <= dmax) --restants[places[e->station]];
      const auto sienne = std::find_if(ligne, ligne + m_colonnes,
                                       [station](const entree& e) { return e.station == station; });
      std::rotate(ligne, sienne, sienne + 1);
    }
  }
}

const planImplantationAuto::entree& planImplantationAuto::tableStations(int rang, int colonne) const {
  return m_table.at(static_cast<std::size_t>(rang) * static_cast<std::size_t>(m_colonnes) +
                    static_cast<std::size_t>(colonne));
}

int planImplantationAuto::nombreVisees(int station) const {
  int nombre = 0;
  for (int i = 0; i < nbPoints(); ++i)
    if (stationDe(i) == station) ++nombre;
  return nombre;
}

bool planImplantationAuto::stationDansPortee(int rang, int station, double dmin, double dmax,
                                             int* colonne) const {
  if (colonne) *colonne = -1;
  for (int c = 0; c < m_colonnes; ++c) {
    const entree& e = tableStations(rang, c);
    if (e.station != station) continue;
    if (colonne) *colonne = c;
    return dmin <= e.distance && e.distance <= dmax;
  }
  return false;
}

int planImplantationAuto::indexStation(int index) const {
  const auto place = std::find(m_stations.begin(), m_stations.end(), index);
  return place == m_stations.end() ? -1 : static_cast<int>(place - m_stations.begin());
}

double viseesPlan::angleVers(const planImplantationAuto& plan, int rang) const {
  const pointDuDessin& de = pointDeTable(station);
  const AcGePoint2d& vers = plan.point(rang);
  const double angle = enGrades(gisementImplantation(de.x, de.y, vers.x, vers.y) - gisReference);
  constexpr double kTour = 400.0;
  return angle < 0.0 ? angle + kTour : angle;
}

double viseesPlan::distanceVers(const planImplantationAuto& plan, int rang) const {
  const pointDuDessin& de = pointDeTable(station);
  return distanceEntre(de.x, de.y, plan.point(rang).x, plan.point(rang).y);
}

std::vector<viseesPlan> viseesDuPlan(const planImplantationAuto& plan) {
  std::unordered_map<int, std::size_t> places;
  std::vector<viseesPlan> listes(plan.stations().size());
  for (std::size_t i = 0; i < listes.size(); ++i) {
    viseesPlan& liste = listes[i];
    liste.station = plan.stations()[i];
    liste.reference = plan.references()[i];
    places.emplace(liste.station, i);
    if (liste.reference < 0) continue;
    const pointDuDessin& de = pointDeTable(liste.station);
    liste.gisReference = gisementImplantation(de.x, de.y, plan.positionsReferences()[2 * i],
                                              plan.positionsReferences()[2 * i + 1]);
  }
  for (int rang = 0; rang < plan.nbPoints(); ++rang)
    if (const auto place = places.find(plan.stationDe(rang)); place != places.end())
      listes[place->second].points.push_back(rang);
  std::erase_if(listes, [](const viseesPlan& liste) { return liste.points.empty(); });
  return listes;
}

}  // namespace veltora
