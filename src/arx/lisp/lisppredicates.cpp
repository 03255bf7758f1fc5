#include "arx/lisp/lisppredicates.h"

#include "arx/lisp/lispinterp.h"

#include <cmath>
#include <utility>
#include <vector>

namespace aclisp {

namespace {

bool equalAtoms(const Value& a, const Value& b, double fuzz) {
  if (a.isNumber() && b.isNumber()) {
    if (fuzz == 0.0) return a.number() == b.number();
    return std::fabs(a.number() - b.number()) <= fuzz;
  }
  return a.sameAs(b);
}

}  // namespace

bool equalValues(const Value& a, const Value& b, double fuzz) {
  if (!a.is(Kind::kCons)) return equalAtoms(a, b, fuzz);
  std::vector<std::pair<const Value*, const Value*>> open = {{&a, &b}};
  while (!open.empty()) {
    auto [x, y] = open.back();
    open.pop_back();
    while (x->is(Kind::kCons)) {
      if (!y->is(Kind::kCons)) return false;
      if (x->object() == y->object()) break;
      if (x->car().is(Kind::kCons))
        open.emplace_back(&x->car(), &y->car());
      else if (!equalAtoms(x->car(), y->car(), fuzz))
        return false;
      x = &x->cdr();
      y = &y->cdr();
    }
    if (!x->is(Kind::kCons) && !equalAtoms(*x, *y, fuzz)) return false;
  }
  return true;
}

namespace {

Value eqFunction(Args& a) { return a.in.truth(a[0].sameAs(a[1])); }
Value equalFunction(Args& a) { return a.in.truth(equalValues(a[0], a[1], a.has(2) ? a.number(2) : 0.0)); }
Value notFunction(Args& a) { return a.in.truth(a[0].isNil()); }
Value atomFunction(Args& a) { return a.in.truth(!a[0].is(Kind::kCons)); }
Value listpFunction(Args& a) { return a.in.truth(a[0].isList()); }
Value conspFunction(Args& a) { return a.in.truth(a[0].is(Kind::kCons)); }
Value numberpFunction(Args& a) { return a.in.truth(a[0].isNumber()); }
Value zeropFunction(Args& a) { return a.in.truth(a.number(0) == 0.0); }
Value minuspFunction(Args& a) { return a.in.truth(a.number(0) < 0.0); }
Value symbolpFunction(Args& a) { return a.in.truth(a[0].is(Kind::kSymbol)); }
Value boundpFunction(Args& a) { return a.in.truth(a[0].is(Kind::kSymbol) && a[0].asSymbol()->value); }
Value symbolName(Args& a) { return Value::text(a.symbol(0)->name); }
Value symbolValue(Args& a) { return a.symbol(0)->value; }

Value typeFunction(Args& a) {
  // In the order of `Kind`.
  static constexpr const wchar_t* kNames[] = {L"",      L"INT",     L"REAL", L"SYM",
                                              L"SUBR",  L"STR",     L"LIST", L"USUBR",
                                              L"ENAME", L"PICKSET", L"FILE", L"VL-CATCH-ALL-APPLY-ERROR"};
  if (!a[0]) return {};
  return Value::symbol(a.in.intern(kNames[static_cast<std::size_t>(a[0].kind())]));
}

bool same(const Value& x, const Value& y) {
  return x.isNumber() && y.isNumber() ? x.number() == y.number() : x.sameAs(y);
}

Value sameFunction(Args& a) {
  for (std::size_t i = 1; i < a.size(); ++i)
    if (!same(a[i - 1], a[i])) return {};
  return a.in.truth(true);
}

Value differentFunction(Args& a) {
  for (std::size_t i = 1; i < a.size(); ++i)
    if (same(a[i - 1], a[i])) return {};
  return a.in.truth(true);
}

/// Numbers among themselves, texts among themselves.
template <class Compare>
Value inOrder(Args& a, Compare compare) {
  for (std::size_t i = 0; i < a.size(); ++i)
    if (!a[i].isNumber() && !a[i].is(Kind::kString)) a.in.fail(L"type de comparaison incorrect");
  for (std::size_t i = 1; i < a.size(); ++i) {
    const Value& x = a[i - 1];
    const Value& y = a[i];
    if (x.isNumber() != y.isNumber()) a.in.fail(L"type de comparaison incorrect");
    if (x.isNumber() ? !compare(x.number(), y.number()) : !compare(x.asText().compare(y.asText()), 0))
      return {};
  }
  return a.in.truth(true);
}

Value lessFunction(Args& a) {
  return inOrder(a, [](auto x, auto y) { return x < y; });
}
Value lessEqualFunction(Args& a) {
  return inOrder(a, [](auto x, auto y) { return x <= y; });
}
Value greaterFunction(Args& a) {
  return inOrder(a, [](auto x, auto y) { return x > y; });
}
Value greaterEqualFunction(Args& a) {
  return inOrder(a, [](auto x, auto y) { return x >= y; });
}

constexpr Subr kPredicates[] = {
    function(L"EQ", eqFunction, 2, 2),
    function(L"EQUAL", equalFunction, 2, 3),
    function(L"NOT", notFunction, 1, 1),
    function(L"NULL", notFunction, 1, 1),
    function(L"ATOM", atomFunction, 1, 1),
    function(L"LISTP", listpFunction, 1, 1),
    function(L"VL-CONSP", conspFunction, 1, 1),
    function(L"NUMBERP", numberpFunction, 1, 1),
    function(L"ZEROP", zeropFunction, 1, 1),
    function(L"MINUSP", minuspFunction, 1, 1),
    function(L"VL-SYMBOLP", symbolpFunction, 1, 1),
    function(L"VL-SYMBOL-NAME", symbolName, 1, 1),
    function(L"VL-SYMBOL-VALUE", symbolValue, 1, 1),
    function(L"BOUNDP", boundpFunction, 1, 1),
    function(L"TYPE", typeFunction, 1, 1),
    function(L"=", sameFunction, 1, kAny),
    function(L"/=", differentFunction, 1, kAny),
    function(L"<", lessFunction, 1, kAny),
    function(L"<=", lessEqualFunction, 1, kAny),
    function(L">", greaterFunction, 1, kAny),
    function(L">=", greaterEqualFunction, 1, kAny),
};

}  // namespace

std::span<const Subr> predicateFunctions() { return kPredicates; }

}  // namespace aclisp
