#pragma once

#include "arx/adesk.h"

#include <cstring>
#include <string_view>
#include <utility>

/// Text of an entity, ended by a zero; up to `Inline - 1` characters need no memory of their own. Drawings
/// hold hundreds of thousands of texts of a few characters.
template <unsigned Inline>
class AcDbShortText {
public:
  AcDbShortText() { m_text[0] = 0; }
  explicit AcDbShortText(std::wstring_view text) { take(text); }
  AcDbShortText(const AcDbShortText& other) { take(other.view()); }
  AcDbShortText(AcDbShortText&& other) noexcept : AcDbShortText() { swap(other); }
  ~AcDbShortText() { release(); }
  AcDbShortText& operator=(const AcDbShortText& other) {
    if (this != &other) assign(other.view());
    return *this;
  }
  AcDbShortText& operator=(AcDbShortText&& other) noexcept {
    swap(other);
    return *this;
  }

  void assign(std::wstring_view text) {
    AcDbShortText fresh(text);  // first: the text may lie in this object
    swap(fresh);
  }
  /// Takes file text of a few printable ASCII characters that holds nothing to resolve.
  /// @return false, nothing changed, for any other
  bool assignPlain(std::string_view fileText) {
    if (fileText.size() >= Inline) return false;
    for (const char c : fileText) {
      if (c < ' ' || c > '~' || c == '\\' || c == '^') return false;
    }
    release();
    m_size = static_cast<Adesk::UInt32>(fileText.size());
    for (std::size_t i = 0; i < fileText.size(); ++i) m_text[i] = static_cast<ACHAR>(fileText[i]);
    m_text[fileText.size()] = 0;
    return true;
  }
  [[nodiscard]] const ACHAR* c_str() const { return isLong() ? kept() : m_text; }
  [[nodiscard]] std::size_t size() const { return m_size; }
  [[nodiscard]] bool empty() const { return m_size == 0; }
  [[nodiscard]] std::wstring_view view() const { return {c_str(), m_size}; }
  void swap(AcDbShortText& other) noexcept {
    std::byte mine[sizeof m_text];
    std::memcpy(mine, m_text, sizeof m_text);
    std::memcpy(m_text, other.m_text, sizeof m_text);
    std::memcpy(other.m_text, mine, sizeof m_text);
    std::swap(m_size, other.m_size);
  }

private:
  [[nodiscard]] bool isLong() const { return m_size >= Inline; }
  /// The memory of a long text, whose address lies where a short one has its characters.
  [[nodiscard]] ACHAR* kept() const {
    ACHAR* text = nullptr;
    std::memcpy(&text, m_text, sizeof text);
    return text;
  }
  void release() {
    if (isLong()) delete[] kept();
  }
  void take(std::wstring_view text) {
    ACHAR* to = m_text;
    if (text.size() >= Inline) {
      to = new ACHAR[text.size() + 1];
      std::memcpy(m_text, &to, sizeof to);
    }
    if (!text.empty()) std::memcpy(to, text.data(), text.size() * sizeof(ACHAR));
    to[text.size()] = 0;
    m_size = static_cast<Adesk::UInt32>(text.size());
  }
  static_assert(Inline * sizeof(ACHAR) >= sizeof(ACHAR*));
  ACHAR m_text[Inline];
  Adesk::UInt32 m_size = 0;
};
