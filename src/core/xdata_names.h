#pragma once

#include "arx/adesk.h"

namespace veltora {

// Applications under whose names the system keeps extended data.
/// Marks a point block, and holds the sections that LISP routines keep at entities.
inline constexpr const ACHAR* kXDataVeltora = L"VARNPLUS";
/// Holds what a polyline along a clothoid was made from.
inline constexpr const ACHAR* kXDataClothoide = L"CLVELTORA4";
/// Marks the paper of a sheet, and holds its size and scale.
inline constexpr const ACHAR* kXDataPlanche = L"VELTORAPLANCHE";

}  // namespace veltora
