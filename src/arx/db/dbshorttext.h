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
  AcDbShortText() { m_short[0] = 0; }
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
  [[nodiscard]] const ACHAR* c_str() const { return isLong() ? m_long : m_short; }
  [[nodiscard]] std::size_t size() const { return m_size; }
  [[nodiscard]] bool empty() const { return m_size == 0; }
  [[nodiscard]] std::wstring_view view() const { return {c_str(), m_size}; }
  void swap(AcDbShortText& other) noexcept {
    std::byte mine[sizeof(m_short)];
    std::memcpy(mine, m_short, sizeof(m_short));
    std::memcpy(m_short, other.m_short, sizeof(m_short));
    std::memcpy(other.m_short, mine, sizeof(m_short));
    std::swap(m_size, other.m_size);
  }

private:
  [[nodiscard]] bool isLong() const { return m_size >= Inline; }
  void release() {
    if (isLong()) delete[] m_long;
  }
  void take(std::wstring_view text) {
    ACHAR* to = m_short;
    if (text.size() >= Inline) to = m_long = new ACHAR[text.size() + 1];
    if (!text.empty()) std::memcpy(to, text.data(), text.size() * sizeof(ACHAR));
    to[text.size()] = 0;
    m_size = text.size();
  }
  union {
    ACHAR m_short[Inline];
    ACHAR* m_long;
  };
  std::size_t m_size = 0;
};
