#pragma once

#include "arx/adesk.h"

/// Adds the host's own commands to the command stack as group "ARX"; once. Each asks for what it needs at the
/// prompts of ed/.
ARX_API void acapRegisterCommands();
