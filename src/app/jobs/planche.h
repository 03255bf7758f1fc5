#pragma once

#include "app/session/job.h"

namespace veltora::app {

/// "planche": a sheet drawn around a plan.
Run declarePlanche(CLI::App& sub);

}  // namespace veltora::app
