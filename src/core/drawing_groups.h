#pragma once

#include "arx/db/dbid.h"
#include "base/export.h"

#include <vector>

namespace veltora {

/// Joins entities of the working drawing to a group without a name ("*A1", "*A2"...), so that one pick takes
/// them all. Null ids are passed over. @return the group; null for no entity and when the drawing refuses
VELTORA_API AcDbObjectId groupEntities(const std::vector<AcDbObjectId>& entities);

}  // namespace veltora
