#pragma once

#include "app/session/job.h"

namespace veltora::app {

Run declarePolygonale(CLI::App& sub);

}  // namespace veltora::app
