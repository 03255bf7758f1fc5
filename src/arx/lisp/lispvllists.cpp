#include "arx/lisp/lispvllists.h"

#include "arx/lisp/lispinterp.h"
#include "arx/lisp/lisppredicates.h"
#include "arx/lisp/lisptexts.h"
#include "base/text.h"

#include <algorithm>
#include <vector>

namespace aclisp {

namespace {

Value removeFunction(Args& a) {
  ListBuilder list;
  for (const Value& v : Elements(a.list(1)))
    if (!equalValues(v, a[0])) list.add(v);
  return list.take();
}

Value filter(Args& a, bool keepTrue) {
  const Value test = a.in.callable(a[0]);
  ListBuilder list;
  for (const Value& v : Elements(a.list(1))) {
    Value argument = v;
    if (a.in.apply(test, std::span<Value>(&argument, 1)).isNil() != keepTrue) list.add(v);
  }
  return list.take();
}

Value removeIf(Args& a) { return filter(a, false); }
Value removeIfNot(Args& a) { return filter(a, true); }

Value memberIf(Args& a, bool wanted) {
  const Value test = a.in.callable(a[0]);
  for (const Value* at = &a.list(1); at->is(Kind::kCons); at = &at->cdr()) {
    Value argument = at->car();
    if (a.in.apply(test, std::span<Value>(&argument, 1)).isNil() != wanted) return *at;
  }
  return {};
}

Value memberIfTrue(Args& a) { return memberIf(a, true); }
Value memberIfNot(Args& a) { return memberIf(a, false); }

Value listPosition(Args& a) {
  std::int32_t at = 0;
  for (const Value& v : Elements(a.list(1))) {
    if (equalValues(a[0], v)) return Value::integer(at);
    ++at;
  }
  return {};
}

bool less(Interpreter& in, const Value& test, const Value& x, const Value& y) {
  Value arguments[2] = {x, y};
  return !in.apply(test, arguments).isNil();
}

/// Places of the elements in order. A merge sort of our own: a comparison that contradicts itself may give
/// any order, but does no harm, and what it throws leaves the list whole.
std::vector<std::size_t> sortedPlaces(Interpreter& in, const std::vector<Value>& values, const Value& test) {
  std::vector<std::size_t> places(values.size());
  for (std::size_t i = 0; i < places.size(); ++i) places[i] = i;
  std::vector<std::size_t> merged(places.size());
  for (std::size_t width = 1; width < places.size(); width *= 2) {
    for (std::size_t start = 0; start < places.size(); start += 2 * width) {
      const std::size_t middle = std::min(start + width, places.size());
      const std::size_t end = std::min(start + 2 * width, places.size());
      std::size_t left = start;
      std::size_t right = middle;
      for (std::size_t k = start; k < end; ++k) {
        const bool fromRight =
            left == middle || (right < end && less(in, test, values[places[right]], values[places[left]]));
        merged[k] = fromRight ? places[right++] : places[left++];
      }
    }
    places.swap(merged);
  }
  return places;
}

std::vector<Value> elements(Args& a) {
  std::vector<Value> values;
  for (const Value& v : Elements(a.list(0))) values.push_back(v);
  return values;
}

/// Equal elements that are atoms by `eq` are dropped, as routines rely on.
Value sortFunction(Args& a) {
  const std::vector<Value> values = elements(a);
  const std::vector<std::size_t> places = sortedPlaces(a.in, values, a.in.callable(a[1]));
  ListBuilder list;
  const Value* former = nullptr;
  for (const std::size_t place : places) {
    const Value& v = values[place];
    const bool small = v.is(Kind::kInteger) || v.is(Kind::kSymbol);
    if (small && former && former->sameAs(v)) continue;
    list.add(v);
    former = &v;
  }
  return list.take();
}

Value sortPlaces(Args& a) {
  const std::vector<Value> values = elements(a);
  ListBuilder list;
  for (const std::size_t place : sortedPlaces(a.in, values, a.in.callable(a[1])))
    list.add(Value::integer(static_cast<std::int32_t>(place)));
  return list.take();
}

/// (acad_strlsort): texts in alphabetical order, whatever the case.
Value sortTexts(Args& a) {
  std::vector<Value> values = elements(a);
  for (const Value& v : values)
    if (!v.is(Kind::kString)) a.in.failType(L"stringp:", v);
  std::stable_sort(values.begin(), values.end(), [](const Value& x, const Value& y) {
    return veltora::base::compareNoCase(x.asText(), y.asText()) < 0;
  });
  ListBuilder list;
  for (const Value& v : values) list.add(v);
  return list.take();
}

Value listLengthFunction(Args& a) {
  const Value* at = &a.list(0);
  std::int32_t count = 0;
  for (; at->is(Kind::kCons); at = &at->cdr()) ++count;
  return at->isNil() ? Value::integer(count) : Value();
}

Value textToCodes(Args& a) {
  ListBuilder list;
  for (const wchar_t c : a.text(0)) list.add(Value::integer(codeOfCharacter(c)));
  return list.take();
}

Value codesToText(Args& a) {
  std::wstring text;
  for (const Value& v : Elements(a.list(0))) {
    const wchar_t c = v.is(Kind::kInteger) ? characterOfCode(v.asInteger()) : L'\0';
    if (c == L'\0') a.in.fail(L"code de caractère incorrect");
    text += c;
  }
  return Value::text(text);
}

constexpr Subr kFunctions[] = {
    function(L"VL-REMOVE", removeFunction, 2, 2),     function(L"VL-REMOVE-IF", removeIf, 2, 2),
    function(L"VL-REMOVE-IF-NOT", removeIfNot, 2, 2), function(L"VL-MEMBER-IF", memberIfTrue, 2, 2),
    function(L"VL-MEMBER-IF-NOT", memberIfNot, 2, 2), function(L"VL-POSITION", listPosition, 2, 2),
    function(L"VL-SORT", sortFunction, 2, 2),         function(L"VL-SORT-I", sortPlaces, 2, 2),
    function(L"ACAD_STRLSORT", sortTexts, 1, 1),      function(L"VL-LIST-LENGTH", listLengthFunction, 1, 1),
    function(L"VL-STRING->LIST", textToCodes, 1, 1),  function(L"VL-LIST->STRING", codesToText, 1, 1),
};

}  // namespace

std::span<const Subr> vlListFunctions() { return kFunctions; }

}  // namespace aclisp
