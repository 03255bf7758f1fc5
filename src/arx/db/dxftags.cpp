#include "arx/db/dxftags.h"

#include "arx/db/dxfquote.h"
#include "base/numbers.h"
#include "base/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace {

struct KindRange {
  int first;
  int last;
  DxfKind kind;
};

constexpr KindRange kKinds[] = {
    {-5, -5, DxfKind::kUnknown},   {-4, -4, DxfKind::kText},       {-2, -1, DxfKind::kName},
    {0, 4, DxfKind::kText},        {5, 5, DxfKind::kHandle},       {6, 9, DxfKind::kText},
    {10, 18, DxfKind::kPoint},     {19, 59, DxfKind::kReal},       {60, 79, DxfKind::kInt16},
    {90, 99, DxfKind::kInt32},     {100, 102, DxfKind::kText},     {105, 105, DxfKind::kHandle},
    {110, 112, DxfKind::kPoint},   {113, 149, DxfKind::kReal},     {160, 169, DxfKind::kInt64},
    {170, 179, DxfKind::kInt16},   {210, 211, DxfKind::kPoint},    {212, 239, DxfKind::kReal},
    {270, 289, DxfKind::kInt16},   {290, 299, DxfKind::kBool},     {300, 309, DxfKind::kText},
    {310, 319, DxfKind::kBinary},  {320, 369, DxfKind::kPointer},  {370, 389, DxfKind::kInt16},
    {390, 399, DxfKind::kPointer}, {400, 409, DxfKind::kInt16},    {410, 419, DxfKind::kText},
    {420, 429, DxfKind::kInt32},   {430, 439, DxfKind::kText},     {440, 459, DxfKind::kInt32},
    {460, 469, DxfKind::kReal},    {470, 479, DxfKind::kText},     {480, 481, DxfKind::kPointer},
    {999, 1003, DxfKind::kText},   {1004, 1004, DxfKind::kBinary}, {1005, 1005, DxfKind::kPointer},
    {1006, 1009, DxfKind::kText},  {1010, 1013, DxfKind::kPoint},  {1014, 1059, DxfKind::kReal},
    {1060, 1070, DxfKind::kInt16}, {1071, 1071, DxfKind::kInt32},
};

constexpr wchar_t kRawByte = 0xDC00;  // lone surrogates that stand for bytes outside UTF-8

std::string_view trimBlanks(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r'))
    text.remove_suffix(1);
  return text;
}

/// Takes one line from the front, without its end.
std::string_view takeLine(std::string_view& rest) {
  const std::size_t end = rest.find('\n');
  std::string_view line = rest.substr(0, end);
  rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  return line;
}

std::size_t sequenceLength(unsigned char lead) {
  return lead < 0xC2 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 1;
}

std::wstring decodeBytes(std::string_view text) {
  if (veltora::base::isUtf8(text)) return veltora::base::fromUtf8(text);
  std::wstring wide;
  for (std::size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i]);
    const std::string_view piece = text.substr(i, sequenceLength(lead));
    if (veltora::base::isUtf8(piece)) {
      wide += veltora::base::fromUtf8(piece);
      i += piece.size();
    } else {
      wide += static_cast<wchar_t>(kRawByte + lead);
      ++i;
    }
  }
  return wide;
}

int hexDigit(wchar_t c) {
  if (c >= L'0' && c <= L'9') return c - L'0';
  if (c >= L'A' && c <= L'F') return c - L'A' + 10;
  if (c >= L'a' && c <= L'f') return c - L'a' + 10;
  return -1;
}

/// Value of "\U+hhhh" at a place, -1 when it is none.
int unicodeEscape(std::wstring_view text, std::size_t at) {
  if (text.size() - at < 7 || (text[at + 1] != L'U' && text[at + 1] != L'u') || text[at + 2] != L'+')
    return -1;
  int value = 0;
  for (std::size_t i = at + 3; i < at + 7; ++i) {
    const int digit = hexDigit(text[i]);
    if (digit < 0) return -1;
    value = value * 16 + digit;
  }
  return value > 0 ? value : -1;
}

