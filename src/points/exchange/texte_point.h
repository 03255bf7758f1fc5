#pragma once

#include "base/export.h"

#include <string>

namespace veltora {

struct pointDuDessin;

/// One line of a coordinate file, in the ANSI code page, with its line end: name, X, Y, Z with four decimals
/// and code, in columns parted by tabs. Without altitude the column Z is blank.
VELTORA_API std::string texteDuPoint(const pointDuDessin& point);

}  // namespace veltora
