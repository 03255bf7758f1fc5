#include "arx/lisp/lispmath.h"

#include "arx/lisp/lispinterp.h"

#include <cmath>
#include <limits>
#include <numeric>

namespace aclisp {

namespace {

std::int32_t wrap(std::int64_t value) { return static_cast<std::int32_t>(static_cast<std::uint32_t>(value)); }

/// Folds the arguments from the left: integers while all are, then reals.
template <class OnIntegers, class OnReals>
Value fold(Args& a, OnIntegers onIntegers, OnReals onReals) {
  if (a.size() == 0) return Value::integer(0);
  if (a.size() == 2 && a[0].is(Kind::kInteger) && a[1].is(Kind::kInteger))
    return Value::integer(wrap(onIntegers(std::int64_t{a[0].asInteger()}, std::int64_t{a[1].asInteger()})));
  bool whole = a[0].is(Kind::kInteger);
  double real = a.number(0);
  std::int32_t integer = whole ? a[0].asInteger() : 0;
  for (std::size_t i = 1; i < a.size(); ++i) {
    const double next = a.number(i);
    if (whole && a[i].is(Kind::kInteger)) {
      integer =
          wrap(onIntegers(static_cast<std::int64_t>(integer), static_cast<std::int64_t>(a[i].asInteger())));
      continue;
    }
    if (whole) real = integer;
    whole = false;
    real = onReals(real, next);
  }
  return whole ? Value::integer(integer) : Value::real(real);
}

Value plus(Args& a) {
  return fold(
      a, [](auto x, auto y) { return x + y; }, [](double x, double y) { return x + y; });
}

Value minus(Args& a) {
  if (a.size() == 1 && a[0].is(Kind::kInteger)) return Value::integer(wrap(-std::int64_t{a[0].asInteger()}));
  if (a.size() == 1) return Value::real(-a.number(0));
  return fold(
      a, [](auto x, auto y) { return x - y; }, [](double x, double y) { return x - y; });
}

Value times(Args& a) {
  return fold(
      a, [](auto x, auto y) { return x * y; }, [](double x, double y) { return x * y; });
}

Value divide(Args& a) {
  for (std::size_t i = 1; i < a.size(); ++i)
    if (a.number(i) == 0.0) a.in.fail(L"division par zéro");
  return fold(
      a, [](auto x, auto y) { return x / y; }, [](double x, double y) { return x / y; });
}

Value remainder(Args& a) {
  for (std::size_t i = 1; i < a.size(); ++i)
    if (a.number(i) == 0.0) a.in.fail(L"division par zéro");
  return fold(
      a, [](auto x, auto y) { return x % y; }, [](double x, double y) { return std::fmod(x, y); });
}

Value increment(Args& a, int step) {
  if (a[0].is(Kind::kInteger)) return Value::integer(wrap(std::int64_t{a[0].asInteger()} + step));
  return Value::real(a.number(0) + step);
}
Value onePlus(Args& a) { return increment(a, 1); }
Value oneMinus(Args& a) { return increment(a, -1); }

Value absFunction(Args& a) {
  if (a[0].is(Kind::kInteger)) return Value::integer(wrap(std::abs(std::int64_t{a[0].asInteger()})));
  return Value::real(std::fabs(a.number(0)));
}

/// Towards zero; a number beyond 32 bits stays a real without decimals.
Value fixFunction(Args& a) {
  if (a[0].is(Kind::kInteger)) return a[0];
  const double whole = std::trunc(a.number(0));
  using Int = std::numeric_limits<std::int32_t>;
  if (!(whole >= Int::min() && whole <= Int::max())) return Value::real(whole);
  return Value::integer(static_cast<std::int32_t>(whole));
}

Value floatFunction(Args& a) { return Value::real(a.number(0)); }

Value extreme(Args& a, bool greatest) {
  if (a.size() == 0) return Value::integer(0);
  std::size_t best = 0;
  bool real = false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    const double value = a.number(i);
    real = real || a[i].is(Kind::kReal);
    if (greatest ? value > a.number(best) : value < a.number(best)) best = i;
  }
  return real ? Value::real(a.number(best)) : a[best];
}
Value maxFunction(Args& a) { return extreme(a, true); }
Value minFunction(Args& a) { return extreme(a, false); }

Value sqrtFunction(Args& a) {
  if (a.number(0) < 0.0) a.in.fail(L"racine carrée d'un nombre négatif");
  return Value::real(std::sqrt(a.number(0)));
}

Value expFunction(Args& a) { return Value::real(std::exp(a.number(0))); }

Value logFunction(Args& a) {
  if (!(a.number(0) > 0.0)) a.in.fail(L"logarithme d'un nombre négatif ou nul");
  return Value::real(std::log(a.number(0)));
}

/// Integers to a power that is not negative stay integers while they fit.
Value exptFunction(Args& a) {
  const double result = std::pow(a.number(0), a.number(1));
  if (std::isnan(result)) a.in.fail(L"puissance indéfinie");
  const bool whole = a[0].is(Kind::kInteger) && a[1].is(Kind::kInteger) && a[1].asInteger() >= 0;
  using Int = std::numeric_limits<std::int32_t>;
  if (whole && result >= Int::min() && result <= Int::max())
    return Value::integer(static_cast<std::int32_t>(result));
  return Value::real(result);
}

Value sinFunction(Args& a) { return Value::real(std::sin(a.number(0))); }
Value cosFunction(Args& a) { return Value::real(std::cos(a.number(0))); }
Value atanFunction(Args& a) {
  return Value::real(a.size() == 1 ? std::atan(a.number(0)) : std::atan2(a.number(0), a.number(1)));
}

Value gcdFunction(Args& a) {
  std::int64_t result = 0;
  for (std::size_t i = 0; i < a.size(); ++i) result = std::gcd(result, std::int64_t{a.integer(i)});
  return Value::integer(wrap(result));
}

Value logicalAnd(Args& a) {
  std::int32_t bits = a.size() == 0 ? 0 : -1;
  for (std::size_t i = 0; i < a.size(); ++i) bits &= a.integer(i);
  return Value::integer(bits);
}

Value logicalOr(Args& a) {
  std::int32_t bits = 0;
  for (std::size_t i = 0; i < a.size(); ++i) bits |= a.integer(i);
  return Value::integer(bits);
}

Value logicalNot(Args& a) { return Value::integer(~a.integer(0)); }

Value shiftFunction(Args& a) {
  const auto bits = static_cast<std::uint32_t>(a.integer(0));
  const std::int32_t by = a.integer(1);
  if (by <= -32 || by >= 32) return Value::integer(0);
  return Value::integer(static_cast<std::int32_t>(by >= 0 ? bits << by : bits >> -by));
}

/// (boole operation a b...): bit k of the operation is the result for a pair of bits, as in the dialect: 1
/// for both, 2 for the first only, 4 for the second only, 8 for neither.
Value booleFunction(Args& a) {
  const std::int32_t operation = a.integer(0);
  std::int32_t result = a.integer(1);
  for (std::size_t i = 2; i < a.size(); ++i) {
    const std::int32_t x = result;
    const std::int32_t y = a.integer(i);
    result = 0;
    if (operation & 1) result |= x & y;
    if (operation & 2) result |= x & ~y;
    if (operation & 4) result |= ~x & y;
    if (operation & 8) result |= ~x & ~y;
  }
  return Value::integer(result);
}

constexpr Subr kMath[] = {
    function(L"+", plus, 0, kAny),
    function(L"-", minus, 0, kAny),
    function(L"*", times, 0, kAny),
    function(L"/", divide, 0, kAny),
    function(L"REM", remainder, 0, kAny),
    function(L"1+", onePlus, 1, 1),
    function(L"1-", oneMinus, 1, 1),
    function(L"ABS", absFunction, 1, 1),
    function(L"FIX", fixFunction, 1, 1),
    function(L"FLOAT", floatFunction, 1, 1),
    function(L"MAX", maxFunction, 0, kAny),
    function(L"MIN", minFunction, 0, kAny),
    function(L"SQRT", sqrtFunction, 1, 1),
    function(L"EXP", expFunction, 1, 1),
    function(L"LOG", logFunction, 1, 1),
    function(L"EXPT", exptFunction, 2, 2),
    function(L"SIN", sinFunction, 1, 1),
    function(L"COS", cosFunction, 1, 1),
    function(L"ATAN", atanFunction, 1, 2),
    function(L"GCD", gcdFunction, 0, kAny),
    function(L"LOGAND", logicalAnd, 0, kAny),
    function(L"LOGIOR", logicalOr, 0, kAny),
    function(L"~", logicalNot, 1, 1),
    function(L"LSH", shiftFunction, 2, 2),
    function(L"BOOLE", booleFunction, 2, kAny),
};

}  // namespace

std::span<const Subr> mathFunctions() { return kMath; }

}  // namespace aclisp
