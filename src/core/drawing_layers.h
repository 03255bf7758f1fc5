#pragma once

#include "arx/db/dbsymtb.h"
#include "base/export.h"

#include <string>

namespace veltora {

/// The layer of this name, whatever the case, made when there is none.
/// @param layers  open for writing
/// @param color  index of a new layer, 1 to 255; a layer that exists keeps its own
/// @return null when no layer can bear the name
VELTORA_API AcDbObjectId layerOrNew(AcDbLayerTable& layers, const std::wstring& name, int color);

}  // namespace veltora
