#include "points/exchange/texte_point.h"

#include "base/format.h"
#include "points/point_du_dessin.h"

namespace veltora {

std::string texteDuPoint(const pointDuDessin& point) {
  const char* nom = point.nomPoint;
  // Deliberate (texte-z-blanc): a blank column, not an empty mark; who splits lines at blanks sees the code
  // in its place.
  if (point.z == Z_ABSENT)
    return base::formater("%10s\t%15.4f\t%15.4f\t%15s\t%5d\n", nom, point.x, point.y, " ", point.code);
  return base::formater("%10s\t%15.4f\t%15.4f\t%15.4f\t%5d\n", nom, point.x, point.y, point.z, point.code);
}

}  // namespace veltora
