#pragma once

#include "app/session/job.h"

namespace veltora::app {

/// `veltora lever CARNET --canevas LISTE`.
Run declareLever(CLI::App& sub);

}  // namespace veltora::app
