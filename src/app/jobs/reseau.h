#pragma once

#include "app/session/job.h"

namespace veltora::app {

Run declareReseau(CLI::App& sub);

}  // namespace veltora::app
