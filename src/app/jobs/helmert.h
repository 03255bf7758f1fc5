#pragma once

#include "app/session/job.h"

namespace veltora::app {

Run declareHelmert(CLI::App& sub);

}  // namespace veltora::app
