#pragma once

#include "base/export.h"

#include <cstdint>

namespace veltora {

/// Drawing defaults that the terrain module takes over when it is loaded. The class holds no data: the
/// settings are process-wide, each with its plain setter.
class VELTORA_API OrvantisConfig {
public:
  virtual ~OrvantisConfig() = default;
};

/// The settings in force.
struct ReglagesOrvantis {
  std::int32_t couleurParDefaut = 7;    ///< colour index of new layers, 0 to 256
  std::int32_t decimalesAltitudes = 2;  ///< decimals of altitude texts
  double hauteurTextes = 1.0;           ///< drawing units, above 0
  double echelleDessin = 1.0;           ///< factor of symbols and texts, above 0
  std::int64_t uniteLongueur = 0;       ///< 0 metres
};
VELTORA_API const ReglagesOrvantis& reglagesOrvantis();

VELTORA_API void setCouleurParDefaut(std::int32_t couleur);
VELTORA_API void setDecimalesAltitudes(std::int32_t decimales);
VELTORA_API void setHauteurTextes(double hauteur);
VELTORA_API void setEchelleDessin(double echelle);
VELTORA_API void setUniteLongueur(std::int64_t unite);

}  // namespace veltora
