#pragma once

#include "base/export.h"
#include "calc/network/reseau_moindres_carres.h"

#include <string>
#include <string_view>
#include <vector>

namespace veltora {

/// Reads the text of a `.mc` network file (Windows-1252) into a network, whose points and observations are
/// emptied first. Lines are turned to capitals; what a line does not fit is passed over.
/// @param remarques French sentences with the line's number about what was passed over; null for none
/// @return true when at least one point and one observation were read
VELTORA_API bool lireMc(std::string_view octets, reseauMoindresCarres& reseau,
                        std::vector<std::wstring>* remarques = nullptr);

}  // namespace veltora
