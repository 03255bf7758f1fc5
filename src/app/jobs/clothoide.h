#pragma once

#include "app/session/job.h"

namespace veltora::app {

/// "clothoide": a clothoid by radii and points, listed, and drawn into a drawing.
Run declareClothoide(CLI::App& sub);

}  // namespace veltora::app
