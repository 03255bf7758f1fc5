#pragma once

#include "base/remarque.h"
#include "calc/network/reseau_moindres_carres.h"

#include <string_view>
#include <vector>

namespace veltora {

/// The lines from which the points and the observations of a network were read, in their order; 0 for a point
/// that observations name only.
struct lignesMc {
  std::vector<int> points;
  std::vector<int> observations;
};

/// Reads the text of a `.mc` network file into a network, whose points and observations are emptied first.
/// Lines are turned to capitals; what a line does not fit is passed over.
/// @param remarques  gets what was passed over; null for nobody
/// @param lignes  gets the numbers of the lines; null for nobody
/// @return true when at least one point and one observation were read
VELTORA_API bool lireMc(std::string_view octets, reseauMoindresCarres& reseau,
                        base::Remarques* remarques = nullptr, lignesMc* lignes = nullptr);

}  // namespace veltora
