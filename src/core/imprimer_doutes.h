#pragma once

#include "base/export.h"
#include "base/remarque.h"

namespace veltora {

/// What a dialog computed or read and is to be checked, on the host's command line, a line each. Remarks that
/// are no doubts are not printed.
VELTORA_API void imprimerDoutes(const base::Remarques& remarques);

}  // namespace veltora
