// Conversions of arguments, with the messages that name what was expected.

#include "arx/lisp/lispconvert.h"
#include "arx/lisp/lispinterp.h"
#include "base/text.h"

namespace aclisp {

std::int32_t Args::integer(std::size_t i) const {
  if (!(*this)[i].is(Kind::kInteger)) in.failType(L"fixnump:", (*this)[i]);
  return (*this)[i].asInteger();
}

std::int32_t Args::integerOr(std::size_t i, std::int32_t fallback) const {
  return has(i) ? integer(i) : fallback;
}

double Args::number(std::size_t i) const {
  if (!(*this)[i].isNumber()) in.failType(L"numberp:", (*this)[i]);
  return (*this)[i].number();
}

const std::wstring& Args::text(std::size_t i) const {
  if (!(*this)[i].is(Kind::kString)) in.failType(L"stringp:", (*this)[i]);
  return (*this)[i].asText();
}

const Value& Args::list(std::size_t i) const {
  if (!(*this)[i].isList()) in.failType(L"listp:", (*this)[i]);
  return (*this)[i];
}

Symbol* Args::symbol(std::size_t i) const {
  if (!(*this)[i].is(Kind::kSymbol)) in.failType(L"symbolp:", (*this)[i]);
  return (*this)[i].asSymbol();
}

std::size_t Args::point(std::size_t i, ads_point result) const {
  const std::size_t count = readPoint((*this)[i], result);
  if (count == 0) in.fail(L"un point est attendu");
  return count;
}

const Name& Args::name(std::size_t i, Kind kind) const {
  if (!(*this)[i].is(kind)) in.failType(kind == Kind::kEntity ? L"lentityp:" : L"lselsetp:", (*this)[i]);
  return *static_cast<const Name*>((*this)[i].object());
}

int codeOfCharacter(wchar_t c) {
  const std::string ansi = veltora::base::narrow(std::wstring_view(&c, 1));
  const auto byte = static_cast<unsigned char>(ansi.empty() ? '?' : ansi.front());
  return byte == '?' && c != L'?' ? static_cast<int>(c) : byte;
}

wchar_t characterOfCode(std::int32_t code) {
  if (code <= 0 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return L'\0';
  if (code > 0xFF) return static_cast<wchar_t>(code);
  const char byte = static_cast<char>(code);
  const std::wstring wide = veltora::base::widen(std::string_view(&byte, 1));
  return wide.empty() ? L'\0' : wide.front();
}

}  // namespace aclisp
