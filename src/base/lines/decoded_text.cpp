#include "base/lines/decoded_text.h"

#include "base/text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace veltora::base {
namespace {

constexpr std::string_view kMarkUtf8 = "\xEF\xBB\xBF";
constexpr std::string_view kMarkLittle = "\xFF\xFE";
constexpr std::string_view kMarkBig = "\xFE\xFF";

/// UTF-16 without its mark to UTF-8. Half a pair of surrogates, and a last byte alone, become U+FFFD.
std::string convertUtf16(std::string_view bytes, bool little) {
  const auto unit = [bytes, little](std::size_t i) {
    const auto first = static_cast<unsigned char>(bytes[i]);
    const auto second = static_cast<unsigned char>(bytes[i + 1]);
    return static_cast<std::uint32_t>(little ? first | second << 8 : first << 8 | second);
  };
  const auto within = [](std::uint32_t code, std::uint32_t first) {
    return code >= first && code < first + 0x400;
  };
  std::wstring text;
  text.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    std::uint32_t code = unit(i);
    if (within(code, 0xD800) && i + 3 < bytes.size() && within(unit(i + 2), 0xDC00)) {
      code = 0x10000 + ((code - 0xD800) << 10) + (unit(i + 2) - 0xDC00);
      i += 2;
    }
    text.push_back(static_cast<wchar_t>(code));
  }
  if (bytes.size() % 2 != 0) text.push_back(L'\uFFFD');
  return toUtf8(text);
}

/// Whether two ASCII characters begin the bytes as UTF-16 writes them, which nothing else does.
bool beginsAsUtf16(std::string_view bytes, bool little) {
  const auto unit = [bytes, little](std::size_t at) {
    const char low = bytes[little ? at : at + 1];
    return bytes[little ? at + 1 : at] == '\0' && low > '\0';
  };
  return bytes.size() >= 4 && unit(0) && unit(2);
}

bool isAscii(std::string_view bytes) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080ULL;
  while (bytes.size() >= sizeof(std::uint64_t)) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data(), sizeof(word));
    if (word & kHighBits) return false;
    bytes.remove_prefix(sizeof(word));
  }
  return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

}  // namespace

std::string_view withoutMark(std::string_view bytes) {
  while (bytes.starts_with(kMarkUtf8)) bytes.remove_prefix(kMarkUtf8.size());
  return bytes;
}

DecodedText::DecodedText(std::string_view bytes) {
  const bool marked = bytes.starts_with(kMarkLittle) || bytes.starts_with(kMarkBig);
  const bool little = marked ? bytes.starts_with(kMarkLittle) : beginsAsUtf16(bytes, true);
  if (marked || little || beginsAsUtf16(bytes, false)) {
    m_converted = convertUtf16(bytes.substr(marked ? kMarkLittle.size() : 0), little);
    bytes = m_converted;
  }
  m_bytes = withoutMark(bytes);
  m_utf8 = !isAscii(m_bytes) && base::isUtf8(m_bytes);
}

std::wstring DecodedText::wide(std::string_view piece) const {
  return m_utf8 ? fromUtf8(piece) : widen(piece);
}

}  // namespace veltora::base
