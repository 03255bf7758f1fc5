#pragma once

#include <cstring>
#include <memory>
#include <type_traits>

/// Fields that few objects have otherwise than by default: no more than a pointer until one is set. A copy
/// has fields of its own.
template <class Fields>
class AcDbRarely {
public:
  AcDbRarely() = default;
  AcDbRarely(const AcDbRarely& other)
      : m_own(other.m_own ? std::make_unique<Fields>(*other.m_own) : nullptr) {}
  AcDbRarely& operator=(const AcDbRarely& other) {
    AcDbRarely copy(other);
    swap(copy);
    return *this;
  }
  ~AcDbRarely() = default;
  void swap(AcDbRarely& other) noexcept { m_own.swap(other.m_own); }

  [[nodiscard]] const Fields& operator*() const { return m_own ? *m_own : defaults(); }
  [[nodiscard]] const Fields* operator->() const { return &**this; }
  /// The object's own fields, made when there were none.
  [[nodiscard]] Fields& own() {
    if (!m_own) m_own = std::make_unique<Fields>(defaults());
    return *m_own;
  }
  /// Sets one; nothing is made for a value that stands there bit for bit.
  template <class Value>
  void set(Value Fields::*field, const std::type_identity_t<Value>& value) {
    static_assert(std::is_trivially_copyable_v<Value>);
    if (std::memcmp(&((**this).*field), &value, sizeof value) != 0) own().*field = value;
  }

private:
  static const Fields& defaults() {
    static const Fields fields;
    return fields;
  }
  std::unique_ptr<Fields> m_own;
};
