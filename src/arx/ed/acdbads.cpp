#include "arx/ed/acdbads.h"

#include "arx/db/dballents.h"
#include "arx/db/dbentityfactory.h"
#include "arx/db/dbmain.h"
#include "arx/ed/edgroups.h"
#include "arx/ed/edports.h"
#include "arx/ed/edsets.h"
#include "arx/ed/edvars.h"
#include "base/text.h"

#include <algorithm>
#include <memory>

namespace base = veltora::base;

namespace {

constexpr int kErrnoBadName = 1;
constexpr int kErrnoBadChain = 15;

int failed(int cause) {
  acedSetErrno(cause);
  return RTERROR;
}

resbuf** endOf(resbuf** link) {
  while (*link) link = &(*link)->rbnext;
  return link;
}

resbuf* chainOf(const AcDbObject& object) {
  resbuf* head = acutNewRb(-1);
  acedNameOf(object.objectId(), head->resval.rlname);
  resbuf** link = &head->rbnext;
  for (const AcEdGroup& group : acedGroupsOf(object)) {
    *link = acedRbFromGroup(group);
    if (*link) link = &(*link)->rbnext;
  }
  return head;
}

std::vector<std::wstring> applicationsOf(const resbuf* chain) {
  std::vector<std::wstring> names;
  for (; chain; chain = chain->rbnext) {
    if (acutRbKind(chain->restype) == RbKind::kText && chain->resval.rstring)
      names.emplace_back(chain->resval.rstring);
  }
  return names;
}

const resbuf* find(const resbuf* chain, int code) {
  while (chain && chain->restype != code) chain = chain->rbnext;
  return chain;
}

std::string typeOf(const resbuf* chain) {
  const resbuf* item = find(chain, 0);
  return item && item->resval.rstring ? base::toUtf8(base::toUpper(item->resval.rstring)) : std::string();
}

std::vector<DxfTag> tagsOf(const DxfTagText& text) {
  std::vector<DxfTag> tags;
  DxfTagText::Cursor cursor = text.tags();
  for (DxfTag tag; cursor.next(tag);) {
    if (tag.code != 0) tags.push_back(tag);
  }
  return tags;
}

/// A chain that changes some groups of an object: the object's own chain with these in their places.
AcEdRbHolder merged(const AcDbObject& object, const resbuf* chain) {
  AcEdRbHolder whole(chainOf(object));
  for (const resbuf* item = chain; item && item->restype != -3; item = item->rbnext) {
    if (item->restype < 0) continue;
    // The how manyth of its code the item is, so many groups of the object are passed by.
    const resbuf* former = chain;
    std::size_t nth = 0;
    for (; former != item; former = former->rbnext) nth += former->restype == item->restype ? 1 : 0;
    resbuf* target = whole.get();
    while (target && (target->restype != item->restype || nth > 0)) {
      if (target->restype == item->restype) --nth;
      target = target->rbnext;
    }
    resbuf* copy = acutCopyRb(item);
    if (!target) {
      *endOf(&whole.get()->rbnext) = copy;
      continue;
    }
    std::swap(target->resval, copy->resval);
    acutRelRb(copy);
  }
  return whole;
}

/// A new entity with the groups of a chain; null when they do not fit.
std::unique_ptr<AcDbObject> objectFrom(const resbuf* chain, const AcDbObject* former,
                                       AcDbDatabase& database) {
  DxfTagText text;
  const std::vector<AcEdGroup> groups = former ? acedGroupsOf(*former) : std::vector<AcEdGroup>();
  if (!acedTagsFromChain(chain, groups, text)) return nullptr;
  const std::vector<DxfTag> tags = tagsOf(text);
  std::unique_ptr<AcDbObject> made;
  if (!former || AcDbEntity::cast(former)) {
    made.reset(acdbNewEntity(former ? std::string(former->dxfName()) : typeOf(chain), tags));
  } else {
    made.reset(static_cast<AcDbObject*>(former->isA()->create()));
  }
  if (!made || (former && made->isA() != former->isA())) return nullptr;
  try {
    made->dxfIn(tags, database);
  } catch (const DxfError&) {
    return nullptr;
  }
  return made;
}

/// What a chain of groups does not tell: the object's place, its parts, its extended data.
void takePlaceOf(AcDbObject& made, const AcDbObject& former) {
  made.setOwnerId(former.ownerId());
  if (made.extensionDictionary().isNull()) made.setExtensionDictionary(former.extensionDictionary());
  made.setXDataTags(former.xDataTags());
  const AcDbEntity* const entity = AcDbEntity::cast(&former);
  const AcDbSubEntityOwner* const from =
      entity ? static_cast<const AcDbEntity*>(entity)->subEntityOwner() : nullptr;
  AcDbSubEntityOwner* const to = from ? static_cast<AcDbEntity&>(made).subEntityOwner() : nullptr;
  if (!to) return;
  for (const AcDbObjectId part : from->subEntityIds()) to->enterSub(part);
  to->enterEnd(from->sequenceEndId());
}

/// Extended data of a chain as `setXData` takes them: behind -3, without brackets, applications as 1001
/// items.
AcEdRbHolder xdataOf(const resbuf* chain) {
  AcEdRbHolder data;
  resbuf* head = nullptr;
  resbuf** link = &head;
  const resbuf* item = find(chain, -3);
  for (item = item ? item->rbnext : nullptr; item; item = item->rbnext) {
    if (item->restype == RTLB || item->restype == RTLE) continue;
    *link = acutCopyRb(item);
    if (item->restype == RTSTR) (*link)->restype = 1001;
    link = &(*link)->rbnext;
  }
  data.reset(head);
  return data;
}

Acad::ErrorStatus replaceState(AcDbObject& object, AcDbObject& made, const resbuf* xdata) {
  Acad::ErrorStatus status = object.assertWriteEnabled();
  if (status != Acad::eOk) return status;
  object.exchangeState(made);
  if (xdata) status = object.setXData(xdata);
  if (status != Acad::eOk) object.exchangeState(made);
  return status;
}

/// Gives an entity to a block definition, an attribute to a block reference; leaves it open.
Acad::ErrorStatus append(AcDbEntity* entity, AcDbObjectId owner, AcDbObjectId& id) {
  if (AcDbAttribute* const attribute = AcDbAttribute::cast(entity)) {
    const AcDbObjectPointer<AcDbBlockReference> reference(owner, AcDb::kForWrite);
    return reference ? reference->appendAttribute(id, attribute) : Acad::eInvalidInput;
  }
  const AcDbObjectPointer<AcDbBlockTableRecord> block(owner, AcDb::kForWrite);
  return block ? block->appendAcDbEntity(id, entity) : Acad::eInvalidInput;
}

}  // namespace

