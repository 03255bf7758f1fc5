#pragma once

#include <string>

namespace veltora::base {

/// A field of a file whose columns are parted by semicolons: in quotes, its own ones doubled, when it holds a
/// semicolon, a quote or a line end.
template <class Char>
std::basic_string<Char> champCsv(const std::basic_string<Char>& texte) {
  std::basic_string<Char> cite(1, '"');
  bool aCiter = false;
  for (const Char c : texte) {
    cite.append(c == '"' ? 2 : 1, c);
    aCiter = aCiter || c == ';' || c == '"' || c == '\r' || c == '\n';
  }
  cite += '"';
  return aCiter ? cite : texte;
}

}  // namespace veltora::base
