#pragma once

#include <vector>

namespace veltora {

struct sommetPolygonale {
  double x = 0.0;
  double y = 0.0;
};

inline constexpr int kCouleurBrute = 1;      ///< colour index of a traverse as measured
inline constexpr int kCouleurCompensee = 3;  ///< colour index of an adjusted traverse

/// Appends a lightweight polyline to the model space of the working drawing.
/// @return false when there is no working drawing or it cannot be opened
bool dessinerPolyligne(const std::vector<sommetPolygonale>& sommets, int couleur, bool fermee);

}  // namespace veltora
