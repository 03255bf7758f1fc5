#include "calc/traverse/dessin_polygonale.h"

#include "arx/db/dbmain.h"
#include "arx/db/dbpl.h"
#include "calc/angles.h"

#include <cmath>
#include <cstddef>
#include <memory>

namespace veltora {

bool dessinerPolyligne(const std::vector<sommetPolygonale>& sommets, int couleur, bool fermee) {
  AcDbDatabase* dessin = acdbHostApplicationServices()->workingDatabase();
  if (!dessin) return false;
  auto polyligne = std::make_unique<AcDbPolyline>(static_cast<unsigned int>(sommets.size()));
  polyligne->setColorIndex(couleur);
  unsigned int rang = 0;
  for (const sommetPolygonale& sommet : sommets) {
    polyligne->addVertexAt(rang++, AcGePoint2d(sommet.x, sommet.y), 0.0, -1.0, -1.0);
  }
  polyligne->setClosed(fermee);
  AcDbObjectPointer<AcDbBlockTableRecord> espace(dessin->modelSpaceId(), AcDb::kForWrite);
  if (espace.openStatus() != Acad::eOk) return false;
  if (espace->appendAcDbEntity(polyligne.get()) != Acad::eOk) return false;
  polyligne.release()->close();  // the drawing owns it from here
  return true;
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
