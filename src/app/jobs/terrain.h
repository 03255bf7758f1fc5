#pragma once

#include "app/session/job.h"

namespace veltora::app {

/// "terrain": makes a terrain of a list or a drawing, with contour lines, profiles and faces.
Run declareTerrain(CLI::App& sub);

}  // namespace veltora::app
