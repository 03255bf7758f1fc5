#pragma once

#include "app/session/job.h"

namespace veltora::app {

Run declareLisp(CLI::App& sub);

}  // namespace veltora::app
