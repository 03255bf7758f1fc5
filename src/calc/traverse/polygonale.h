#pragma once

#include <string>

/// What closed and open traverses give.
namespace veltora {

/// Misclosures of a traverse, in the units of its data: what was computed less what should be.
struct fermeturesPolygonale {
  double S = 0.0;   ///< closed only: sum of the interior angles
  double E = 0.0;   ///< angular misclosure
  double D = 0.0;   ///< length
  double Ex = 0.0;  ///< misclosure in X
  double Ey = 0.0;  ///< misclosure in Y
  double H = 0.0;   ///< misclosure in height, whatever the mode
};

/// A station with its final coordinates.
struct stationCalculee {
  std::wstring nom;
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

}  // namespace veltora
