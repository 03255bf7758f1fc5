#include "arx/db/dbmtextplain.h"

namespace {

constexpr std::wstring_view kWithArgument = L"AaCcHhWwQqTtFfp";  // up to the next semicolon
constexpr std::wstring_view kSwitches = L"LlOoKk";

int hexDigit(wchar_t c) {
  if (c >= L'0' && c <= L'9') return c - L'0';
  if (c >= L'A' && c <= L'F') return c - L'A' + 10;
  return c >= L'a' && c <= L'f' ? c - L'a' + 10 : -1;
}

class PlainReader {
public:
  explicit PlainReader(std::wstring_view source) : m_source(source) {}

  AcString read() {
    while (m_at < m_source.size()) {
      const wchar_t c = m_source[m_at];
      if (c == L'\\') {
        code();
      } else if (c == L'%' && percent()) {
        continue;
      } else {
        if (c != L'{' && c != L'}') m_plain += c;
        ++m_at;
      }
    }
    return std::move(m_plain);
  }

private:
  [[nodiscard]] wchar_t ahead(std::size_t distance) const {
    return m_at + distance < m_source.size() ? m_source[m_at + distance] : L'\0';
  }

  void put(std::size_t length, wchar_t shown) {
    if (shown) m_plain += shown;
    m_at += length;
  }

  void code() {
    const wchar_t kind = ahead(1);
    switch (kind) {
      case L'\0':
        return put(1, L'\\');
      case L'P':
      case L'N':
      case L'X':
        return put(2, L'\n');
      case L'~':
        return put(2, L' ');
      case L'\\':
      case L'{':
      case L'}':
        return put(2, kind);
      case L'S':
        return stacked();
      case L'U':
        return unicode();
      default:
        break;
    }
    if (kWithArgument.find(kind) != std::wstring_view::npos) {
      const std::size_t end = m_source.find(L';', m_at);
      m_at = end == std::wstring_view::npos ? m_source.size() : end + 1;
    } else if (kSwitches.find(kind) != std::wstring_view::npos) {
      put(2, L'\0');
    } else {
      put(1, L'\\');
    }
  }

  // "\Sabove^below;" with "/", "^" or "#" in between.
  void stacked() {
    m_at += 2;
    while (m_at < m_source.size() && m_source[m_at] != L';') {
      const wchar_t c = m_source[m_at];
      if (c == L'\\' && ahead(1)) ++m_at;
      m_plain += c == L'\\' ? m_source[m_at] : c == L'^' || c == L'#' ? L'/' : c;
      ++m_at;
      if (c == L'^' && m_at < m_source.size() && m_source[m_at] == L' ') ++m_at;
    }
    if (m_at < m_source.size()) ++m_at;
  }

  // "\U+00E9"
  void unicode() {
    int value = 0;
    for (std::size_t i = 0; i < 4; ++i) {
      const int digit = hexDigit(ahead(3 + i));
      if (digit < 0 || ahead(2) != L'+') return put(1, L'\\');
      value = value * 16 + digit;
    }
    put(7, static_cast<wchar_t>(value));
  }

  bool percent() {
    if (ahead(1) != L'%') return false;
    switch (ahead(2)) {
      case L'd':
      case L'D':
        put(3, L'\u00B0');
        return true;
      case L'p':
      case L'P':
        put(3, L'\u00B1');
        return true;
      case L'c':
      case L'C':
        put(3, L'\u2300');
        return true;
      default:
        return false;
    }
  }

  std::wstring_view m_source;
  std::size_t m_at = 0;
  AcString m_plain;
};

}  // namespace

AcString acdbPlainText(std::wstring_view contents) { return PlainReader(contents).read(); }
