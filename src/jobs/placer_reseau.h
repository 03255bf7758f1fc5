#pragma once

#include "calc/network/reseau_moindres_carres.h"
#include "calc/traverse/polygonale.h"

#include <vector>

namespace veltora {

/// The known points, in the order of the network. An altitude that is unknown or no number is Z_ABSENT.
std::vector<stationCalculee> pointsCanevas(const reseauMoindresCarres& reseau);
/// The points to compute that are usable, likewise. One whose X and Y are unknown (usable in height only) has
/// no place and is left out; one whose X and Y are no numbers stays, and nothing is placed then.
std::vector<stationCalculee> pointsCalcules(const reseauMoindresCarres& reseau);
/// All points with X and Y, likewise, whatever `utilisable` says of them since the heights were computed.
std::vector<stationCalculee> pointsSitues(const reseauMoindresCarres& reseau);

/// Writes points into the current table and the drawing, each after the removal of a point of its name; names
/// are cut to the length that a point holds.
/// @return as `placerStations`
VELTORA_API int placerReseau(const std::vector<stationCalculee>& points);

}  // namespace veltora
