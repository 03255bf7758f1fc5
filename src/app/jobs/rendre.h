#pragma once

#include "app/session/job.h"

namespace veltora::app {

/// "rendre": a drawing on paper, as PDF, SVG or PNG.
Run declareRendre(CLI::App& sub);

}  // namespace veltora::app
