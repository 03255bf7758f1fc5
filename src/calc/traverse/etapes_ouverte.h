#pragma once

#include "calc/traverse/polygonale_ouverte.h"

#include <vector>

namespace veltora {

/// What the open traverse computes on its way, for the report.
struct etapesOuverte {
  std::vector<double>
      gis;         ///< bearings as measured, not reduced; one more than rows, the last at the arrival
  double E = 0.0;  ///< share of the angular misclosure: station i takes i+1 of them
  std::vector<double> gisC;    ///< compensated bearings of the legs
  std::vector<double> dx, dy;  ///< legs on them
  std::vector<double> cx, cy;  ///< their corrections by the compass rule
  double Sx = 0.0;             ///< sums of dx, dy and of the distances
  double Sy = 0.0;
  double D = 0.0;
};

}  // namespace veltora
