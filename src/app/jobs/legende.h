#pragma once

#include "app/session/job.h"

namespace veltora::app {

Run declareLegende(CLI::App& sub);

}  // namespace veltora::app
