#include "calc/angles.h"

#include <cmath>
#include <cstddef>

namespace veltora {

const uniteAngle& uniteDeMode(int modeAngle) {
  const auto index = static_cast<std::size_t>(modeAngle);
  return kUnitesAngle[index < kUnitesAngle.size() ? index : 0];
}

double reduireAngle(double valeur, double tour) {
  if (tour == 0.0) return valeur;
  // Deliberate (reduire-tour-entier): a negative value too small to count beside `tour` comes out as `tour`
  // itself.
  const double r = valeur - std::floor(valeur / tour) * tour;
  return r < 0.0 ? r + tour : r;
}

double calculGisement(double stationX, double stationY, double directionX, double directionY, int modeAngle) {
  const double a = std::atan2(directionY - stationY, directionX - stationX);
  double g = 1.5707963267948966 - a;
  if (g < 0.0) g = g + 6.283185307179586;
  switch (modeAngle) {
    case 2:
      return g;
    case 1:
      return g * 180.0 / kPi;
    default:
      return g * 200.0 / kPi;
  }
}

}  // namespace veltora
