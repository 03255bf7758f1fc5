#pragma once

#include "arx/db/dxftags.h"

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

inline std::wstring_view acdbTextOf(const std::wstring& value) { return value; }
inline std::string_view acdbTextOf(const DxfTagText& value) { return value.text(); }

/// A text that many objects have alike, as tags of attributes or the mark of a point block: objects that get
/// the same one share it. Sixteen bytes for an object; a copy shares.
template <class Value>
class AcDbShared {
public:
  using Text = decltype(acdbTextOf(std::declval<const Value&>()));

  [[nodiscard]] const Value& operator*() const {
    static const Value empty;
    return m_value ? *m_value : empty;
  }
  [[nodiscard]] const Value* operator->() const { return &**this; }
  [[nodiscard]] Text text() const { return acdbTextOf(**this); }
  void set(Text text) {
    if (text == this->text()) return;
    if (text.empty()) return m_value.reset();
    std::weak_ptr<const Value>& slot = slotOf(text);
    std::shared_ptr<const Value> known = slot.lock();
    if (!known || acdbTextOf(*known) != text) {
      known = std::make_shared<const Value>(text);
      slot = known;
    }
    m_value = std::move(known);
  }
  void swap(AcDbShared& other) noexcept { m_value.swap(other.m_value); }

private:
  /// The last values of all; one that is pushed out lives on with its objects.
  static std::weak_ptr<const Value>& slotOf(Text text) {
    static std::array<std::weak_ptr<const Value>, 64> recent;
    return recent[std::hash<Text>()(text) % recent.size()];
  }
  std::shared_ptr<const Value> m_value;
};
