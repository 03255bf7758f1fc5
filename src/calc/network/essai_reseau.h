#pragma once

#include "calc/network/controle_reseau.h"
#include "calc/network/reseau_moindres_carres.h"

namespace veltora {

/// A copy of a network to compute again with other observations. What was computed of its points is
/// forgotten.
class essaiReseau {
public:
  explicit essaiReseau(const donneesReseau& de);

  /// Adjusts the plan, angles taken in the turn in which they fit.
  /// @return whether it converged on at least so many computed points, with observations to spare, and leaves
  /// nothing to doubt
  bool planConvient(int pointsAttendus);
  /// The same for the heights.
  bool altitudesConviennent(int pointsAttendus);
  /// What either of them left over; none when it did not come to an end.
  [[nodiscard]] const std::vector<residuObservation>& residus() const { return m_residus; }
  /// Largest residual of a kind, radians or metres.
  [[nodiscard]] double pire(signed char type) const;

  reseauMoindresCarres reseau;

private:
  void ramenerAngles();
  [[nodiscard]] bool pasTropFaux() const;
  std::vector<residuObservation> m_residus;
};

/// Computed points with X and Y; with heights.
int pointsEnPlan(const donneesReseau& reseau);
int pointsEnAltitude(const donneesReseau& reseau);

}  // namespace veltora
