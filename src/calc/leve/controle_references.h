#pragma once

#include "base/remarque.h"
#include "calc/leve/station_leve.h"

#include <string>
#include <vector>

namespace veltora {

/// Marks references that do not fit and doubts them with their likely cause: a single false one, swapped X
/// and Y, angles of another unit, distances of another unit or scale.
/// @param libre  the place comes from the references themselves
/// @param nom  of the station  @param ligne  of the book, that opens it
VELTORA_API void controlerReferences(stationLeve& station, bool libre, const std::wstring& nom, int ligne,
                                     base::Remarques& remarques);

/// Doubts a scale that all measured distances to known points have in common, and that the single ones are
/// too short to show: the projection's, above all.
/// @param stations  whose places do not come from the distances  @param facteur  that was applied
VELTORA_API void controlerEchelle(const std::vector<const stationLeve*>& stations, double facteur,
                                  base::Remarques& remarques);

}  // namespace veltora