resbuf* acdbEntGet(const ads_name entity) { return acdbEntGetX(entity, nullptr); }

resbuf* acdbEntGetX(const ads_name entity, const resbuf* applications) {
  const AcDbObjectPointer<AcDbObject> object(acedIdOf(entity));
  if (!object) {
    acedSetErrno(kErrnoBadName);
    return nullptr;
  }
  resbuf* chain = chainOf(*object);
  resbuf** link = endOf(&chain->rbnext);
  for (const std::wstring& name : applicationsOf(applications)) {
    resbuf* data = object->xData(name == L"*" ? nullptr : name.c_str());
    if (!data) continue;
    if (!find(chain, -3)) {
      *link = acutNewRb(-3);
      link = &(*link)->rbnext;
    }
    *link = data;
    link = endOf(link);
    if (name == L"*") break;
  }
  return chain;
}

int acdbEntMod(const resbuf* chain) {
  const resbuf* const name = find(chain, -1);
  if (!name) return failed(kErrnoBadChain);
  const AcDbObjectId id = acedIdOf(name->resval.rlname);
  AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite);
  if (!object) return failed(kErrnoBadName);
  const std::string type = typeOf(chain);
  if (!type.empty() && type != base::toUpperAnsi(object->dxfName())) return failed(kErrnoBadChain);
  const AcEdRbHolder whole = find(chain, 100) ? AcEdRbHolder(acutCopyRbChain(chain)) : merged(*object, chain);
  const std::unique_ptr<AcDbObject> made = objectFrom(whole.get(), object, *id.database());
  if (!made) return failed(kErrnoBadChain);
  takePlaceOf(*made, *object);
  const AcEdRbHolder xdata = xdataOf(chain);
  return replaceState(*object, *made, xdata.get()) == Acad::eOk ? RTNORM : failed(kErrnoBadChain);
}

int acdbEntUpd(const ads_name entity) {
  const AcDbObjectPointer<AcDbEntity> object(acedIdOf(entity));
  return object ? RTNORM : failed(kErrnoBadName);
}

int acdbEntDel(const ads_name entity) {
  AcDbObjectPointer<AcDbEntity> object(acedIdOf(entity), AcDb::kForWrite, true);
  if (!object) return failed(kErrnoBadName);
  return object->erase(!object->isErased()) == Acad::eOk ? RTNORM : failed(kErrnoBadName);
}

int acdbEntMakeIn(const resbuf* chain, AcDbObjectId owner, AcDbObjectId& made) {
  const std::string type = typeOf(chain);
  if (type.empty() || !owner.isValid()) return failed(kErrnoBadChain);
  for (const char* part : {"VERTEX", "SEQEND", "BLOCK", "ENDBLK"}) {
    if (type == part) return failed(kErrnoBadChain);
  }
  std::unique_ptr<AcDbObject> object = objectFrom(chain, nullptr, *owner.database());
  if (!object || AcDbOtherEntity::cast(object.get())) return failed(kErrnoBadChain);
  auto* const entity = static_cast<AcDbEntity*>(object.get());
  if (append(entity, owner, made) != Acad::eOk) return failed(kErrnoBadChain);
  static_cast<void>(object.release());
  const AcEdRbHolder xdata = xdataOf(chain);
  const bool good = !xdata || entity->setXData(xdata.get()) == Acad::eOk;
  if (!good) entity->erase();
  entity->close();
  return good ? RTNORM : failed(kErrnoBadChain);
}

