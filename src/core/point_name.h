#pragma once

#include "base/text.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace veltora {

/// Longest name of a point, in bytes of the ANSI code page.
inline constexpr int kPointNameLength = 9;

/// A name as a point holds it: in the ANSI code page, cut.
inline std::string pointName(std::wstring_view name) {
  return base::narrow(name.substr(0, kPointNameLength));
}

}  // namespace veltora
