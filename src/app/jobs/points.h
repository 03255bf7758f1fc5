#pragma once

#include "app/session/job.h"

namespace veltora::app {

Run declarePoints(CLI::App& sub);

}  // namespace veltora::app
