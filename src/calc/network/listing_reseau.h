#pragma once

#include "base/export.h"
#include "calc/network/reseau_moindres_carres.h"

#include <string>

namespace veltora {

/// The network as text: known points, points to compute, observations, each behind "\r\n"; angles in grades.
/// @throws std::invalid_argument for an observation whose station or target is no point
VELTORA_API std::wstring listerReseau(const reseauMoindresCarres& reseau);

/// An observation in the words of the listing, without line end: "Angle NORD A P =       50.0000 (grades)".
/// @throws std::invalid_argument as above
std::wstring nommerObservation(const reseauMoindresCarres& reseau, const ObservationReduite& observation);

}  // namespace veltora
