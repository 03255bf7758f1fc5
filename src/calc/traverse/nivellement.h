#pragma once

#include "base/export.h"
#include "base/growable_array.h"
#include "calc/traverse/obs_polygonale.h"

#include <array>
#include <string_view>
#include <vector>

/// Heights along a traverse, closed or open, and how their misclosure is spread (`modeNivellement`: 0 aucun,
/// 1 simple, 2 distance, 3 racine). By distance is least squares when the variance of a height difference
/// grows with the length of its leg, simple when it is the same everywhere (Ghilani, Adjustment Computations,
/// differential leveling); by root shares like the standard deviations.
namespace veltora {

inline constexpr std::array<std::wstring_view, 4> kModesNivellement = {L"aucun", L"simple", L"distance",
                                                                       L"racine"};

/// The words of a `modeNivellement`; those of "aucun" for any other number.
VELTORA_API std::wstring_view motDeNivellement(int modeNivellement);
/// 1 to 3: the mode spreads the misclosure.
VELTORA_API bool compenseAltitudes(int modeNivellement);

/// The shares of a height misclosure, row by row.
struct corrections {
  double H = 0.0;   ///< misclosure that is spread
  double SL = 0.0;  ///< sum of L
  double SR = 0.0;  ///< sum of the square roots of L
  /// Straight distance from (X[i], Y[i]) to the next one, the first one behind the last.
  std::vector<double> L;
  std::vector<double> c;   ///< share of row i
  std::vector<double> dz;  ///< height differences before correction
};

/// Measures the legs on adjusted coordinates and shares H out. Sums of zero are not guarded: the shares are
/// then infinite or not a number.
/// @param X, Y one entry a row
corrections repartirFermeture(int modeNivellement, double H, const lignesPolygonale& lignes,
                              const base::CArray<double>& X, const base::CArray<double>& Y);

/// Z of every row from the departure height `Z0`, and each `dz` replaced by its corrected value: entry i
/// takes the corrected `dz` of row i-1.
void compenserAltitudes(const corrections& parts, double Z0, lignesPolygonale& lignes,
                        base::CArray<double>& Z);

/// Z of every row by plain addition; the rows stay and the misclosure remains in the last leg.
void cheminerAltitudes(double Z0, const lignesPolygonale& lignes, base::CArray<double>& Z);

}  // namespace veltora
