#pragma once

#include "points/exchange/forme_liste.h"

#include <string_view>
#include <vector>

namespace veltora {

/// What makes an `.xyz` list look as if its columns stood otherwise than it is read: names that are numbers
/// with decimals, X and Y that make sense exchanged only, whole numbers between 0 and 9999 as altitudes
/// beside coordinates with decimals, codes with decimals, degrees. Each comes with the options that would
/// read it so.
/// @param octets  of the whole file, of which up to a thousand lines are looked at
VELTORA_API std::vector<questionListe> verifierXyz(std::string_view octets, const reperesListe& reperes);

}  // namespace veltora
