#pragma once

#include "base/export.h"

#include <optional>
#include <string>
#include <vector>

/// Whether coordinates stand where coordinates of the trade stand: are X and Y exchanged, are these degrees?
namespace veltora {

/// Places in the plane, drawing units.
struct placeXY {
  double x = 0.0;
  double y = 0.0;
};

/// The rectangle that holds some places.
struct rectangleXY {
  placeXY bas;
  placeXY haut;
};
/// @return nothing without a place. Places that are no finite numbers, or absent, do not count
VELTORA_API std::optional<rectangleXY> rectangleDe(const std::vector<placeXY>& places);

/// Which order of two columns makes sense.
enum class ordreXY {
  kIndecis,        ///< nothing speaks against X, Y
  kDroit,          ///< X, Y
  kEchange,        ///< Y, X
  kContradictoire  ///< the zones say one thing, the points of the drawing another
};

struct avisOrdre {
  ordreXY ordre = ordreXY::kIndecis;
  std::wstring raison;  ///< French, without capital and full stop; empty when nothing is to be told
};

/// Judges places read as X, Y: by the zones of the French systems, Lambert-93 (X 100,000 to 1,300,000, Y
/// 6,000,000 to 7,200,000) and the nine conic zones (X 1,100,000 to 2,300,000 about their false easting of
/// 1,700,000; Y 1,000,000 to 9,300,000), and by the points that the drawing has: far from them as read (ten
/// times farther than exchanged, and beyond the extents of both), near when exchanged.
/// @param dessin  of the points of the drawing, nothing without any
VELTORA_API avisOrdre jugerOrdre(const std::vector<placeXY>& places,
                                 const std::optional<rectangleXY>& dessin);

/// True when the places look like longitudes and latitudes of metropolitan France, in either order, in
/// degrees with five decimals or more.
/// @param decimales  the most that one of the values has
VELTORA_API bool semblentDegres(const std::vector<placeXY>& places, int decimales);

}  // namespace veltora
