#pragma once

#include "app/session/job.h"

namespace veltora::app {

/// What the program does without a sub-command: opens or makes a drawing and reads commands.
Run declareSession(CLI::App& app);

}  // namespace veltora::app
