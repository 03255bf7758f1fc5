#include "stakeout/un_point.h"

#include "calc/angles.h"
#include "core/compteur_identifiants.h"

#include <cmath>

namespace veltora {

std::int32_t compteurGroupes = 120394;

unPoint::unPoint() : id(compteurIdentifiants::commun().suivant()) {}

double gisementImplantation(double x1, double y1, double x2, double y2) {
  const double gisement = kPi / 2.0 - std::atan2(y2 - y1, x2 - x1);
  return gisement < 0.0 ? gisement + 2.0 * kPi : gisement;
}

double gisementImplantation(const unPoint& de, const unPoint& vers) {
  return de.situe() && vers.situe() ? gisementImplantation(de.x, de.y, vers.x, vers.y) : Z_ABSENT;
}

double distanceImplantation(const unPoint& de, const unPoint& vers) {
  return de.situe() && vers.situe() ? std::hypot(vers.x - de.x, vers.y - de.y) : Z_ABSENT;
}

double enGrades(double radians) { return radians * 200.0 / kPi; }

}  // namespace veltora
