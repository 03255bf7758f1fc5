#include "base/text.h"

#include <locale.h>
#include <array>
#include <clocale>
#include <cwctype>

namespace veltora::base {
namespace {

// Windows-1252, bytes 0x80 to 0x9F; the rest of the page equals Latin-1. 0 marks an unassigned byte.
constexpr std::array<char16_t, 32> kHighHalf = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

wchar_t widenByte(unsigned char byte) {
  if (byte < 0x80 || byte >= 0xA0) return byte;
  const char16_t mapped = kHighHalf[byte - 0x80];
  return mapped ? static_cast<wchar_t>(mapped) : static_cast<wchar_t>(byte);
}

/// The byte of a character, or 0 when the page does not hold it (NUL itself included).
unsigned char narrowChar(wchar_t c) {
  const auto code = static_cast<std::uint32_t>(c);
  if (code < 0x80 || (code >= 0xA0 && code < 0x100)) return static_cast<unsigned char>(code);
  for (std::size_t i = 0; i < kHighHalf.size(); ++i) {
    const std::uint32_t mapped = kHighHalf[i] ? kHighHalf[i] : static_cast<std::uint32_t>(0x80 + i);
    if (mapped == code) return static_cast<unsigned char>(0x80 + i);
  }
  return 0;
}

/// One locale for case mapping, so that the user's LC_CTYPE changes nothing.
locale_t unicodeLocale() {
  static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  return locale;
}

bool inAnsi(wchar_t c) { return c == 0 || narrowChar(c) != 0; }

/// A mapping that stays on its side of the code page. Otherwise the capitals of "µ" and "ƒ", which lie
/// outside, would both become "?" in a name, and those of "ı" and "ſ", which lie inside, "I" and "S".
wchar_t mapCase(wchar_t c, wint_t (*mapping)(wint_t, locale_t)) {
  const auto mapped = static_cast<wchar_t>(mapping(static_cast<wint_t>(c), unicodeLocale()));
  return mapped == c || inAnsi(mapped) == inAnsi(c) ? mapped : c;
}

std::string mapAnsi(std::string_view text, wchar_t (*mapping)(wchar_t)) {
  std::string result(text);
  for (char& c : result) c = static_cast<char>(narrowChar(mapping(widenByte(static_cast<unsigned char>(c)))));
  return result;
}

/// Reads one UTF-8 sequence at `i`. @return its length, or 0 when the bytes are not well formed.
std::size_t decodeOne(std::string_view bytes, std::size_t i, std::uint32_t& code) {
  const auto lead = static_cast<unsigned char>(bytes[i]);
  if (lead < 0x80) {
    code = lead;
    return 1;
  }
  const std::size_t length = lead >= 0xF0 && lead < 0xF5   ? 4
                             : lead >= 0xE0 && lead < 0xF0 ? 3
                             : lead >= 0xC2 && lead < 0xE0 ? 2
                                                           : 0;
  if (length == 0 || i + length > bytes.size()) return 0;
  code = lead & (0xFFU >> (length + 1));
  for (std::size_t k = 1; k < length; ++k) {
    const auto next = static_cast<unsigned char>(bytes[i + k]);
    if ((next & 0xC0U) != 0x80U) return 0;
    code = (code << 6U) | (next & 0x3FU);
  }
  constexpr std::uint32_t kSmallest[5] = {0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
  return code < kSmallest[length] || code > 0x10FFFF || surrogate ? 0 : length;
}

}  // namespace

std::wstring widen(std::string_view ansi) {
  std::wstring result;
  result.reserve(ansi.size());
  for (const char c : ansi) result.push_back(widenByte(static_cast<unsigned char>(c)));
  return result;
}

std::string narrow(std::wstring_view wide) {
  std::string result;
  result.reserve(wide.size());
  for (const wchar_t c : wide) {
    const unsigned char byte = narrowChar(c);
    result.push_back(byte || c == 0 ? static_cast<char>(byte) : '?');
  }
  return result;
}

std::string toUtf8(std::wstring_view wide) {
  std::string result;
  result.reserve(wide.size());
  for (const wchar_t c : wide) {
    auto code = static_cast<std::uint32_t>(c);
    if (code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) code = 0xFFFD;
    if (code < 0x80) {
      result.push_back(static_cast<char>(code));
      continue;
    }
    const unsigned extra = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    constexpr unsigned kLead[4] = {0, 0xC0, 0xE0, 0xF0};
    result.push_back(static_cast<char>(kLead[extra] | (code >> (6 * extra))));
    for (unsigned k = extra; k-- > 0;)
      result.push_back(static_cast<char>(0x80U | ((code >> (6 * k)) & 0x3FU)));
  }
  return result;
}

std::wstring fromUtf8(std::string_view utf8) {
  std::wstring result;
  result.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size();) {
    std::uint32_t code = 0;
    const std::size_t length = decodeOne(utf8, i, code);
    result.push_back(length ? static_cast<wchar_t>(code) : L'\uFFFD');
    i += length ? length : 1;
  }
  return result;
}

bool isUtf8(std::string_view bytes) {
  std::uint32_t code = 0;
  for (std::size_t i = 0; i < bytes.size();) {
    const std::size_t length = decodeOne(bytes, i, code);
    if (length == 0) return false;
    i += length;
  }
  return true;
}

wchar_t toLower(wchar_t c) { return mapCase(c, towlower_l); }
wchar_t toUpper(wchar_t c) { return mapCase(c, towupper_l); }

std::wstring toLower(std::wstring_view text) {
  std::wstring result(text);
  for (wchar_t& c : result) c = toLower(c);
  return result;
}

std::wstring toUpper(std::wstring_view text) {
  std::wstring result(text);
  for (wchar_t& c : result) c = toUpper(c);
  return result;
}

std::string toLowerAnsi(std::string_view text) {
  return mapAnsi(text, [](wchar_t c) { return toLower(c); });
}

std::string toUpperAnsi(std::string_view text) {
  return mapAnsi(text, [](wchar_t c) { return toUpper(c); });
}

int compareNoCase(std::wstring_view a, std::wstring_view b) {
  const std::size_t common = a.size() < b.size() ? a.size() : b.size();
  for (std::size_t i = 0; i < common; ++i) {
    if (a[i] == b[i]) continue;
    const wchar_t left = toLower(a[i]);
    const wchar_t right = toLower(b[i]);
    if (left != right) return left < right ? -1 : 1;
  }
  return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

int compareNoCaseAnsi(std::string_view a, std::string_view b) { return compareNoCase(widen(a), widen(b)); }

std::wstring trimLeft(std::wstring_view text, std::wstring_view set) {
  const std::size_t first = text.find_first_not_of(set);
  return first == std::wstring_view::npos ? std::wstring() : std::wstring(text.substr(first));
}

std::wstring trimRight(std::wstring_view text, std::wstring_view set) {
  const std::size_t last = text.find_last_not_of(set);
  return last == std::wstring_view::npos ? std::wstring() : std::wstring(text.substr(0, last + 1));
}

std::wstring trim(std::wstring_view text, std::wstring_view set) {
  return trimRight(trimLeft(text, set), set);
}

std::string trim(std::string_view text, std::string_view set) {
  const std::size_t first = text.find_first_not_of(set);
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(set) - first + 1));
}

}  // namespace veltora::base
