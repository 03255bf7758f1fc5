#include "points/tri_points.h"

#include "base/text.h"
#include "points/comparer_numeros.h"

namespace veltora {
namespace {

template <class Valeur>
std::vector<int> rangsPar(const listePointsDuDessin::Tableau& points, Valeur pointDuDessin::*champ) {
  const pointDuDessin* p = points.data();
  return rangsTries(points.size(), [p, champ](std::size_t a, std::size_t b) {
    return p[a].*champ < p[b].*champ ? -1 : p[b].*champ < p[a].*champ ? 1 : 0;
  });
}

std::vector<int> rangsParNumero(const listePointsDuDessin::Tableau& points) {
  std::vector<cleNumero> cles;
  cles.reserve(points.size());
  for (const pointDuDessin& point : points) cles.emplace_back(base::widen(point.nomPoint));
  return rangsTries(points.size(),
                    [&cles](std::size_t a, std::size_t b) { return comparerNumeros(cles[a], cles[b]); });
}

}  // namespace

std::vector<int> rangsPoints(const listePointsDuDessin& table, colonnePoints colonne) {
  const listePointsDuDessin::Tableau& points = *table.getData();
  switch (colonne) {
    case colonnePoints::kNumero:
      return rangsParNumero(points);
    case colonnePoints::kX:
      return rangsPar(points, &pointDuDessin::x);
    case colonnePoints::kY:
      return rangsPar(points, &pointDuDessin::y);
    case colonnePoints::kZ:
      return rangsPar(points, &pointDuDessin::z);
    case colonnePoints::kCode:
      return rangsPar(points, &pointDuDessin::code);
    default:
      break;
  }
  std::vector<int> rangs(points.size());
  for (std::size_t i = 0; i < rangs.size(); ++i) rangs[i] = static_cast<int>(i);
  return rangs;
}

}  // namespace veltora