int acdbEntMake(const resbuf* chain) {
  AcDbDatabase* const database = acdbCurDwg();
  if (!database) return failed(kErrnoBadChain);
  const resbuf* const paper = find(chain, 67);
  const bool inPaper = paper && paper->resval.rint != 0;
  AcDbObjectId made;
  return acdbEntMakeIn(chain, inPaper ? database->paperSpaceId() : database->modelSpaceId(), made);
}

namespace {

/// The first live one of a list behind `after`, or of the whole list for the null id; null at the end.
/// @param hint  where the latest search ended: a walk that begins there stays linear
AcDbObjectId nextLive(std::span<const AcDbObjectId> all, AcDbObjectId after, std::size_t& hint) {
  std::size_t at = 0;
  if (!after.isNull()) {
    at = hint < all.size() && all[hint] == after
             ? hint
             : static_cast<std::size_t>(std::find(all.begin(), all.end(), after) - all.begin());
    if (at >= all.size()) return {};
    ++at;
  }
  while (at < all.size() && !all[at].isLive()) ++at;
  if (at >= all.size()) return {};
  hint = at;
  return all[at];
}

/// Attribute or vertex behind `part`, or the first for the null id; then the end of the sequence; null behind
/// it.
AcDbObjectId nextPart(AcDbObjectId owner, AcDbObjectId part) {
  static std::size_t hint = 0;
  const AcDbObjectPointer<AcDbObject> object(owner);
  const auto* const parts = dynamic_cast<const AcDbSubEntityOwner*>(object.object());
  if (!parts || part == parts->sequenceEndId()) return {};
  if (const AcDbObjectId next = nextLive(parts->subEntityIds(), part, hint); !next.isNull()) return next;
  const AcDbObjectId end = parts->sequenceEndId();
  const std::vector<AcDbObjectId> all = object->subObjects();
  return end.isLive() && !all.empty() && all.back() == end ? end : AcDbObjectId();
}

/// Entity of model space behind another.
AcDbObjectId nextEntity(AcDbObjectId after) {
  static std::size_t hint = 0;
  AcDbDatabase* const database = acdbCurDwg();
  const AcDbObjectPointer<AcDbBlockTableRecord> space(database ? database->modelSpaceId() : AcDbObjectId());
  if (!space) return {};
  return nextLive(space->entities(), after, hint);
}

int nameFound(AcDbObjectId id, ads_name entity) {
  if (id.isNull()) return RTERROR;
  acedNameOf(id, entity);
  return RTNORM;
}

}  // namespace

int acdbEntLast(ads_name entity) {
  if (!entity) return RTERROR;
  AcDbDatabase* const database = acdbCurDwg();
  const AcDbObjectPointer<AcDbBlockTableRecord> space(database ? database->modelSpaceId() : AcDbObjectId());
  if (!space) return RTERROR;
  return nameFound(space->lastEntity(), entity);
}

int acdbEntNext(const ads_name after, ads_name entity) {
  if (!entity) return RTERROR;
  if (!after || ads_name_nil(after)) return nameFound(nextEntity({}), entity);
  const AcDbObjectId id = acedIdOf(after);
  if (id.isNull()) return failed(kErrnoBadName);
  if (const AcDbObjectId part = nextPart(id, {}); !part.isNull()) return nameFound(part, entity);
  const AcDbObjectPointer<AcDbObject> object(id, AcDb::kForRead, true);
  const AcDbObjectId owner = object ? object->ownerId() : AcDbObjectId();
  const bool isPart = owner.objectClass() && owner.objectClass()->isDerivedFrom(AcDbEntity::desc());
  if (!isPart) return nameFound(nextEntity(id), entity);
  if (const AcDbObjectId part = nextPart(owner, id); !part.isNull()) return nameFound(part, entity);
  return nameFound(nextEntity(owner), entity);
}

int acdbHandEnt(const ACHAR* handle, ads_name entity) {
  AcDbDatabase* const database = acdbCurDwg();
  Adesk::UInt64 value = 0;
  AcDbObjectId id;
  if (!database || !handle || !entity || !dxfParseHandle(base::toUtf8(handle), value)) return RTERROR;
  if (database->getAcDbObjectId(id, false, value) != Acad::eOk) return RTERROR;
  return nameFound(id, entity);
}

int acedTextBox(const resbuf* text, ads_point low, ads_point high) {
  AcDbDatabase* const database = acdbCurDwg();
  if (!database || !low || !high || typeOf(text).empty()) return RTERROR;
  const std::unique_ptr<AcDbObject> made = objectFrom(text, nullptr, *database);
  const AcDbText* const line = AcDbText::cast(made.get());
  if (!line) return failed(kErrnoBadChain);
  const AcDbTextSize size = line->measure();
  low[0] = 0.0, low[1] = -size.descent, low[2] = 0.0;
  high[0] = size.width, high[1] = size.height, high[2] = 0.0;
  return RTNORM;
}
