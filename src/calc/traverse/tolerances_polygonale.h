#pragma once

#include "base/export.h"

#include <cstddef>

/// What a traverse may fail to close by before its results are to be checked.
namespace veltora {

struct tolerancesPolygonale {
  double angulaire = 0.02;   ///< grades, times the root of the number of angles; above 0
  double lineaire = 1000.0;  ///< length over planimetric misclosure, at least; above 0
};

/// The angular misclosure allowed: errors of single angles add up like their root.
/// @param nombreAngles  closed: the rows; open: one more, for the closing angle
/// @return in the unit of `modeAngle`
VELTORA_API double limiteAngulaire(const tolerancesPolygonale& tolerances, std::size_t nombreAngles,
                                   int modeAngle);

/// The height misclosure allowed, metres: 0.1 times the root of the length in kilometres, the limit of rough
/// levelling (Davis, Foote and Kelly, Surveying: Theory and Practice, 0.4 foot times the root of the miles).
/// @param longueur  metres
VELTORA_API double limiteAltitude(double longueur);

}  // namespace veltora
