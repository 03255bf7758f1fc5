#pragma once

#include "base/remarque.h"
#include "calc/network/reseau_moindres_carres.h"

#include <string_view>

namespace veltora {

/// Reads the text of a `.mc` network file into a network, whose points and observations are emptied first.
/// Lines are turned to capitals; what a line does not fit is passed over.
/// @param remarques  gets what was passed over; null for nobody
/// @return true when at least one point and one observation were read
VELTORA_API bool lireMc(std::string_view octets, reseauMoindresCarres& reseau,
                        base::Remarques* remarques = nullptr);

}  // namespace veltora
