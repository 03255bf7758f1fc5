#pragma once

#include "base/export.h"

#include <array>
#include <string>
#include <vector>

namespace veltora {

struct reseauCompense;

struct pointCompare {
  std::wstring nom;
  std::array<double, 3> d{};  ///< second epoch less first, on the points that did not move; metres
  bool plan = false;          ///< which of them count
  bool altitude = false;
  double test = 0.0;  ///< of its motion, over the limit of 5 % shared among the points
  bool bouge = false;
};

struct comparaisonEpoques {
  std::vector<pointCompare> points;
  double m0 = 0.0;      ///< of both epochs
  double test = 0.0;    ///< of all common points
  double limite = 0.0;  ///< of it, 5 %
  [[nodiscard]] bool congruents() const { return test <= limite; }
};

/// Compares two adjustments of one network: T = d^T Q^+ d / (h m0^2) of the common coordinates, with Q the
/// sum of both cofactors and h its rank, against Fisher's F (Pelzer 1971, congruence test). Where it fails,
/// the point with the largest test of its own is taken out as moved, on the datum of those that stay
/// (S-transformation, for free networks), until the others are congruent.
/// @return empty, or why there is no comparison: no common computed points, too many of them, no redundancy
VELTORA_API std::wstring comparerEpoques(const reseauCompense& premiere, const reseauCompense& seconde,
                                         comparaisonEpoques& resultat);

VELTORA_API std::vector<std::wstring> lignesEpoques(const comparaisonEpoques& comparaison);

}  // namespace veltora
