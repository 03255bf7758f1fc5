#pragma once

#include "arx/lisp/lispinterp.h"

namespace aclisp {

/// Reads the forms of a text one after the other. Lists remember where they stood.
class Reader {
public:
  /// @param source name of the text for messages, empty for what was typed
  /// @param more supplies a further line while a form is open; without it such a text is an error
  Reader(Interpreter& in, const std::wstring& text, const std::wstring& source,
         std::function<std::optional<std::wstring>()> more = {});
  /// @return false at the end of the text. Fails with a `LispError` that names the line.
  bool next(Value& form);

private:
  bool skipBlanks();
  bool skipBlockComment();
  bool fetch();
  Value form();
  Value list();
  Value string();
  Value atom();
  wchar_t escape();
  [[nodiscard]] bool atEnd() const { return m_at >= m_text.size(); }
  [[noreturn]] void fail(const std::wstring& message, std::uint32_t line) const;
  [[noreturn]] void failOpen() const;

  Interpreter& m_in;
  std::wstring m_text;
  std::wstring m_source;
  std::uint32_t m_number;
  std::function<std::optional<std::wstring>()> m_more;
  std::size_t m_at = 0;
  std::uint32_t m_line = 1;
  std::vector<std::uint32_t> m_open;  // lines of the brackets that are open
};

/// The number that a whole text is: 12, -1.5, 2e3; integers beyond 32 bits are reals. Nothing for another
/// text.
std::optional<Value> readNumber(const std::wstring& text);

}  // namespace aclisp
