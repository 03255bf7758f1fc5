#include "calc/dessin_polygonale.h"

#include "arx/db/dbmain.h"
#include "arx/db/dbpl.h"

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

}  // namespace veltora
