#pragma once

#include "base/export.h"

/// The sheet of pages "Calculs topométriques", which no command opens: the program shows it by this port.
namespace veltora {

/// What shows the sheet, installed when the module is loaded.
VELTORA_API void installerFeuilleCalculs(void (*montrer)());

/// Shows the sheet until it is ended. @return false when nothing is installed
VELTORA_API bool montrerFeuilleCalculs();

}  // namespace veltora
