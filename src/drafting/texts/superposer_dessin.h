#pragma once

#include "arx/db/dbid.h"

#include <vector>

namespace veltora {

/// Clears the overlaps between the visible attributes of block references, which move, and one-line texts,
/// which stay; other entities are passed over. Prints its progress. One step of undo. The user may stop it;
/// what has been placed by then stays.
void superposerDessin(const std::vector<AcDbObjectId>& entites);

}  // namespace veltora
