#pragma once

#include "app/session/job.h"

namespace veltora::app {

/// "veltora carnet": reads a field book.
Run declareCarnet(CLI::App& sub);

}  // namespace veltora::app
