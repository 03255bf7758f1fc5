#pragma once

#include "arx/db/dbid.h"
#include "base/export.h"

#include <string>

namespace veltora {

/// The record of this name in a symbol table, whatever the case; null when there is none.
VELTORA_API AcDbObjectId recordNamed(const AcDbObjectId& table, const std::wstring& name);

}  // namespace veltora
