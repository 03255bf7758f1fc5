#pragma once

#include "base/remarque.h"
#include "calc/traverse/polygonale.h"

#include <vector>

namespace veltora {

/// Says, in French, which names a table of points cuts, and which are then the same.
/// @param genre  "deux stations", "deux points": what bears one name
/// @param suite  what becomes of them: "seule la dernière est placée"
void remarquerNoms(const std::vector<stationCalculee>& stations, const wchar_t* genre, const wchar_t* suite,
                   base::Remarques& remarques);

}  // namespace veltora
