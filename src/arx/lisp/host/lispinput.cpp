#include "arx/lisp/host/lispinput.h"

#include "arx/ed/acutads.h"
#include "arx/ed/edfiles.h"
#include "arx/ed/edgraphics.h"
#include "arx/ed/edinput.h"
#include "arx/ed/edselect.h"
#include "arx/ed/edvars.h"
#include "arx/lisp/host/lispcommand.h"
#include "arx/lisp/lispconvert.h"
#include "base/text.h"

#include <algorithm>

namespace aclisp {

namespace {

/// What a prompt answered: its value, nil for Enter, a keyword as text; a cancelled prompt ends the routine.
template <class MakeValue>
Value answer(Args& a, int status, MakeValue value) {
  if (status == RTNORM) return value();
  if (status == RTNONE) return {};
  if (status == RTCAN) a.in.cancel();
  std::wstring keyword;
  if (status == RTKWORD && acedGetInput(keyword) == RTNORM) return Value::text(keyword);
  a.in.fail(L"invite refusée");
}

/// Arguments [base point] [prompt], in either order.
struct Prompt {
  explicit Prompt(Args& a) {
    for (std::size_t i = 0; i < a.size(); ++i) {
      if (a[i].is(Kind::kString))
        text = a[i].asText().c_str();
      else if (a[i]) {
        a.point(i, from);
        base = from;
      }
    }
  }
  ads_point from = {0, 0, 0};
  const ads_real* base = nullptr;
  const wchar_t* text = nullptr;
};

Value getPoint(Args& a) {
  const Prompt prompt(a);
  ads_point result;
  const int status = acedGetPoint(prompt.base, prompt.text, result);
  return answer(a, status, [&] { return pointValue(result); });
}

Value getCorner(Args& a) {
  const Prompt prompt(a);
  if (!prompt.base) a.in.fail(L"un point est attendu");
  ads_point result;
  const int status = acedGetCorner(prompt.base, prompt.text, result);
  return answer(a, status, [&] { return pointValue(result); });
}

template <int (*Ask)(const ads_point, const ACHAR*, ads_real*)>
Value getMeasure(Args& a) {
  const Prompt prompt(a);
  ads_real result = 0.0;
  const int status = Ask(prompt.base, prompt.text, &result);
  return answer(a, status, [&] { return Value::real(result); });
}

const wchar_t* promptText(Args& a, std::size_t i) { return a.has(i) ? a.text(i).c_str() : nullptr; }

Value getInteger(Args& a) {
  int result = 0;
  const int status = acedGetInt(promptText(a, 0), &result);
  return answer(a, status, [&] { return Value::integer(result); });
}

Value getReal(Args& a) {
  ads_real result = 0.0;
  const int status = acedGetReal(promptText(a, 0), &result);
  return answer(a, status, [&] { return Value::real(result); });
}

Value getKeyword(Args& a) {
  std::wstring result;
  const int status = acedGetKword(promptText(a, 0), result);
  return answer(a, status, [&] { return Value::text(result); });
}

/// (getstring [blanks allowed] [prompt])
Value getString(Args& a) {
  const bool promptOnly = a.size() == 1 && a[0].is(Kind::kString);
  std::wstring result;
  const int status =
      acedGetString(!promptOnly && a.has(0) ? 1 : 0, promptText(a, promptOnly ? 0 : 1), result);
  return answer(a, status, [&] { return Value::text(result); });
}

Value initGet(Args& a) {
  const bool withBits = a[0].is(Kind::kInteger);
  const std::size_t words = withBits ? 1 : 0;
  acedInitGet(withBits ? a.integer(0) : 0, promptText(a, a.size() > 1 ? 1 : words));
  return {};
}

Value entityAnswer(Args& a, int status, const ads_name entity, const ads_point point) {
  if (status == RTERROR) return {};  // nothing was hit; ERRNO tells
  return answer(a, status,
                [&] { return Value::cons(entityValue(entity), Value::cons(pointValue(point), {})); });
}

Value entSel(Args& a) {
  ads_name entity = {0, 0};
  ads_point point = {0, 0, 0};
  const int status = acedEntSel(promptText(a, 0), entity, point);
  return entityAnswer(a, status, entity, point);
}

/// Matrix of a nested pick: `nentsel` gives the three axes and the origin, `nentselp` the rows of a 4x4
/// matrix.
Value matrixValue(const ads_matrix matrix, bool rows) {
  ListBuilder list;
  for (std::size_t i = 0; i < 4; ++i) {
    ListBuilder line;
    for (std::size_t j = 0; j < (rows ? 4U : 3U); ++j)
      line.add(Value::real(rows ? matrix[i][j] : matrix[j][i]));
    list.add(line.take());
  }
  return list.take();
}

Value nestedPick(Args& a, bool rows) {
  const Prompt prompt(a);
  ads_name entity = {0, 0};
  ads_point point = {prompt.from[0], prompt.from[1], prompt.from[2]};
  ads_matrix matrix = {};
  resbuf* references = nullptr;
  const int status = acedNEntSelP(prompt.text, entity, point, prompt.base ? 1 : 0, matrix, &references);
  const ChainHolder holder(references);
  Value picked = entityAnswer(a, status, entity, point);
  if (status != RTNORM || !references) return picked;
  ListBuilder list;
  for (const Value& v : Elements(picked)) list.add(v);
  list.add(matrixValue(matrix, rows));
  ListBuilder around;
  for (const resbuf* item = references; item; item = item->rbnext)
    if (item->restype == RTENAME) around.add(entityValue(item->resval.rlname));
  list.add(around.take());
  return list.take();
}

Value nentSel(Args& a) { return nestedPick(a, false); }
Value nentSelP(Args& a) { return nestedPick(a, true); }

/// nil for a variable that does not exist.
Value getVariable(Args& a) {
  std::wstring name = a[0].is(Kind::kSymbol) ? a[0].asSymbol()->name : a.text(0);
  if (veltora::base::compareNoCase(name, L"CMDACTIVE") == 0)
    return Value::integer(commandIsPending(a.in) ? 1 : 0);
  auto* const value = acutNewRb(RTNONE);
  const ChainHolder holder(value);
  return acedGetVar(name.c_str(), value) == RTNORM ? valueOfChain(a.in, value) : Value();
}

Value setVariable(Args& a) {
  const std::wstring name = a[0].is(Kind::kSymbol) ? a[0].asSymbol()->name : a.text(0);
  Value value = a[1];
  ads_point point;
  ChainHolder chain;
  if (const std::size_t count = readPoint(value, point)) {
    chain.reset(acutNewRb(count == 2 ? RTPOINT : RT3DPOINT));
    std::copy(point, point + 3, chain->resval.rpoint);
  } else {
    chain.reset(argumentChain(a.in, std::span<Value>(&value, 1)));
  }
  if (acedSetVar(name.c_str(), chain.get()) != RTNORM) a.in.fail(L"SETVAR refusé : " + name);
  return a[1];
}

Value alertFunction(Args& a) {
  acedAlert(a.text(0).c_str());
  return {};
}

Value getFile(Args& a) {
  auto* const result = acutNewRb(RTNONE);
  const ChainHolder holder(result);
  const int status =
      acedGetFileD(a.text(0).c_str(), a.text(1).c_str(), a.text(2).c_str(), a.integer(3), result);
  if (status != RTNORM || result->restype != RTSTR || !result->resval.rstring) return {};
  return Value::text(result->resval.rstring);
}

Value grRead(Args& a) {
  int type = 0;
  auto* const result = acutNewRb(RTNONE);
  const ChainHolder holder(result);
  if (acedGrRead(a.has(0) ? 1 : 0, &type, result) != RTNORM) a.in.cancel();
  return Value::cons(Value::integer(type), Value::cons(valueOfChain(a.in, result), {}));
}

Value grDraw(Args& a) {
  ads_point from, to;
  a.point(0, from);
  a.point(1, to);
  acedGrDraw(from, to, a.integer(2), a.integerOr(3, 0));
  return {};
}

Value redrawFunction(Args& a) {
  if (a.has(0))
    acedRedraw(a.name(0, Kind::kEntity).name, a.integerOr(1, 1));
  else
    acedRedraw(nullptr, 0);
  return {};
}

/// There is no text screen apart: nothing to switch.
Value screenFunction(Args&) { return {}; }

Value versionText(Args&) { return Value::text(L"Veltora LISP (fr)"); }

constexpr Subr kInput[] = {
    function(L"GETPOINT", getPoint, 0, 2),
    function(L"GETCORNER", getCorner, 1, 2),
    function(L"GETDIST", getMeasure<acedGetDist>, 0, 2),
    function(L"GETANGLE", getMeasure<acedGetAngle>, 0, 2),
    function(L"GETORIENT", getMeasure<acedGetOrient>, 0, 2),
    function(L"GETINT", getInteger, 0, 1),
    function(L"GETREAL", getReal, 0, 1),
    function(L"GETKWORD", getKeyword, 0, 1),
    function(L"GETSTRING", getString, 0, 2),
    function(L"INITGET", initGet, 0, 2),
    function(L"ENTSEL", entSel, 0, 1),
    function(L"NENTSEL", nentSel, 0, 1),
    function(L"NENTSELP", nentSelP, 0, 2),
    function(L"GETVAR", getVariable, 1, 1),
    function(L"SETVAR", setVariable, 2, 2),
    function(L"ALERT", alertFunction, 1, 1),
    function(L"GETFILED", getFile, 4, 4),
    function(L"GRREAD", grRead, 0, 3),
    function(L"GRDRAW", grDraw, 3, 4),
    function(L"REDRAW", redrawFunction, 0, 2),
    function(L"GRAPHSCR", screenFunction, 0, 0),
    function(L"TEXTSCR", screenFunction, 0, 0),
    function(L"TEXTPAGE", screenFunction, 0, 0),
    function(L"VER", versionText, 0, 0),
};

}  // namespace

std::span<const Subr> inputFunctions() { return kInput; }

}  // namespace aclisp
