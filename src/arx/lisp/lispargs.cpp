#include "arx/lisp/lispargs.h"

#include "arx/lisp/lispconvert.h"
#include "arx/lisp/lispinterp.h"

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

}  // namespace aclisp
