#include "arx/lisp/host/lisptables.h"

#include "arx/db/dbmain.h"
#include "arx/ed/acdbads.h"
#include "arx/lisp/host/lisphost.h"
#include "base/text.h"

#include <algorithm>

namespace base = veltora::base;

namespace aclisp {

namespace {

/// Id of the table that a routine names ("LAYER", "BLOCK"...); null when the drawing has none of that kind.
AcDbObjectId tableOf(Args& a, std::size_t argument) {
  const std::wstring name = base::toUpper(a.text(argument));
  AcDbDatabase* const database = acdbCurDwg();
  if (!database) return {};
  const AcDbObjectId id = database->tableId(name == L"BLOCK" ? "BLOCK_RECORD" : base::toUtf8(name));
  if (AcDbObjectPointer<AcDbSymbolTable>(id)) return id;
  static constexpr const wchar_t* kKnown[] = {L"LAYER", L"LTYPE", L"STYLE",    L"BLOCK", L"VIEW",
                                              L"UCS",   L"VPORT", L"DIMSTYLE", L"APPID"};
  for (const wchar_t* known : kKnown)
    if (name == known) return {};
  a.in.fail(L"table inconnue : \"" + a.text(argument) + L"\"");
}

/// A record that routines see: not erased, and no layout among the blocks.
bool isSeen(AcDbObjectId id) {
  if (!id.isLive()) return false;
  const AcDbObjectPointer<AcDbBlockTableRecord> block(id);
  return !block || !block->isLayout();
}

/// The record that the routine names; null for none.
AcDbObjectId recordOf(Args& a) {
  const AcDbObjectPointer<AcDbSymbolTable> table(tableOf(a, 0));
  AcDbObjectId id;
  return table && table->getIdAt(a.text(1).c_str(), id) == Acad::eOk && isSeen(id) ? id : AcDbObjectId();
}

Value pair(int code, Value value) { return Value::cons(Value::integer(code), std::move(value)); }

/// A block as tables show it: its name, flags, base point and first entity.
Value blockGroups(const AcDbBlockTableRecord& block) {
  const AcGePoint3d origin = block.origin();
  const ads_point base = {origin.x, origin.y, origin.z};
  const int flags = (block.isAnonymous() ? 1 : 0) | (block.hasAttributeDefinitions() ? 2 : 0);
  ListBuilder list;
  list.add(pair(0, Value::text(L"BLOCK")));
  list.add(pair(2, Value::text(block.name())));
  list.add(pair(70, Value::integer(flags)));
  list.add(pair(10, pointValue(base)));
  for (const AcDbObjectId id : block.entities()) {
    if (!id.isLive()) continue;
    ads_name first = {0, 0};
    acdbGetAdsName(first, id);
    list.add(pair(-2, entityValue(first)));
    break;
  }
  return list.take();
}

/// A record without what only files need: handles, owners, class markers.
Value recordGroups(AcDbObjectId id) {
  if (const AcDbObjectPointer<AcDbBlockTableRecord> block(id); block) return blockGroups(*block);
  ads_name name = {0, 0};
  if (acdbGetAdsName(name, id) != Acad::eOk) return {};
  const ChainHolder chain(acdbEntGet(name));
  const Value all = groupList(chain.get());
  ListBuilder list;
  for (const Value& group : Elements(all)) {
    const std::int32_t code = group.car().is(Kind::kInteger) ? group.car().asInteger() : -1;
    const bool ofFile =
        code == -1 || code == 5 || code == 100 || code == 102 || code == 105 || (code >= 320 && code < 400);
    if (!ofFile) list.add(group);
  }
  return list.take();
}

Value objectName(AcDbObjectId id) {
  ads_name name = {0, 0};
  return !id.isNull() && acdbGetAdsName(name, id) == Acad::eOk ? entityValue(name) : Value();
}

Value tblSearch(Args& a) {
  const AcDbObjectId record = recordOf(a);
  if (record.isNull()) return {};
  if (a.has(2)) {
    const AcDbObjectPointer<AcDbSymbolTable> table(tableOf(a, 0));
    const std::vector<AcDbObjectId>& all = table->entries();
    hostState(a.in).tableAt[base::toUpper(a.text(0))] =
        static_cast<std::size_t>(std::find(all.begin(), all.end(), record) - all.begin()) + 1;
  }
  return recordGroups(record);
}

/// (tblnext table [from the start])
Value tblNext(Args& a) {
  const AcDbObjectPointer<AcDbSymbolTable> table(tableOf(a, 0));
  std::size_t& at = hostState(a.in).tableAt[base::toUpper(a.text(0))];
  if (a.has(1)) at = 0;
  if (!table) return {};
  const std::vector<AcDbObjectId>& all = table->entries();
  while (at < all.size() && !isSeen(all[at])) ++at;
  return at < all.size() ? recordGroups(all[at++]) : Value();
}

Value tblObjName(Args& a) { return objectName(recordOf(a)); }

Value namedObjects(Args&) {
  AcDbDatabase* const database = acdbCurDwg();
  return database ? objectName(database->namedObjectsDictionaryId()) : Value();
}

AcDbObjectId idOf(Args& a, std::size_t i) {
  AcDbObjectId id;
  acdbGetObjectId(id, a.name(i, Kind::kEntity).name);
  return id;
}

Value groupsOf(AcDbObjectId id) {
  ads_name name = {0, 0};
  if (acdbGetAdsName(name, id) != Acad::eOk) return {};
  const ChainHolder chain(acdbEntGet(name));
  return groupList(chain.get());
}

Value dictSearch(Args& a) {
  const AcDbObjectPointer<AcDbDictionary> dictionary(idOf(a, 0));
  AcDbObjectId entry;
  if (!dictionary || dictionary->getAt(a.text(1).c_str(), entry) != Acad::eOk) return {};
  return groupsOf(entry);
}

Value dictNext(Args& a) {
  const AcDbObjectId id = idOf(a, 0);
  const AcDbObjectPointer<AcDbDictionary> dictionary(id);
  if (!dictionary) return {};
  std::size_t& at = hostState(a.in).dictionaryAt[static_cast<std::int64_t>(Adesk::UInt64(id.handle()))];
  if (a.has(1)) at = 0;
  const std::vector<AcDbDictionary::Entry>& entries = dictionary->entries();
  while (at < entries.size() && !entries[at].id.isLive()) ++at;
  return at < entries.size() ? groupsOf(entries[at++].id) : Value();
}

Value dictRemove(Args& a) {
  AcDbObjectPointer<AcDbDictionary> dictionary(idOf(a, 0), AcDb::kForWrite);
  AcDbObjectId entry;
  if (!dictionary || dictionary->getAt(a.text(1).c_str(), entry) != Acad::eOk) return {};
  return dictionary->remove(a.text(1).c_str()) == Acad::eOk ? objectName(entry) : Value();
}

constexpr Subr kTables[] = {
    function(L"TBLSEARCH", tblSearch, 2, 3),   function(L"TBLNEXT", tblNext, 1, 2),
    function(L"TBLOBJNAME", tblObjName, 2, 2), function(L"NAMEDOBJDICT", namedObjects, 0, 0),
    function(L"DICTSEARCH", dictSearch, 2, 3), function(L"DICTNEXT", dictNext, 1, 2),
    function(L"DICTREMOVE", dictRemove, 2, 2),
};

}  // namespace

std::span<const Subr> tableFunctions() { return kTables; }

}  // namespace aclisp