void appendEscaped(std::wstring& result, int value) {
  const bool low = value >= 0xDC00 && value < 0xE000;
  if (low && !result.empty() && result.back() >= 0xD800 && result.back() < 0xDC00) {
    result.back() = static_cast<wchar_t>(0x10000 + ((result.back() - 0xD800) << 10) + (value - 0xDC00));
  } else {
    result += static_cast<wchar_t>(value);
  }
}

bool isRawByte(wchar_t c) { return c >= kRawByte + 0x80 && c <= kRawByte + 0xFF; }

}  // namespace

DxfKind dxfKind(int code) {
  // The table is sorted and short; the common low codes are found first.
  for (const KindRange& range : kKinds) {
    if (code <= range.last) return code >= range.first ? range.kind : DxfKind::kUnknown;
  }
  return DxfKind::kUnknown;
}

std::wstring dxfToWide(std::string_view fileText) {
  std::wstring raw = decodeBytes(fileText);
  if (raw.find_first_of(L"\\^") == std::wstring::npos) return raw;
  std::wstring result;
  result.reserve(raw.size());
  for (std::size_t i = 0; i < raw.size(); ++i) {
    const wchar_t c = raw[i];
    const wchar_t next = i + 1 < raw.size() ? raw[i + 1] : L'\0';
    const int escape = c == L'\\' ? unicodeEscape(raw, i) : -1;
    if (escape >= 0) {
      appendEscaped(result, escape);
      i += 6;
    } else if (c == L'^' && (next == L' ' || (next > L'@' && next <= L'_'))) {
      result += next == L' ' ? L'^' : static_cast<wchar_t>(next - L'@');
      ++i;
    } else {
      result += c;
    }
  }
  return result;
}

std::string dxfFromWide(std::wstring_view text) {
  std::string result;
  result.reserve(text.size() + 8);
  for (std::size_t i = 0; i < text.size(); ++i) {
    const wchar_t c = text[i];
    if (c == L'^') {
      result += "^ ";
    } else if (c >= 0 && c < 0x20) {
      result += '^';
      result += static_cast<char>(c + '@');
    } else if (c >= 0x20 && c < 0x80) {
      result += static_cast<char>(c);
    } else if (isRawByte(c)) {
      result += static_cast<char>(c - kRawByte);
    } else {
      result += veltora::base::toUtf8(text.substr(i, 1));
    }
  }
  return result;
}

char* dxfPutCode(char* to, int code) {
  const auto digit = [](int value) { return static_cast<char>('0' + value % 10); };
  if (code >= 0 && code < 1000) {
    *to++ = code < 100 ? ' ' : digit(code / 100);
    *to++ = code < 10 ? ' ' : digit(code / 10);
    *to++ = digit(code);
  } else {
    if (code > -10 && code < 0) *to++ = ' ';
    to = std::to_chars(to, to + 12, code).ptr;
  }
  *to++ = '\n';
  return to;
}

void dxfAppendCode(std::string& text, int code) {
  char line[16];
  text.append(line, static_cast<std::size_t>(dxfPutCode(line, code) - line));
}

char* dxfPutHandle(char* to, Adesk::UInt64 handle) {
  char* const end = std::to_chars(to, to + 16, handle, 16).ptr;
  for (; to != end; ++to) {
    if (*to >= 'a') *to = static_cast<char>(*to - 'a' + 'A');
  }
  return end;
}

void dxfAppendValue(std::string& text, std::string_view value) {
  const auto isLineEnd = [](char c) { return c == '\n' || c == '\r'; };
  constexpr std::size_t kShort = 24;  // looked through faster than a search is called
  const bool plain = value.size() < kShort ? std::none_of(value.begin(), value.end(), isLineEnd)
                                           : value.find('\n') == value.npos && value.find('\r') == value.npos;
  if (plain) {
    text += value;
  } else {
    for (const char c : value) {
      if (isLineEnd(c)) text += '^';
      text += isLineEnd(c) ? static_cast<char>(c + '@') : c;
    }
  }
  text += '\n';
}

