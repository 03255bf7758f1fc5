#include "arx/lisp/host/lispselect.h"

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

bool isOutline(const std::wstring& letters) {
  return letters == L"F" || letters == L"WP" || letters == L"CP";
}

void checkMode(Interpreter& in, const std::wstring& mode) {
  static constexpr const wchar_t* kModes[] = {L"", L"X", L"A", L"W", L"C", L"L", L"P", L"I"};
  const std::wstring letters = modeLetters(mode);
  const auto same = [&](const wchar_t* known) { return letters == known; };
  if (!isOutline(letters) && std::none_of(std::begin(kModes), std::end(kModes), same))
    in.fail(L"mode de sélection inconnu : \"" + mode + L"\"");
}

/// The arguments of SSGET: [mode] [point [point] | list of points] [filter].
struct Selecting {
  std::wstring mode;
  ads_point points[2];
  std::size_t count = 0;
  ChainHolder outline;
  ChainHolder filter;

  explicit Selecting(Args& a) {
    for (std::size_t i = 0; i < a.size(); ++i) take(a, i);
    checkMode(a.in, mode);
    const std::wstring letters = modeLetters(mode);
    if ((letters == L"W" || letters == L"C") && count < 2) a.in.fail(L"SSGET : deux points sont attendus");
    if (isOutline(letters) && !outline.get()) a.in.fail(L"SSGET : une liste de points est attendue");
  }
  [[nodiscard]] const void* first() const {
    return outline.get() ? static_cast<const void*>(outline.get()) : count > 0 ? points[0] : nullptr;
  }
  [[nodiscard]] const void* second() const { return count > 1 ? points[1] : nullptr; }

private:
  void take(Args& a, std::size_t i) {
    const Value& value = a[i];
    const bool listOfLists = value.is(Kind::kCons) && value.car().is(Kind::kCons);
    if (value.is(Kind::kString))
      mode = value.asText();
    else if (listOfLists && isOutline(modeLetters(mode)) && !outline.get())
      takeOutline(a.in, value);
    else if (listOfLists)
      filter.reset(groupChain(a.in, value));
    else if (value && count < 2)
      a.point(i, points[count++]);
    else if (value)
      a.in.fail(L"argument de trop dans SSGET");
  }
  void takeOutline(Interpreter& in, const Value& list) {
    const std::size_t least = modeLetters(mode) == L"F" ? 2 : 3;
    std::size_t number = 0;
    resbuf* chain = nullptr;
    for (const Value& item : Elements(list)) {
      ads_point point;
      if (!readPoint(item, point)) in.failType(L"point2d/3d:", item);
      resbuf* const node = acutBuildList(RT3DPOINT, point, RTNONE);
      node->rbnext = chain;
      outline.release(), outline.reset(chain = node);
      ++number;
    }
    if (number < least) in.fail(L"SSGET : " + std::to_wstring(least) + L" points au moins sont attendus");
  }
};

/// (ssget [mode] [point [point]] [filter]); nil when nothing was found.
Value ssGet(Args& a) {
  const Selecting wanted(a);
  ads_name set = {0, 0};
  const int status = acedSSGet(wanted.mode.empty() ? nullptr : wanted.mode.c_str(), wanted.first(),
                               wanted.second(), wanted.filter.get(), set);
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
