#pragma once

#include "base/remarque.h"
#include "calc/adjustment/modele_pondere.h"
#include "calc/network/formules_poids.h"

#include <string>
#include <string_view>

namespace veltora {

/// Reads a `.mc` file with the words that only a weighted adjustment reads, behind what is told of a line:
/// `s=0.006` (standard deviation: metres, mgr of angles; one for each measure of the line), `l=850` (length
/// of a levelled line, metres), `tour=2` (the angle is a reading of the circle in that round of the station),
/// on a point's line `approche`, `libre` and `s=` (observed coordinates). "?" in place of a measure is one
/// that is planned. A told weight p of an observation counts as the standard deviation 1/sqrt(p), radians or
/// metres.
/// @param remarques  gets what was passed over, and doubts
/// @return empty, or why the file is refused as a whole, with its line: a standard deviation or weight that
/// is none or not positive, unknown words with "=", no points, no observations
VELTORA_API std::wstring lireMcPondere(std::string_view octets, reseauPondere& reseau,
                                       base::Remarques& remarques);

/// Gives measures without a standard deviation the one of the weight formulas, once all points have
/// coordinates. @return the name of a measure for which they give no positive weight; else empty
VELTORA_API std::wstring peserParFormules(reseauPondere& reseau, formulesPoids& formules);

}  // namespace veltora
