#pragma once

#include "calc/adjustment/modele_pondere.h"

#include <array>
#include <utility>
#include <vector>

/// The measures of a weighted network as linear equations of its unknowns.
namespace veltora {

/// Columns of the unknowns: of each point's X, Y and Z, then of each round's orientation; -1 for what is no
/// unknown.
struct colonnesPonderees {
  explicit colonnesPonderees(const reseauPondere& reseau);
  std::vector<std::array<int, 3>> points;
  std::vector<int> orientations;
  int nombre = 0;
  /// The point of a column, -1 for an orientation, and its axis.
  struct place {
    int point = -1;
    int axe = 0;
  };
  [[nodiscard]] const std::vector<place>& places() const { return m_places; }

private:
  std::vector<place> m_places;
};

/// The derivative of one measure: (point, axis or orientation, coefficient).
struct lignePonderee {
  struct terme {
    int point = -1;  ///< -1 for an orientation
    int axe = 0;     ///< 0, 1, 2, or the orientation's index
    double a = 0.0;
  };
  std::array<terme, 6> termes{};
  int nombre = 0;
  void ajouter(int point, int axe, double a) { termes[static_cast<std::size_t>(nombre++)] = {point, axe, a}; }
  [[nodiscard]] auto begin() const { return termes.begin(); }
  [[nodiscard]] auto end() const { return termes.begin() + nombre; }
};

/// All derivatives, fixed points included. With g the bearing and D the length of a sight, dg/dX = cos g / D
/// and dg/dY = -sin g / D of the target, dD/dX = sin g and dD/dY = cos g, the station's with the opposite
/// sign (Ghilani, Adjustment Computations, azimuth and distance observation equations).
lignePonderee deriver(const reseauPondere& reseau, const mesurePonderee& m);

}  // namespace veltora
