#pragma once

#include "app/session/job.h"

namespace veltora::app {

/// "veltora feuille": works the sheet "Calculs topométriques".
Run declareFeuille(CLI::App& sub);

}  // namespace veltora::app
