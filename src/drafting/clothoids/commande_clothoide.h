#pragma once

#include "base/export.h"

namespace veltora {

/// Asks for two radii, the ends and the meeting point of the tangents, and draws the clothoid. What is drawn
/// beside it is asked for by a keyword and lasts until the end of the process.
VELTORA_API void commandeClothoide();

}  // namespace veltora
