#pragma once

#include "base/growable_array.h"
#include "calc/traverse/obs_polygonale.h"

#include <vector>

namespace veltora {

struct uniteAngle;

struct sommetPolygonale {
  double x = 0.0;
  double y = 0.0;
};

inline constexpr int kCouleurBrute = 1;      ///< colour index of a traverse as measured
inline constexpr int kCouleurCompensee = 3;  ///< colour index of an adjusted traverse

/// Appends a lightweight polyline to the model space of the working drawing.
/// @return false when there is no working drawing or it cannot be opened
bool dessinerPolyligne(const std::vector<sommetPolygonale>& sommets, int couleur, bool fermee);

/// The traverse as measured: raw angles, nothing corrected, not closed.
/// @param gisement  bearing of the first leg, in the unit of the angles
void dessinerTraceBrut(const sommetPolygonale& depart, double gisement, const uniteAngle& unite,
                       const lignesPolygonale& lignes);
/// The adjusted traverse: the departure, then every computed point.
void dessinerTraceCompense(const sommetPolygonale& depart, const base::CArray<double>& X,
                           const base::CArray<double>& Y, bool fermee);

}  // namespace veltora
