// Duplicates and new numbers: the operations that go through a whole table.

#include "base/format.h"
#include "base/text.h"
#include "points/liste_points_du_dessin.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace veltora {
namespace {

/// Coordinates that differ by more, strictly, decide the order; drawing units.
constexpr double kMemeRang = 1e-8;
/// Points nearer than this in the plane, strictly, are duplicates; drawing units.
constexpr double kDoublon = 1e-8;

/// Order by x, y, code: negative, 0 or positive. With its tolerances it is no strict order (a chain of near
/// points may close to a ring), hence the sort below.
int comparerPosition(const pointDuDessin& a, const pointDuDessin& b) {
  if (std::abs(a.x - b.x) > kMemeRang) return a.x < b.x ? -1 : 1;
  if (std::abs(a.y - b.y) > kMemeRang) return a.y < b.y ? -1 : 1;
  return a.code < b.code ? -1 : a.code > b.code ? 1 : 0;
}

/// Merges two sorted neighbours; of equal elements the left one goes first.
void fusionner(const pointDuDessin* gauche, const pointDuDessin* milieu, const pointDuDessin* fin,
               pointDuDessin* sortie) {
  const pointDuDessin* droite = milieu;
  const pointDuDessin* debutDroite = milieu;
  while (gauche < debutDroite || droite < fin) {
    const bool prendreDroite =
        gauche == debutDroite || (droite < fin && comparerPosition(*droite, *gauche) < 0);
    *sortie++ = prendreDroite ? *droite++ : *gauche++;
  }
}

/// Stable merge sort. The library's sorts ask for a strict order; this one ends, and stays within the array,
/// whatever the comparison answers (not-a-number coordinates included).
void trierParPosition(std::vector<pointDuDessin>& points) {
  std::vector<pointDuDessin> tampon(points.size());
  const std::size_t nombre = points.size();
  for (std::size_t pas = 1; pas < nombre; pas *= 2) {
    for (std::size_t i = 0; i < nombre; i += 2 * pas) {
      const std::size_t milieu = std::min(i + pas, nombre);
      const std::size_t fin = std::min(i + 2 * pas, nombre);
      fusionner(&points[i], points.data() + milieu, points.data() + fin, &tampon[i]);
    }
    points.swap(tampon);
  }
}

/// Which entries of the sorted array survive; `doublons` counts the others.
std::vector<bool> marquerSurvivants(const std::vector<pointDuDessin>& tries, std::size_t& doublons) {
  std::vector<bool> garder(tries.size(), true);
  for (std::size_t i = 0; i < tries.size();) {
    std::size_t j = i + 1;
    for (; j < tries.size() && tries[i].distanceTo(tries[j]) < kDoublon; ++j) {
      garder[j] = false;
      ++doublons;
    }
    i = j;
  }
  return garder;
}

}  // namespace

void listePointsDuDessin::delDups() {
  if (pointsTable.empty()) return;
  std::vector<pointDuDessin> tries(pointsTable.begin(), pointsTable.end());
  trierParPosition(tries);
  std::size_t doublons = 0;
  const std::vector<bool> garder = marquerSurvivants(tries, doublons);
  indexNoms.clear();
  // Deliberate (deldups-index): without duplicates the dictionary stays empty; names are found again after a
  // full renumbering or a reload.
  if (doublons == 0) return;
  pointsTable.setPas(tries.size() - doublons);
  pointsTable.RemoveAll();
  for (std::size_t i = 0; i < tries.size(); ++i) {
    if (!garder[i]) continue;
    pointsTable.Add(tries[i]);
    entrer(L" \t", nbPoint() - 1);
  }
}

void listePointsDuDessin::renumeroter(bool tous) {
  if (!tous) {
    int numero = getMaxNum() + 1;
    for (pointDuDessin& point : pointsTable)
      if (base::trim(std::string_view(point.nomPoint), " *.").empty())
        point.setNomPoint(base::formater("%d", numero++).c_str());
    return;
  }
  indexNoms.clear();
  for (int i = 0; i < nbPoint(); ++i) {
    getData(i)->setNomPoint(base::formater("%d", i + 1).c_str());
    entrer(L" \t", i);
  }
  updateDrawing();
}

}  // namespace veltora
