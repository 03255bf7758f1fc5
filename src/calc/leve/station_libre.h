#pragma once

#include "calc/leve/station_leve.h"

#include <string>

namespace veltora {

/// A station without coordinates, by directions and distances to known points: unknown are X, Y and the
/// bearing of the circle's zero. Weights for 1 mgr and 2 mm of centring across a direction, 3 mm + 2 ppm
/// along a distance; start by a similarity over points with a distance, or by the resection of three
/// directions (Pierlot and Van Droogenbroeck, A new three object triangulation algorithm, 2014);
/// Gauss-Newton.
/// @return empty; else French, why there is no such place: too few measures, all on a circle with the
/// station, no convergence
VELTORA_API std::wstring placerLibre(stationLeve& station);

}  // namespace veltora
