#pragma once

#include "calc/leve/station_leve.h"

namespace veltora {

/// Orientation at a known place: the mean of the bearings less the directions, weighted by the distances (a
/// long sight tells a bearing better). Fills `g0`, `emq`, the height when the place has none, and what each
/// reference misses.
/// @return false when no reference has a direction and lies away from the station
VELTORA_API bool orienter(stationLeve& station);

}  // namespace veltora
