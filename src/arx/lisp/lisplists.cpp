#include "arx/lisp/lisplists.h"

#include "arx/lisp/lispinterp.h"
#include "arx/lisp/lisppredicates.h"
#include "arx/lisp/lispprinter.h"

#include <vector>

namespace aclisp {

namespace {

/// c[ad]{1,4}r: the letters of the name from right to left.
template <char... Steps>
Value access(Args& a) {
  Value value = a[0];
  const char steps[] = {Steps...};
  for (std::size_t i = sizeof...(Steps); i-- > 0;) {
    if (!value.isList()) a.in.failType(L"listp:", value);
    const Value part = steps[i] == 'a' ? value.car() : value.cdr();
    value = part;
  }
  return value;
}

Value consFunction(Args& a) { return Value::cons(a[0], a[1]); }

Value listFunction(Args& a) {
  ListBuilder list;
  for (const Value& v : a.values()) list.add(v);
  return list.take();
}

/// (list* a b rest): the last argument is the rest.
Value listStar(Args& a) {
  Value list = a[a.size() - 1];
  for (std::size_t i = a.size() - 1; i-- > 0;) list = Value::cons(a[i], std::move(list));
  return list;
}

Value appendFunction(Args& a) {
  if (a.size() == 0) return {};
  ListBuilder list;
  for (std::size_t i = 0; i + 1 < a.size(); ++i)
    for (const Value& v : Elements(a.list(i))) list.add(v);
  const Value& last = a.list(a.size() - 1);
  if (list.empty()) return last;
  list.dot(last);
  return list.take();
}

Value reverseFunction(Args& a) {
  Value result;
  for (const Value& v : Elements(a.list(0))) result = Value::cons(v, std::move(result));
  return result;
}

const Value& proper(Args& a, std::size_t i) {
  const Value* at = &a.list(i);
  while (at->is(Kind::kCons)) at = &at->cdr();
  if (!at->isNil()) a.in.failType(L"listp:", *at);
  return a[i];
}

Value lengthFunction(Args& a) { return Value::integer(static_cast<std::int32_t>(listLength(proper(a, 0)))); }

Value nthFunction(Args& a) {
  const Value* at = &a.list(1);
  std::int32_t n = a.integer(0);
  if (n < 0) a.in.fail(L"argument incorrect : un rang positif est attendu");
  for (; n > 0 && at->is(Kind::kCons); --n) at = &at->cdr();
  return at->car();
}

Value lastFunction(Args& a) {
  const Value* at = &a.list(0);
  while (at->cdr().is(Kind::kCons)) at = &at->cdr();
  return at->car();
}

Value assocFunction(Args& a) {
  for (const Value& pair : Elements(a.list(1))) {
    if (!pair.isList()) a.in.fail(L"liste d'association incorrecte : " + printed(pair, true, 80));
    if (pair && equalValues(a[0], pair.car())) return pair;
  }
  return {};
}

Value memberFunction(Args& a) {
  for (const Value* at = &a.list(1); at->is(Kind::kCons); at = &at->cdr())
    if (equalValues(a[0], at->car())) return *at;
  return {};
}

Value substFunction(Args& a) {
  ListBuilder list;
  for (const Value& v : Elements(a.list(2))) list.add(equalValues(v, a[1]) ? a[0] : v);
  return list.take();
}

constexpr Subr kLists[] = {
    function(L"CAR", access<'a'>, 1, 1),
    function(L"CDR", access<'d'>, 1, 1),
    function(L"CAAR", access<'a', 'a'>, 1, 1),
    function(L"CADR", access<'a', 'd'>, 1, 1),
    function(L"CDAR", access<'d', 'a'>, 1, 1),
    function(L"CDDR", access<'d', 'd'>, 1, 1),
    function(L"CAAAR", access<'a', 'a', 'a'>, 1, 1),
    function(L"CAADR", access<'a', 'a', 'd'>, 1, 1),
    function(L"CADAR", access<'a', 'd', 'a'>, 1, 1),
    function(L"CADDR", access<'a', 'd', 'd'>, 1, 1),
    function(L"CDAAR", access<'d', 'a', 'a'>, 1, 1),
    function(L"CDADR", access<'d', 'a', 'd'>, 1, 1),
    function(L"CDDAR", access<'d', 'd', 'a'>, 1, 1),
    function(L"CDDDR", access<'d', 'd', 'd'>, 1, 1),
    function(L"CAAAAR", access<'a', 'a', 'a', 'a'>, 1, 1),
    function(L"CAAADR", access<'a', 'a', 'a', 'd'>, 1, 1),
    function(L"CAADAR", access<'a', 'a', 'd', 'a'>, 1, 1),
    function(L"CAADDR", access<'a', 'a', 'd', 'd'>, 1, 1),
    function(L"CADAAR", access<'a', 'd', 'a', 'a'>, 1, 1),
    function(L"CADADR", access<'a', 'd', 'a', 'd'>, 1, 1),
    function(L"CADDAR", access<'a', 'd', 'd', 'a'>, 1, 1),
    function(L"CADDDR", access<'a', 'd', 'd', 'd'>, 1, 1),
    function(L"CDAAAR", access<'d', 'a', 'a', 'a'>, 1, 1),
    function(L"CDAADR", access<'d', 'a', 'a', 'd'>, 1, 1),
    function(L"CDADAR", access<'d', 'a', 'd', 'a'>, 1, 1),
    function(L"CDADDR", access<'d', 'a', 'd', 'd'>, 1, 1),
    function(L"CDDAAR", access<'d', 'd', 'a', 'a'>, 1, 1),
    function(L"CDDADR", access<'d', 'd', 'a', 'd'>, 1, 1),
    function(L"CDDDAR", access<'d', 'd', 'd', 'a'>, 1, 1),
    function(L"CDDDDR", access<'d', 'd', 'd', 'd'>, 1, 1),
    function(L"CONS", consFunction, 2, 2),
    function(L"LIST", listFunction, 0, kAny),
    function(L"VL-LIST*", listStar, 1, kAny),
    function(L"APPEND", appendFunction, 0, kAny),
    function(L"REVERSE", reverseFunction, 1, 1),
    function(L"LENGTH", lengthFunction, 1, 1),
    function(L"NTH", nthFunction, 2, 2),
    function(L"LAST", lastFunction, 1, 1),
    function(L"ASSOC", assocFunction, 2, 2),
    function(L"MEMBER", memberFunction, 2, 2),
    function(L"SUBST", substFunction, 3, 3),
};

}  // namespace

std::span<const Subr> listFunctions() { return kLists; }

}  // namespace aclisp
