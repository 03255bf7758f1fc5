#pragma once

#include "app/session/job.h"

namespace veltora::app {

Run declareAplatir(CLI::App& sub);

}  // namespace veltora::app
