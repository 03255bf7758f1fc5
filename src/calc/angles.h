#pragma once

#include "base/export.h"

#include <array>
#include <cmath>
#include <string_view>

/// Angle units and bearings. Angles are held in the unit in force (`modeAngle`: 0 grades, 1 degres, 2
/// radians) and are never converted when the unit changes. X grows to the east, Y to the north; a bearing
/// (gisement) is measured clockwise from +Y, so that a leg of length d on bearing g moves a point by sin(g)*d
/// in X and cos(g)*d in Y.
namespace veltora {

struct uniteAngle {
  std::wstring_view motCle;  ///< in files and in dialogs
  std::wstring_view nom;     ///< in messages
  double tour;               ///< full circle
  double versRadians;        ///< factor to radians
  [[nodiscard]] constexpr double demi() const { return tour * 0.5; }
};

inline constexpr double kPi = 3.141592653589793;
inline constexpr double kTour = 2.0 * kPi;  ///< in radians
inline constexpr int kRadians = 2;          ///< the `modeAngle` of radians

/// Indexed by `modeAngle`.
inline constexpr std::array<uniteAngle, 3> kUnitesAngle = {{
    {L"grades", L"grades", 400.0, 0.015707963267948967},
    {L"degres", L"degrés", 360.0, 0.017453292519943295},
    {L"radians", L"radians", 6.283185307179586, 1.0},
}};

/// The unit of a `modeAngle`; grades for any other number.
VELTORA_API const uniteAngle& uniteDeMode(int modeAngle);

/// Reduces an angle into one turn, from 0 included to `tour` excluded, but for rounding: a negative value too
/// small to count beside `tour` gives `tour` itself. A `tour` of 0.0 leaves the value as it is. The remainder
/// x - floor(x / y) y is that of Knuth, The Art of Computer Programming, volume 1, 1.2.4.
VELTORA_API double reduireAngle(double valeur, double tour);

/// Radians within half a turn of 0: what std::remainder gives for a whole turn, to the last bit.
inline double dansUnDemiTour(double radians) {
  const double taille = std::fabs(radians);
  if (taille <= kPi) return radians;
  // One turn off: the difference of numbers within twice each other is exact.
  if (taille < 3.0 * kPi) return radians > 0.0 ? radians - kTour : radians + kTour;
  return std::remainder(radians, kTour);
}

/// Bearing of a direction point as seen from a station: pi/2 less the polar angle, since it turns clockwise
/// from +Y and the polar angle the other way from +X.
/// @param stationX, stationY, directionX, directionY plane coordinates in drawing units
/// @param modeAngle 0 grades, 1 degres, 2 radians
/// @return clockwise from +Y, in the unit of modeAngle, from 0 to one turn; a quarter turn when the points
/// coincide
VELTORA_API double calculGisement(double stationX, double stationY, double directionX, double directionY,
                                  int modeAngle);

}  // namespace veltora
