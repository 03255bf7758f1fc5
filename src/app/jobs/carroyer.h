#pragma once

#include "app/session/job.h"

namespace veltora::app {

/// "carroyer": the grid of the regions of a layer, drawn into a drawing.
Run declareCarroyer(CLI::App& sub);

}  // namespace veltora::app
