#pragma once

#include "base/export.h"
#include "calc/traverse/polygonale.h"

#include <string>
#include <vector>

namespace veltora {

/// Makes sure that the code table holds the code, new rows with default values, and that its layers stand in
/// the drawing.
/// @param code  as a point may bear
/// @param modifier shows the code's row for editing in between
VELTORA_API void preparerCodeStations(int code, bool modifier);

/// Why stations cannot be placed: coordinates that are no numbers, with the names.
/// @param altitudes  theirs count too
/// @return French, empty when all of them can be placed
VELTORA_API std::wstring refusDePlacer(const std::vector<stationCalculee>& stations, bool altitudes);

/// Places stations in order, each after the removal of a point of its name: into the current table and, with
/// its block, into the drawing. Names are cut to 9 characters, the length that a point holds.
/// None is placed when one of them cannot be; see `refusDePlacer`.
/// @param altitudes false places every point without altitude
/// @return how many points got no block, since its file is missing
VELTORA_API int placerStations(const std::vector<stationCalculee>& stations, int code, bool altitudes);

/// What the user is told of points without a block; empty for 0.
VELTORA_API std::wstring texteSansBloc(int nombre);

}  // namespace veltora
