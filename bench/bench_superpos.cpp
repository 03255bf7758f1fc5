// Clearing of overlaps: blocks in a dense plan with three attributes each, by the index of boxes and by the
// full search.

#include "drafting/texts/superpositions.h"
#include "mesure.h"

#include <cmath>
#include <random>
#include <vector>

namespace {

using namespace veltora;

/// Three boxes a block; the plan grows with the number of blocks, its density stays.
/// @param espace  side of the square that a block has for itself, drawing units
std::vector<annotationPlane> plan(int blocs, double espace) {
  std::mt19937 hasard(1);
  std::uniform_real_distribution<double> lieu(0.0, espace * std::sqrt(blocs));
  std::vector<annotationPlane> annotations;
  for (int i = 0; i < blocs; ++i) {
    const double x = 650000.0 + lieu(hasard);
    const double y = 6860000.0 + lieu(hasard);
    for (const double haut : {0.5, -1.0, -2.5}) {
      annotationPlane a;
      a.boite = {x + 0.75, y + haut, 3.0, 1.0};
      a.ancreX = x;
      a.ancreY = y;
      a.rayon = 0.55;
      annotations.push_back(a);
    }
  }
  return annotations;
}

void mesurer(Mesure& mesure, const char* nom, int blocs, rechercheVoisins recherche, double espace = 5.0) {
  std::vector<annotationPlane> annotations = plan(blocs, espace);
  double reste = 0.0;
  mesure(nom, blocs, [&] {
    reduireSuperpositions(
        annotations, [](int, int, int) { return true; }, [&](double surface) { reste = surface; }, recherche);
  });
  std::printf("  area left in common: %.3f\n", reste);
}

}  // namespace

int main() {
  Mesure mesure;
  for (const int blocs : {500, 1000, 2000, 8000, 32000})
    mesurer(mesure, "superpos, index", blocs, rechercheVoisins::kIndex);
  for (const int blocs : {1000, 2000, 4000})
    mesurer(mesure, "superpos, dense places", blocs, rechercheVoisins::kIndex, 1.5);
  for (const int blocs : {500, 1000, 2000})
    mesurer(mesure, "superpos, full search", blocs, rechercheVoisins::kToutes);
}
