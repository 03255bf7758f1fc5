#pragma once

#include "app/session/job.h"

namespace veltora::app {

Run declareImporter(CLI::App& sub);

}  // namespace veltora::app
