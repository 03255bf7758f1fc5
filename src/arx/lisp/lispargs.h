#pragma once

#include "arx/lisp/lispvalue.h"

#include <span>
#include <string>

namespace aclisp {

class Interpreter;

/// Arguments of a built-in function, with the conversions that fail with a French message.
class ARX_API Args {
public:
  Args(Interpreter& interpreter, std::span<Value> values) : in(interpreter), m_values(values) {}
  [[nodiscard]] std::size_t size() const { return m_values.size(); }
  /// Nil beyond the end.
  const Value& operator[](std::size_t i) const { return i < m_values.size() ? m_values[i] : kNilValue; }
  [[nodiscard]] std::span<Value> values() const { return m_values; }
  [[nodiscard]] bool has(std::size_t i) const { return i < m_values.size() && m_values[i]; }

  [[nodiscard]] std::int32_t integer(std::size_t i) const;
  [[nodiscard]] double number(std::size_t i) const;
  [[nodiscard]] const std::wstring& text(std::size_t i) const;
  [[nodiscard]] const Value& list(std::size_t i) const;  ///< nil allowed
  [[nodiscard]] Symbol* symbol(std::size_t i) const;
  /// Two or three numbers; z 0 when absent. @return how many there were
  std::size_t point(std::size_t i, ads_point result) const;
  [[nodiscard]] const Name& name(std::size_t i, Kind kind) const;
  /// An integer, or the fallback when the argument is absent or nil.
  [[nodiscard]] std::int32_t integerOr(std::size_t i, std::int32_t fallback) const;

  Interpreter& in;

private:
  std::span<Value> m_values;
};

/// A built-in function: with evaluated arguments (`call`), or a special form that gets them as they stand.
struct Subr {
  const wchar_t* name;
  Value (*call)(Args& arguments);
  Value (*special)(Interpreter& in, const Value& rest);
  int least;
  int most;  ///< -1 for any number
};
inline constexpr int kAny = -1;
inline constexpr Subr function(const wchar_t* name, Value (*call)(Args&), int least, int most) {
  return {name, call, nullptr, least, most};
}
inline constexpr Subr specialForm(const wchar_t* name, Value (*call)(Interpreter&, const Value&)) {
  return {name, nullptr, call, 0, kAny};
}

}  // namespace aclisp
