#include "calc/traverse/tolerances_polygonale.h"

#include "calc/angles.h"

#include <cmath>

namespace veltora {

double limiteAngulaire(const tolerancesPolygonale& tolerances, std::size_t nombreAngles, int modeAngle) {
  const double grades = tolerances.angulaire * std::sqrt(static_cast<double>(nombreAngles));
  return grades * uniteDeMode(modeAngle).tour / kUnitesAngle[0].tour;
}

double limiteAltitude(double longueur) { return 0.1 * std::sqrt(longueur / 1000.0); }

}  // namespace veltora
