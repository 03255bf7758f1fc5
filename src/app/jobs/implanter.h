#pragma once

#include "app/session/job.h"

namespace veltora::app {

/// "implanter": angles and distances to points from a station.
Run declareImplanter(CLI::App& sub);

}  // namespace veltora::app
