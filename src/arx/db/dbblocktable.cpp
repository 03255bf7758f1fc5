#include "arx/db/dbblocktable.h"

#include "arx/db/dbdraworder.h"
#include "arx/db/dbents.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbspaceindex.h"
#include "arx/gi/gigeometry.h"
#include "base/free_number.h"
#include "base/text.h"

#include <algorithm>
#include <memory>

ACDB_DEFINE_MEMBERS(AcDbBlockTableRecord, AcDbSymbolTableRecord, "BLOCK_RECORD")

namespace {

constexpr const char* kBlock = "AcDbBlockTableRecord";

bool isPaperSpace(const AcString& name) {
  const std::wstring_view prefix = ACDB_PAPER_SPACE;
  return veltora::base::compareNoCase(std::wstring_view(name).substr(0, prefix.size()), prefix) == 0;
}

}  // namespace

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntityId(AcDbObjectId& id) const {
  id.setNull();
  if (done()) return Acad::eInvalidIndex;
  id = m_ids[m_at];
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntity(AcDbEntity*& entity, AcDb::OpenMode mode) const {
  entity = nullptr;
  if (done()) return Acad::eInvalidIndex;
  return acdbOpenObject(entity, m_ids[m_at], mode);
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity) {
  id.setNull();
  if (!entity) return Acad::eNullObjectPointer;
  if (!database()) return Acad::eNotInDatabase;
  if (entity->database()) return Acad::eAlreadyInDb;
  // No snapshot: the list only grows, and undo marks the entity erased.
  if (!isWriteEnabled() && database()->undoLog().recording()) return Acad::eNotOpenForWrite;
  entity->setDatabaseDefaults(database());
  entity->setInPaperSpace(isPaperSpace(m_name));
  const Acad::ErrorStatus status = database()->addAcDbObject(id, entity);
  if (status != Acad::eOk) return status;
  entity->setOwnerId(objectId());
  m_entities.push_back(id);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* entity) {
  AcDbObjectId id;
  return appendAcDbEntity(id, entity);
}

Acad::ErrorStatus AcDbBlockTableRecord::newIterator(AcDbBlockTableRecordIterator*& iterator) const {
  iterator = new AcDbBlockTableRecordIterator(m_entities);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::setOrigin(const AcGePoint3d& origin) {
  return change(m_origin, origin);
}

Acad::ErrorStatus AcDbBlockTableRecord::setComments(const ACHAR* text) {
  if (!text) return Acad::eInvalidInput;
  return change(m_comments, text);
}

AcDbObjectId AcDbBlockTableRecord::lastEntity() const {
  const Adesk::UInt64 revivals = database() ? database()->undoLog().revivals() : 0;
  if (revivals != m_tail.revivals || m_tail.size > m_entities.size())
    m_tail = {m_entities.size(), m_entities.size(), revivals};
  std::size_t end = m_entities.size();
  while (end > 0 && !m_entities[end - 1].isLive())
    end = end == m_tail.size ? std::min(end - 1, m_tail.liveEnd) : end - 1;
  m_tail = {end, m_entities.size(), revivals};
  return end > 0 ? m_entities[end - 1] : AcDbObjectId();
}

bool AcDbBlockTableRecord::hasAttributeDefinitions() const {
  for (const AcDbObjectId id : m_entities) {
    if (id.isLive() && id.stub()->object->dxfName() == "ATTDEF") return true;
  }
  return false;
}

Acad::ErrorStatus AcDbBlockTableRecord::getBlockReferenceIds(std::vector<AcDbObjectId>& ids) const {
  ids.clear();
  if (!database()) return Acad::eNotInDatabase;
  const AcDbObjectId self = objectId();
  for (const AcDbObjectId id : database()->allObjects()) {
    if (!id.isLive() || id.stub()->object->dxfName() != "INSERT") continue;
    AcDbObject& reference = *id.stub()->object;
    if (!reference.ownerId().isLive()) continue;
    bool shows = false;
    reference.visitReferences([&](AcDbObjectId& other) { shows = shows || other == self; });
    if (shows) ids.push_back(id);
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::getGeomExtents(AcDbExtents& extents) const {
  AcDbExtents all;
  if (database() && database()->modelSpaceId() == objectId())
    all = database()->spaceIndex().wholeBox();
  else
    all = measured();
  if (all.isEmpty()) return Acad::eInvalidExtents;
  extents = all;
  return Acad::eOk;
}

AcDbExtents AcDbBlockTableRecord::measured() const {
  AcDbExtents all;
  for (const AcDbObjectId id : m_entities) {
    const auto* entity = id.isLive() ? AcDbEntity::cast(id.stub()->object) : nullptr;
    AcDbExtents box;
    if (entity && entity->getGeomExtents(box) == Acad::eOk) all.addExt(box);
  }
  return all;
}

void AcDbBlockTableRecord::subWorldDraw(AcGiWorldDraw& draw) const {
  const auto show = [&](AcDbObjectId id) {
    const auto* entity = id.isLive() ? AcDbEntity::cast(id.stub()->object) : nullptr;
    if (entity && entity->isShownByReferences()) draw.geometry().draw(*entity);
  };
  const AcDbDrawOrder order(*this);
  if (order.followsList())
    std::ranges::for_each(m_entities, show);
  else
    std::ranges::for_each(order.entities(), show);
}

void AcDbBlockTableRecord::dxfInFields(AcDbDxfReader& in) {
  AcDbSymbolTableRecord::dxfInFields(in);
  if (!in.enter(kBlock)) return;
  while (in.next()) {
    if (in.code() == 2)
      m_name = in.wide();
    else if (in.code() == 340)
      m_layout = in.id();
    else
      in.keep();  // 70 here are insertion units; the block's flags stand in its BLOCK
  }
}

void AcDbBlockTableRecord::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbSymbolTableRecord::dxfOutFields(out);
  out.subclass(kBlock);
  out.wide(2, m_name);
  out.id(340, m_layout);
  if (hasExtras(kBlock)) return writeExtras(out, kBlock);
  out.integer(70, 0);
  out.integer(280, 1);
  out.integer(281, 0);
}

void AcDbBlockTableRecord::visitReferences(const std::function<void(AcDbObjectId&)>& visit) {
  AcDbSymbolTableRecord::visitReferences(visit);
  visit(m_layout);
}

void AcDbBlockTableRecord::exchangeFields(AcDbBlockTableRecord& other) {
  AcDbSymbolTableRecord::exchangeFields(other);
  std::swap(m_origin, other.m_origin);
  std::swap(m_comments, other.m_comments);
  std::swap(m_layout, other.m_layout);
}

const AcDbBlockTableRecord* acdbBlockRecord(AcDbObjectId id) {
  return id.isLive() ? AcDbBlockTableRecord::cast(id.stub()->object) : nullptr;
}

AcDbObjectId acdbAddNumberedBlock(AcDbDatabase& database, const std::wstring& beginning) {
  const AcDbObjectPointer<AcDbBlockTable> blocks(database.blockTableId(), AcDb::kForWrite);
  if (!blocks) return {};
  const auto named = [&](int number) { return beginning + std::to_wstring(number); };
  const int free = veltora::base::freeNumber([&](int number) { return blocks->has(named(number).c_str()); });
  auto record = std::make_unique<AcDbBlockTableRecord>();
  AcDbObjectId id;
  if (record->setName(named(free).c_str()) != Acad::eOk || blocks->add(id, record.get()) != Acad::eOk)
    return {};
  record.release()->close();
  return id;
}
