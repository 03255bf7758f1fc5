#pragma once

#include "base/export.h"
#include "calc/network/donnees_reseau.h"

#include <string>

namespace veltora {

/// The network as text: known points, points to compute, observations, each behind "\r\n"; angles in grades.
/// @throws std::invalid_argument for an observation whose station or target is no point
VELTORA_API std::wstring listerReseau(const donneesReseau& reseau);

/// An observation in the words of the listing, without line end: "Angle NORD A P =       50.0000 (grades)".
/// @throws std::invalid_argument as above
std::wstring nommerObservation(const donneesReseau& reseau, const ObservationReduite& observation);

/// The same without the padding of its columns, for a sentence.
std::wstring citerObservation(const donneesReseau& reseau, const ObservationReduite& observation);

/// The log's line, behind "\r\n", of a point that got coordinates.
std::wstring solutionTrouvee(const pointACalculer& p);

}  // namespace veltora
