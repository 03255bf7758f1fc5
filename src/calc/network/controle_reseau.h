#pragma once

#include "base/remarque.h"
#include "calc/network/residus_reseau.h"

#include <vector>

/// What in an adjusted network no careful survey explains.
namespace veltora {

/// A residual that is to be doubted.
struct residuSuspect {
  residuObservation residu;
  double mediane = 0.0;  ///< of its kind, when it is many times that; 0 when it is too large by itself
};

/// Residuals beyond five times the median of their kind, slowly more than that above a hundred of them (an
/// angle's across its shorter side, too, since a short sight makes a large angle) and beyond what rounding
/// explains, and those that are too large whatever the others are; the largest of each kind first. Angles
/// that count with a whole turn are left out, they have a doubt of their own.
std::vector<residuSuspect> residusSuspects(const donneesReseau& reseau,
                                           const std::vector<residuObservation>& residus);
/// Whether two equivalent observations differ more than two measures do.
bool seContredisent(const ObservationReduite& a, const ObservationReduite& b);
/// Whether measure and computed value of an angle are one direction on both sides of 0, so that the
/// difference counts as a whole turn.
bool compteUnTour(const donneesReseau& reseau, const ObservationReduite& o);
/// The shorter side of an angle, the length of a distance, from the present coordinates; metres.
double portee(const donneesReseau& reseau, const ObservationReduite& o);

/// Computed points that lie half as far again from every fixed point as their observations reach, or more: a
/// measured distance reaches as far as it is long, an angle ten times the extent of the fixed points, and
/// points pass it on.
std::vector<int> pointsTropLoin(const donneesReseau& reseau);

/// Doubts on residuals, one each.
void douterResidus(const donneesReseau& reseau, const std::vector<residuSuspect>& suspects,
                   base::Remarques& remarques);

}  // namespace veltora
