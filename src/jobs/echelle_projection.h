#pragma once

#include "base/export.h"

#include <optional>
#include <string>

/// The factor between distances on the ground and in the plane of a projection.
namespace veltora {

struct echelleProjection {
  std::string systeme;      ///< "EPSG:2154"
  double projection = 1.0;  ///< length in the plane over length on the ellipsoid, at the place
  double altitude = 1.0;    ///< length on the ellipsoid over length on the ground: R / (R + z)
  [[nodiscard]] double facteur() const { return projection * altitude; }
};

/// @param nom  "L93", "CC42" to "CC50", or "EPSG:" and a number, whatever the case
/// @param z  metres above the sea, which stands for the ellipsoid (45 m between them are 7 ppm)
/// @param erreur  French, why there is none: an unknown system, a place outside of it, PROJ missing
VELTORA_API std::optional<echelleProjection> calculerEchelle(const std::string& nom, double x, double y,
                                                             double z, std::wstring& erreur);

}  // namespace veltora