std::size_t dxfFormatReal(char* buffer, double value) {
  if (!std::isfinite(value)) value = 0.0;
  char* end = std::to_chars(buffer, buffer + 32, value).ptr;
  for (const char* p = buffer; p != end; ++p) {
    if (*p == '.' || *p == 'e') return static_cast<std::size_t>(end - buffer);
  }
  *end++ = '.';
  *end++ = '0';
  return static_cast<std::size_t>(end - buffer);
}

bool dxfParseReal(std::string_view text, double& value) {
  text = trimBlanks(text);
  if (veltora::base::lireReelExact(text, value)) return true;
  // What is too small for a double is refused there, but is a number all the same.
  if (text.empty() || text.find_first_not_of("0123456789+-.eE") != std::string_view::npos) return false;
  const std::size_t exponent = text.find_first_of("eE");
  if (exponent == std::string_view::npos || text.substr(exponent + 1, 1) != "-") return false;
  const std::string_view digits = text.substr(exponent + 2);
  if (digits.empty() || digits.find_first_not_of("0123456789") != std::string_view::npos) return false;
  double mantissa = 0.0;
  if (!veltora::base::lireReelExact(text.substr(0, exponent), mantissa)) return false;
  value = std::copysign(0.0, mantissa);
  return true;
}

bool dxfParseInteger(std::string_view text, Adesk::Int64& value) {
  text = trimBlanks(text);
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  Adesk::Int64 read = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), read);
  if (error == std::errc() && end == text.data() + text.size()) {
    value = read;
    return true;
  }
  double real = 0.0;
  if (!dxfParseReal(text, real) || real != std::trunc(real) || std::fabs(real) > 9e15) return false;
  value = static_cast<Adesk::Int64>(real);
  return true;
}

bool dxfParseHandle(std::string_view text, Adesk::UInt64& value) {
  text = trimBlanks(text);
  Adesk::UInt64 read = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), read, 16);
  if (error != std::errc() || end != text.data() + text.size()) return false;
  value = read;
  return true;
}

bool DxfTagText::Cursor::next(DxfTag& tag) {
  if (m_rest.empty()) return false;
  std::string_view rest = m_rest;
  const std::string_view codeLine = trimBlanks(takeLine(rest));
  int code = 0;
  const auto [end, error] = std::from_chars(codeLine.data(), codeLine.data() + codeLine.size(), code);
  const bool whole = error == std::errc() && end == codeLine.data() + codeLine.size();
  const bool hasValue = rest.data() > m_rest.data() && rest.data()[-1] == '\n';
  if (!whole || !hasValue) {
    m_rest = {};
    return false;
  }
  tag.code = code;
  tag.line = 0;
  tag.value = takeLine(rest);
  m_rest = rest;
  return true;
}

void DxfTagText::append(int code, std::string_view value) {
  dxfAppendCode(m_text, code);
  dxfAppendValue(m_text, value);
}

void DxfTagText::appendInteger(int code, Adesk::Int64 value) {
  char buffer[24];
  append(code, {buffer, static_cast<std::size_t>(std::to_chars(buffer, buffer + 24, value).ptr - buffer)});
}

void DxfTagText::appendReal(int code, double value) {
  char buffer[40];
  append(code, {buffer, dxfFormatReal(buffer, value)});
}

void DxfTagText::appendHandle(int code, Adesk::UInt64 handle) {
  char buffer[24];
  append(code, {buffer, static_cast<std::size_t>(dxfPutHandle(buffer, handle) - buffer)});
}

std::string dxfQuote(std::string_view value) {
  constexpr std::size_t kLongest = 80;
  std::size_t characters = 0;
  for (std::size_t i = 0; i < value.size(); ++i) {
    const bool starts = (static_cast<unsigned char>(value[i]) & 0xC0) != 0x80;
    if (starts && ++characters > kLongest) return std::string(value.substr(0, i)) + "…";
  }
  return std::string(value);
}
