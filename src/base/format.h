#pragma once

#include <fmt/printf.h>
#include <fmt/xchar.h>

#include <string>

/// printf-style formatting, the form in which the system's own texts are written. The C locale
/// always applies. A `const char*` argument belongs to a narrow format, a `const wchar_t*` to a wide
/// one; convert with base/text.h.
namespace veltora::base {

template <class... Args>
std::string formater(const std::string& format, const Args&... args) {
  return fmt::sprintf(format, args...);
}

template <class... Args>
std::wstring formater(const std::wstring& format, const Args&... args) {
  return fmt::sprintf(format, args...);
}

}  // namespace veltora::base
