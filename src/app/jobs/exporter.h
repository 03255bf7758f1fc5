#pragma once

#include "app/session/job.h"

namespace veltora::app {

Run declareExporter(CLI::App& sub);

}  // namespace veltora::app
