#pragma once

#include "arx/adesk.h"

#include <string>

/// Gives the command line a LISP evaluator with everything of the host: fills the ports `evaluate` and
/// `isLispCommand`. To be called once the other ports are set; a second call starts over with nothing
/// defined. The evaluator lives as long as the ports.
ARX_API void aclispInstall();
