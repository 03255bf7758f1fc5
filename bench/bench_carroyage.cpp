// Grids: nodes and vertices of the region grow, each for itself.

#include "arx/db/dbmain.h"
#include "arx/db/dbpl.h"
#include "drafting/grid/carroyage.h"
#include "drafting/grid/region_indexee.h"
#include "mesure.h"

#include <cmath>
#include <cstdlib>
#include <string>

namespace {

using namespace veltora;

constexpr double kX = 652000.0;
constexpr double kY = 6862000.0;

/// A wavy disk about a square of `cote` nodes a side.
AcDbPolyline region(double cote, int sommets) {
  AcDbPolyline polyligne;
  for (int i = 0; i < sommets; ++i) {
    const double direction = (i + 0.5) * 2.0 * M_PI / sommets;
    const double r = cote * 0.5 * (0.995 + 0.005 * std::sin(direction * 50.0));
    polyligne.addVertexAt(polyligne.numVerts(), {kX + r * std::cos(direction), kY + r * std::sin(direction)},
                          i % 7 == 0 ? 0.02 : 0.0);
  }
  polyligne.setClosed(true);
  return polyligne;
}

void dessiner(Mesure& mesure, const std::string& nom, int n, int cote, int sommets) {
  AcDbDatabase dessin;
  acdbHostApplicationServices()->setWorkingDatabase(&dessin);
  const AcDbPolyline polyligne = region(cote, sommets);
  int croix = 0;
  mesure(nom, n, [&] { croix = dessinerCarroyage(polyligne, 1.0, 1.0, 0.1, 0.2, true, 2).croix; });
  // A disk holds a quarter of pi of the nodes of its square.
  if (std::abs(croix - cote * cote * 0.7854) > cote * cote * 0.02) std::exit(1);
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
}

/// The border cut by the rows alone, through the index or the whole polyline each time.
void couper(Mesure& mesure, int sommets, bool indexee) {
  constexpr int kRangees = 1000;
  const AcDbPolyline polyligne = region(kRangees, sommets);
  std::size_t points = 0;
  const auto chaque = [&](auto trouver) {
    for (int i = 1; i < kRangees; ++i) {
      const double y = kY - kRangees * 0.5 + i;
      points += trouver(AcDbLine({kX - kRangees, y, 0.0}, {kX + kRangees, y, 0.0})).size();
    }
  };
  if (indexee)
    mesure("1000 rows cut, index", sommets, [&] {
      regionIndexee cherchee(polyligne);
      chaque([&](const AcDbLine& ligne) { return cherchee.couper(ligne, AcDb::kOnBothOperands); });
    });
  else
    mesure("1000 rows cut, whole polyline", sommets, [&] {
      chaque([&](const AcDbLine& ligne) {
        AcGePoint3dArray trouves;
        polyligne.intersectWith(&ligne, AcDb::kOnBothOperands, trouves);
        return trouves;
      });
    });
  if (points < 2 * (kRangees - 20)) std::exit(1);
}

}  // namespace

int main() {
  Mesure mesure;
  for (const int sommets : {1000, 10000, 100000}) couper(mesure, sommets, true);
  for (const int sommets : {1000, 10000}) couper(mesure, sommets, false);
  for (const int cote : {250, 500, 1000}) dessiner(mesure, "grid, 10000 vertices", cote * cote, cote, 10000);
  return 0;
}
