#pragma once

#include "arx/adesk.h"

namespace veltora {

/// Attribute tags under which a point block carries its data.
struct VELTORA_API attribsPoints {
  AcString numero = L"NUMPT";
  AcString code = L"CODE";
  AcString altitude = L"Z";
  AcString observation = L"OBS";
};

/// The tags in force; built at start-up and never changed.
VELTORA_API extern const attribsPoints etiquettesPoints;

}  // namespace veltora
