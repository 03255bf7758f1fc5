#pragma once

#include "calc/traverse/polygonale_fermee.h"

#include <vector>

namespace veltora {

/// What the closed traverse computes on its way, one entry a row, for the report.
struct etapesFermee {
  std::vector<double> angInt;      ///< interior angles as measured
  std::vector<double> angIntCorr;  ///< less the share of the misclosure
  std::vector<double> angExtCorr;  ///< the exterior angles that follow from them, in one turn
  std::vector<double> gis;         ///< bearings of the legs
  std::vector<double> dx, dy;      ///< legs before the compass rule
  fermeturesPolygonale f;
};

}  // namespace veltora
