#pragma once

#include "app/session/job.h"

namespace veltora::app {

Run declareTableau(CLI::App& sub);

}  // namespace veltora::app
