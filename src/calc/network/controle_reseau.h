#pragma once

#include "base/remarque.h"
#include "calc/network/residus_reseau.h"
#include "calc/network/systeme_normal.h"

#include <cstddef>
#include <limits>
#include <map>
#include <vector>

/// What in an adjusted network no careful survey explains.
namespace veltora {

/// A residual that is to be doubted.
struct residuSuspect {
  residuObservation residu;
  double mediane = 0.0;  ///< of its kind, when it is many times that; 0 when it is too large by itself
};

/// How large the errors of single observations look, from the residuals that they left.
class erreursReseau {
public:
  /// @param systeme  whose rows left the residuals; one without unknowns when it is not known
  erreursReseau(const donneesReseau& reseau, const std::vector<residuObservation>& residus,
                systemeNormal systeme);
  /// |v| / sqrt(r), whose square the sum of squares loses when the observation goes: without error in the
  /// others the largest is that of the wrong one, whatever the geometry (Baarda 1968, data snooping). 0 when
  /// nothing else controls the observation, |v| when the system is not known.
  [[nodiscard]] double erreur(const residuObservation& residu) const;
  /// The median of the errors of a kind, 0 without any.
  [[nodiscard]] double mediane(signed char genre) const;

private:
  std::vector<double> m_redondances;
  std::map<signed char, double> m_medianes;
};

/// Residuals that are too large whatever the others are, and those beyond both five times the median of their
/// kind, slowly more than that above a hundred of them (an angle's across its shorter side, too, since a
/// short sight makes a large angle), and what rounding explains. The largest of each kind first. Angles that
/// count with a whole turn are left out, they have a doubt of their own.
/// @param nombre  how many are wanted at most
std::vector<residuSuspect> residusSuspects(const donneesReseau& reseau,
                                           const std::vector<residuObservation>& residus,
                                           std::size_t nombre = std::numeric_limits<std::size_t>::max());
/// The same for the plan as it was adjusted, less the angles whose residual is within five times what the
/// usual errors of the distances make of it. The adjustment is unweighted: these errors go into the angles,
/// much more where nothing else controls a distance.
std::vector<residuSuspect> suspectsDuPlan(donneesReseau& reseau,
                                          const std::vector<residuObservation>& residus,
                                          std::size_t nombre = std::numeric_limits<std::size_t>::max());
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
