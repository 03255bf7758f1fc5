#include "arx/lisp/host/lispentities.h"

#include "arx/db/dbmain.h"
#include "arx/ed/acdbads.h"
#include "arx/ed/edvars.h"
#include "arx/lisp/host/lispentmake.h"
#include "arx/lisp/lispconvert.h"

namespace aclisp {

namespace {

bool isPlanePolyline(const resbuf* chain) {
  for (; chain; chain = chain->rbnext)
    if (chain->restype == 0)
      return chain->resval.rstring && std::wstring(chain->resval.rstring) == L"LWPOLYLINE";
  return false;
}

/// (entget name [(applications)])
Value entGet(Args& a) {
  const Name& name = a.name(0, Kind::kEntity);
  std::vector<Value> applications;
  for (const Value& v : Elements(a.list(1))) {
    if (!v.is(Kind::kString)) a.in.failType(L"stringp:", v);
    applications.push_back(v);
  }
  const ChainHolder wanted(argumentChain(a.in, applications));
  const ChainHolder chain(acdbEntGetX(name.name, wanted.get()));
  return groupList(chain.get(), isPlanePolyline(chain.get()));
}

/// The list when the entity took it, else nil.
Value entMod(Args& a) {
  const ChainHolder chain(groupChain(a.in, a.list(0)));
  return acdbEntMod(chain.get()) == RTNORM ? a[0] : Value();
}

Value entUpd(Args& a) { return acdbEntUpd(a.name(0, Kind::kEntity).name) == RTNORM ? a[0] : Value(); }

Value entDel(Args& a) { return acdbEntDel(a.name(0, Kind::kEntity).name) == RTNORM ? a[0] : Value(); }

Value entMake(Args& a) {
  if (a.size() == 0) {
    forgetParts(a.in);
    return {};
  }
  ads_name made = {0, 0};
  std::wstring block;
  if (!makeEntity(a.in, a.list(0), made, block)) return {};
  return block.empty() ? a[0] : Value::text(block);
}

/// As ENTMAKE, but gives the new name; nil for the parts of a polyline that is not finished.
Value entMakeX(Args& a) {
  ads_name made = {0, 0};
  std::wstring block;
  return makeEntity(a.in, a.list(0), made, block) ? entityValue(made) : Value();
}

Value entLast(Args&) {
  ads_name name = {0, 0};
  return acdbEntLast(name) == RTNORM ? entityValue(name) : Value();
}

Value entNext(Args& a) {
  ads_name name = {0, 0};
  const int status = acdbEntNext(a.has(0) ? a.name(0, Kind::kEntity).name : nullptr, name);
  return status == RTNORM ? entityValue(name) : Value();
}

Value handEnt(Args& a) {
  ads_name name = {0, 0};
  return acdbHandEnt(a.text(0).c_str(), name) == RTNORM ? entityValue(name) : Value();
}

/// Corners of the box of a text, relative to its insertion point; nil when the list is no text.
Value textBox(Args& a) {
  const ChainHolder chain(groupChain(a.in, a.list(0)));
  ads_point low, high;
  if (acedTextBox(chain.get(), low, high) != RTNORM) return {};
  return Value::cons(pointValue(low), Value::cons(pointValue(high), {}));
}

/// The name when it is new, else nil.
Value regApp(Args& a) {
  AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
  if (!database) return {};
  {
    const AcDbObjectPointer<AcDbSymbolTable> table(database->regAppTableId());
    if (table && table->has(a.text(0).c_str())) return {};
  }
  if (acdbRegApp(a.text(0).c_str()) != Acad::eOk) a.in.fail(L"nom d'application refusé : " + a.text(0));
  return a[0];
}

/// Room that extended data take in an entity, in bytes as the file format counts.
Value xdSize(Args& a) {
  // ((-3 ("APP" ...))), (-3 ("APP" ...)) or (("APP" ...))
  Value data = a.list(0);
  if (data.car().car().is(Kind::kInteger)) data = Value(data.car());
  const Value applications = data.car().is(Kind::kInteger) ? data.cdr() : data;
  const Value pair = Value::cons(Value::integer(-3), applications);
  const ChainHolder chain(groupChain(a.in, Value::cons(pair, {})));
  std::int32_t size = 0;
  for (const resbuf* item = chain ? chain->rbnext : nullptr; item; item = item->rbnext) {
    const bool text = acutRbKind(item->restype) == RbKind::kText && item->resval.rstring;
    if (item->restype == 1001 || item->restype == 1003 || item->restype == 1005)
      size += 9;
    else if (item->restype == 1002)
      size += 2;
    else if (text)
      size += 4 + static_cast<std::int32_t>(std::wstring_view(item->resval.rstring).size());
    else if (acutRbKind(item->restype) == RbKind::kPoint)
      size += 25;
    else
      size += acutRbKind(item->restype) == RbKind::kReal ? 9 : 5;
  }
  return Value::integer(size);
}

constexpr Subr kEntities[] = {
    function(L"ENTGET", entGet, 1, 2),   function(L"ENTMOD", entMod, 1, 1),
    function(L"ENTUPD", entUpd, 1, 1),   function(L"ENTDEL", entDel, 1, 1),
    function(L"ENTMAKE", entMake, 0, 1), function(L"ENTMAKEX", entMakeX, 1, 1),
    function(L"ENTLAST", entLast, 0, 0), function(L"ENTNEXT", entNext, 0, 1),
    function(L"HANDENT", handEnt, 1, 1), function(L"TEXTBOX", textBox, 1, 1),
    function(L"REGAPP", regApp, 1, 1),   function(L"XDSIZE", xdSize, 1, 1),
};

}  // namespace

std::span<const Subr> entityFunctions() { return kEntities; }

}  // namespace aclisp
