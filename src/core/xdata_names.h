#pragma once

#include "arx/adesk.h"

namespace veltora {

// Applications under whose names the system keeps extended data.
/// Marks a point block, and holds the sections that LISP routines keep at entities.
inline constexpr const ACHAR* kXDataVeltora = L"VARNPLUS";

}  // namespace veltora
