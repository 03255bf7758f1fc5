#include "calc/network/donnees_reseau.h"

#include "base/format.h"
#include "calc/angles.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

namespace veltora {
namespace {

double distance(const pointACalculer& a, const pointACalculer& b) { return std::hypot(b.X - a.X, b.Y - a.Y); }

double gisement(const pointACalculer& a, const pointACalculer& b) {
  return calculGisement(a.X, a.Y, b.X, b.Y, 2);
}

std::wstring decrire(const ObservationReduite& o) {
  if (o.type == ObservationReduite::kAngle) {
    return base::formater(L"obs Angle de %d à %d (ref=%d) angle=%14.4f", o.station, o.vise, o.reference,
                          o.mesure * 200.0 / kPi);
  }
  return base::formater(L"obs Distance de %d à %d d=%14.4f", o.station, o.vise, o.mesure);
}

/// Observations with the same key are equivalent. Height differences never are:
/// their place makes the key unique.
using CleObservation = std::tuple<int, int, int, int, std::size_t>;
CleObservation cleDe(const ObservationReduite& o, std::size_t place) {
  if (o.type == ObservationReduite::kAngle) return {o.type, o.station, o.vise, o.reference, 0};
  const auto [bas, haut] = std::minmax({o.station, o.vise});
  return {o.type, bas, haut, 0, o.type == ObservationReduite::kDistance ? 0 : place};
}

/// Counts of dropped observations in front of a place, kept as a binary indexed tree.
class Disparues {
public:
  explicit Disparues(std::size_t n) : m_arbre(n + 1, 0) {}
  void ajouter(std::size_t place) {
    for (std::size_t i = place + 1; i < m_arbre.size(); i += i & (~i + 1)) ++m_arbre[i];
  }
  /// Index that the observation at this place of the sorted list has now.
  [[nodiscard]] int indexActuel(std::size_t place) const {
    int devant = 0;
    for (std::size_t i = place; i > 0; i -= i & (~i + 1)) devant += m_arbre[i];
    return static_cast<int>(place) - devant;
  }

private:
  std::vector<int> m_arbre;
};

}  // namespace

pointACalculer::pointACalculer() {
  static std::int64_t suivant = 0;
  numero = ++suivant;
  nom = base::formater(std::wstring(L"_Pnt # %d"), numero);
}

void donneesReseau::preparerUtilisable() {
  if (utilisable.size() != points.size()) utilisable.SetSize(points.size());
}

double donneesReseau::valeurCalculee(const ObservationReduite& o) const {
  const pointACalculer& station = point(o.station);
  const pointACalculer& vise = point(o.vise);
  if (o.type == ObservationReduite::kDistance) return distance(station, vise);
  if (o.reference == -1) return gisement(station, vise);
  return reduireAngle(gisement(station, vise) - gisement(station, point(o.reference)), 2.0 * kPi);
}

double donneesReseau::poidsObservation(const ObservationReduite& o) {
  if (o.poids != base::Z_ABSENT) return o.poids;
  if (o.type == ObservationReduite::kAngle && o.reference == -1) {
    return formules.poidsGisement(distance(point(o.station), point(o.vise)), o.mesure);
  }
  if (o.type == ObservationReduite::kAngle) {
    // Deliberate (poids-d1-d2): d1 is the distance to the reference and d2 that to the target, the opposite
    // of what the variables' comments say; formulas in use are written for it.
    return formules.poidsAngle(distance(point(o.station), point(o.reference)),
                               distance(point(o.station), point(o.vise)),
                               distance(point(o.reference), point(o.vise)), o.mesure);
  }
  if (o.type == ObservationReduite::kDistance)
    return formules.poidsDistance(distance(point(o.station), point(o.vise)));
  return 1.0;
}

void donneesReseau::reduireObservations(std::wstring& journal) {
  std::stable_sort(observations.begin(), observations.end(),
                   [](const ObservationReduite& a, const ObservationReduite& b) { return a.type < b.type; });
  equivalentes.clear();
  // Groups of equivalent observations, the kept one first, in the order of the kept ones.
  std::map<CleObservation, std::size_t> groupes;
  std::vector<std::vector<std::size_t>> doubles(observations.size());
  std::size_t supprimees = 0;
  for (std::size_t i = 0; i < observations.size(); ++i) {
    const auto [entree, nouveau] = groupes.try_emplace(cleDe(observations[i], i), i);
    if (nouveau) continue;
    doubles[entree->second].push_back(i);
    ++supprimees;
  }
  if (supprimees == 0) return;
  Disparues disparues(observations.size());
  std::vector<bool> garder(observations.size(), true);
  for (std::size_t i = 0; i < doubles.size(); ++i) {
    for (const std::size_t j : doubles[i]) {
      journal += base::formater(std::wstring(L"\r\nSuppression de l'observation %d (equiv a %d)"),
                                disparues.indexActuel(j), disparues.indexActuel(i));
      journal += L"\r\n" + decrire(observations[j]) + L"\r\n" + decrire(observations[i]) + L"\r\n---";
      equivalentes.emplace_back(observations[j], observations[i]);
      disparues.ajouter(j);
      garder[j] = false;
    }
  }
  std::size_t place = 0;
  for (std::size_t i = 0; i < garder.size(); ++i) {
    if (garder[i]) observations[place++] = observations[i];
  }
  observations.SetSize(place);
}

}  // namespace veltora
