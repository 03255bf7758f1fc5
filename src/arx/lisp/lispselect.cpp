// Selection sets.

#include "arx/ed/edselect.h"
#include "arx/lisp/lispconvert.h"
#include "base/text.h"

#include <algorithm>

namespace base = veltora::base;

namespace aclisp {

namespace {

/// "_W", "W", "X", ":S", "_+.:E:S": the letters of a mode, without marks.
std::wstring modeLetters(const std::wstring& mode) {
  const std::wstring bare = base::trimLeft(base::toUpper(mode), L"_+.");
  return bare.substr(0, bare.find(L':'));
}

void checkMode(Interpreter& in, const std::wstring& mode) {
  static constexpr const wchar_t* kModes[] = {L"", L"X", L"A", L"W", L"C", L"L", L"P", L"I"};
  const std::wstring letters = modeLetters(mode);
  const auto same = [&](const wchar_t* known) { return letters == known; };
  if (std::none_of(std::begin(kModes), std::end(kModes), same))
    in.fail(L"mode de sélection inconnu : \"" + mode + L"\"");
}

/// (ssget [mode] [point [point]] [filter]); nil when nothing was found.
Value ssGet(Args& a) {
  std::wstring mode;
  ads_point points[2];
  std::size_t count = 0;
  ChainHolder filter;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i].is(Kind::kString))
      mode = a[i].asText();
    else if (a[i].is(Kind::kCons) && a[i].car().is(Kind::kCons) && !a[i].car().car().is(Kind::kReal))
      filter.reset(groupChain(a.in, a[i]));
    else if (a[i] && count < 2)
      a.point(i, points[count++]);
    else if (a[i])
      a.in.fail(L"argument de trop dans SSGET");
  }
  checkMode(a.in, mode);
  const std::wstring letters = modeLetters(mode);
  if ((letters == L"W" || letters == L"C") && count < 2) a.in.fail(L"SSGET : deux points sont attendus");
  ads_name set = {0, 0};
  const int status = acedSSGet(mode.empty() ? nullptr : mode.c_str(), count > 0 ? points[0] : nullptr,
                               count > 1 ? points[1] : nullptr, filter.get(), set);
  if (status == RTCAN) a.in.cancel();
  return status == RTNORM ? selectionValue(set) : Value();
}

Value ssLength(Args& a) {
  Adesk::Int32 length = 0;
  if (acedSSLength(a.name(0, Kind::kSelection).name, &length) != RTNORM)
    a.in.fail(L"jeu de sélection incorrect");
  return Value::integer(length);
}

/// A real index is taken too: sets were once counted with reals.
Value ssName(Args& a) {
  const Name& set = a.name(0, Kind::kSelection);
  const double index = a.number(1);
  ads_name entity = {0, 0};
  if (!(index >= 0 && index < INT32_MAX)) return {};
  const int status = acedSSName(set.name, static_cast<Adesk::Int32>(index), entity);
  return status == RTNORM ? entityValue(entity) : Value();
}

Value ssAdd(Args& a) {
  ads_name result = {0, 0};
  const int status = acedSSAdd(a.has(0) ? a.name(0, Kind::kEntity).name : nullptr,
                               a.has(1) ? a.name(1, Kind::kSelection).name : nullptr, result);
  if (status != RTNORM) return {};
  return a.has(1) ? a[1] : selectionValue(result);
}

Value ssDel(Args& a) {
  const int status = acedSSDel(a.name(0, Kind::kEntity).name, a.name(1, Kind::kSelection).name);
  return status == RTNORM ? a[1] : Value();
}

Value ssMemb(Args& a) {
  const int status = acedSSMemb(a.name(0, Kind::kEntity).name, a.name(1, Kind::kSelection).name);
  return status == RTNORM ? a[0] : Value();
}

/// (sssetfirst grips [set])
Value ssSetFirst(Args& a) {
  const ads_name none = {0, 0};
  acedSSSetFirst(a.has(0) ? a.name(0, Kind::kSelection).name : none,
                 a.has(1) ? a.name(1, Kind::kSelection).name : none);
  return Value::cons(a[0], Value::cons(a[1], {}));
}

constexpr Subr kSelection[] = {
    function(L"SSGET", ssGet, 0, 4),           function(L"SSLENGTH", ssLength, 1, 1),
    function(L"SSNAME", ssName, 2, 2),         function(L"SSADD", ssAdd, 0, 2),
    function(L"SSDEL", ssDel, 2, 2),           function(L"SSMEMB", ssMemb, 2, 2),
    function(L"SSSETFIRST", ssSetFirst, 1, 2),
};

}  // namespace

std::span<const Subr> selectionFunctions() { return kSelection; }

}  // namespace aclisp
