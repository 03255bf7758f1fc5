#include "calc/traverse/dessin_polygonale.h"

#include "arx/db/dbpl.h"
#include "calc/angles.h"
#include "core/drawing_space.h"

#include <cmath>
#include <cstddef>
#include <memory>
#include <utility>

namespace veltora {

bool dessinerPolyligne(const std::vector<sommetPolygonale>& sommets, int couleur, bool fermee) {
  auto polyligne = std::make_unique<AcDbPolyline>(static_cast<unsigned int>(sommets.size()));
  polyligne->setColorIndex(couleur);
  unsigned int rang = 0;
  for (const sommetPolygonale& sommet : sommets) {
    polyligne->addVertexAt(rang++, AcGePoint2d(sommet.x, sommet.y), 0.0, -1.0, -1.0);
  }
  polyligne->setClosed(fermee);
  return !addToModelSpace(std::move(polyligne)).isNull();
}

void dessinerTraceBrut(const sommetPolygonale& depart, double gisement, const uniteAngle& unite,
                       const lignesPolygonale& lignes) {
  std::vector<sommetPolygonale> sommets{depart};
  double g = gisement;
  for (std::size_t i = 0; i < lignes.size(); ++i) {
    const sommetPolygonale dernier = sommets.back();
    sommets.push_back({dernier.x + std::sin(g * unite.versRadians) * lignes[i].distance,
                       dernier.y + std::cos(g * unite.versRadians) * lignes[i].distance});
    if (i + 1 < lignes.size()) g = reduireAngle(g + lignes[i + 1].angle - unite.demi(), unite.tour);
  }
  dessinerPolyligne(sommets, kCouleurBrute, false);
}

void dessinerTraceCompense(const sommetPolygonale& depart, const base::CArray<double>& X,
                           const base::CArray<double>& Y, bool fermee) {
  std::vector<sommetPolygonale> sommets{depart};
  for (std::size_t i = 0; i < X.size(); ++i) sommets.push_back({X[i], Y[i]});
  dessinerPolyligne(sommets, kCouleurCompensee, fermee);
}

}  // namespace veltora
