#pragma once

#include "base/export.h"

#include <cstdint>
#include <string>
#include <string_view>

/// Text conversions. Wide text holds one Unicode code point per `wchar_t`; narrow text is bytes in
/// Windows-1252, the system's ANSI code page; the terminal and file names are UTF-8.
namespace veltora::base {

/// Windows-1252 bytes to wide text. The five unassigned bytes map to the control code of the same value.
VELTORA_API std::wstring widen(std::string_view ansi);
/// Wide text to Windows-1252 bytes; a character outside the code page becomes "?".
VELTORA_API std::string narrow(std::wstring_view wide);

/// Strict, lossless conversions for the program's own texts. A byte that is no UTF-8 becomes U+FFFD.
VELTORA_API std::string toUtf8(std::wstring_view wide);
VELTORA_API std::wstring fromUtf8(std::string_view utf8);
/// True when every byte belongs to a well-formed UTF-8 sequence (no overlong forms, no surrogates).
VELTORA_API bool isUtf8(std::string_view bytes);

/// Unicode simple case mapping, whatever the process locale. A letter of the code page whose other case lies
/// outside it stays as it is ("µ", "ƒ"), and so does one from outside whose other case lies in it ("ı", "ſ"):
/// names that differ by such letters never become the same.
VELTORA_API wchar_t toLower(wchar_t c);
VELTORA_API wchar_t toUpper(wchar_t c);
VELTORA_API std::wstring toLower(std::wstring_view text);
VELTORA_API std::wstring toUpper(std::wstring_view text);
/// The same on Windows-1252 bytes.
VELTORA_API std::string toLowerAnsi(std::string_view text);
VELTORA_API std::string toUpperAnsi(std::string_view text);

/// Three-way comparison ignoring case: negative, 0 or positive.
VELTORA_API int compareNoCase(std::wstring_view a, std::wstring_view b);
/// The same on Windows-1252 bytes.
VELTORA_API int compareNoCaseAnsi(std::string_view a, std::string_view b);

/// Equal but for case.
inline bool equalNoCase(std::wstring_view a, std::wstring_view b) { return compareNoCase(a, b) == 0; }

/// A digit of ASCII.
template <class Char>
constexpr bool isDigit(Char c) {
  return c >= Char('0') && c <= Char('9');
}

/// Removes the characters of `set` from both ends, the left or the right.
VELTORA_API std::wstring trim(std::wstring_view text, std::wstring_view set = L" \t");
VELTORA_API std::wstring trimLeft(std::wstring_view text, std::wstring_view set = L" \t");
VELTORA_API std::wstring trimRight(std::wstring_view text, std::wstring_view set = L" \t");
VELTORA_API std::string trim(std::string_view text, std::string_view set = " \t");

}  // namespace veltora::base
