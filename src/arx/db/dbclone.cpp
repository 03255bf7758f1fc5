#include "arx/db/dbclone.h"

#include "arx/db/dbmain.h"
#include "arx/db/dbsubents.h"
#include "base/text.h"

#include <memory>
#include <unordered_map>

namespace {

/// The copies of one call.
class Cloning {
public:
  explicit Cloning(AcDbDatabase& database) : m_database(database) {}
  AcDbObjectId entity(AcDbObjectId id, AcDbObjectId space);
  /// Turns the references among copies to the copies.
  void finish();

private:
  void parts(const AcDbEntity& from, AcDbEntity& to);
  void dictionary(const AcDbObject& from, AcDbObject& to);
  void entries(const AcDbDictionary& from, AcDbDictionary& to);
  void picture(AcDbOtherEntity& copy);
  void note(AcDbObjectId from, AcDbObjectId to) { m_copies[from.stub()] = to, m_made.push_back(to); }

  AcDbDatabase& m_database;
  std::unordered_map<const AcDbStub*, AcDbObjectId> m_copies;
  std::vector<AcDbObjectId> m_made;
};

AcDbObjectId Cloning::entity(AcDbObjectId id, AcDbObjectId space) {
  const AcDbObjectPointer<AcDbEntity> from(id);
  const AcDbObjectPointer<AcDbBlockTableRecord> owner(space, AcDb::kForWrite);
  if (!from || !owner) return {};
  std::unique_ptr<AcDbEntity> made(static_cast<AcDbEntity*>(from->cloneAlone()));
  if (AcDbSubEntityOwner* parts = made->subEntityOwner()) parts->forgetSubs();
  AcDbObjectId copyId;
  if (owner->appendAcDbEntity(copyId, made.get()) != Acad::eOk) return {};
  AcDbEntity* const copy = made.release();
  note(id, copyId);
  parts(*from, *copy);
  dictionary(*from, *copy);
  if (AcDbOtherEntity* other = AcDbOtherEntity::cast(copy)) picture(*other);
  copy->close();
  return copyId;
}

void Cloning::parts(const AcDbEntity& from, AcDbEntity& to) {
  const AcDbSubEntityOwner* const owner = from.subEntityOwner();
  if (!owner) return;
  for (const AcDbObjectId id : from.subObjects()) {
    const AcDbObjectPointer<AcDbEntity> part(id);
    if (!part) continue;
    std::unique_ptr<AcDbEntity> made(static_cast<AcDbEntity*>(part->cloneAlone()));
    AcDbObjectId copyId;
    if (m_database.addAcDbObject(copyId, made.get()) != Acad::eOk) continue;
    AcDbEntity* const copy = made.release();
    copy->setOwnerId(to.objectId());
    copy->setInPaperSpace(to.inPaperSpace());
    if (id == owner->sequenceEndId())
      to.subEntityOwner()->enterEnd(copyId);
    else
      to.subEntityOwner()->enterSub(copyId);
    note(id, copyId);
    dictionary(*part, *copy);
    copy->close();
  }
}

void Cloning::dictionary(const AcDbObject& from, AcDbObject& to) {
  const AcDbObjectPointer<AcDbDictionary> source(from.extensionDictionary());
  if (!source || to.createExtensionDictionary() != Acad::eOk) return;
  const AcDbObjectPointer<AcDbDictionary> made(to.extensionDictionary(), AcDb::kForWrite);
  if (!made) return;
  note(source->objectId(), made->objectId());
  made->setTreatElementsAsHard(source->isTreatElementsAsHard());
  entries(*source, *made);
}

void Cloning::entries(const AcDbDictionary& from, AcDbDictionary& to) {
  for (const AcDbDictionary::Entry& entry : from.entries()) {
    const AcDbObjectPointer<AcDbObject> object(entry.id);
    if (!object || object->ownerId() != from.objectId()) continue;
    const AcDbDictionary* const folder = AcDbDictionary::cast(object.object());
    std::unique_ptr<AcDbObject> made(folder ? new AcDbDictionary : object->cloneAlone());
    AcDbObjectId id;
    if (to.setAt(entry.key.c_str(), made.get(), id) != Acad::eOk) continue;
    AcDbObject* const copy = made.release();
    note(entry.id, id);
    if (folder) entries(*folder, *AcDbDictionary::cast(copy));
    dictionary(*object, *copy);
    copy->close();
  }
}

/// The picture moves with its entity, so the copy needs its own.
void Cloning::picture(AcDbOtherEntity& copy) {
  const std::wstring former = dxfToWide(copy.pictureName());
  AcDbObjectId source;
  {
    const AcDbObjectPointer<AcDbBlockTable> blocks(m_database.blockTableId());
    if (former.size() < 2 || !blocks || blocks->getIdAt(former.c_str(), source) != Acad::eOk) return;
  }
  std::vector<AcDbObjectId> shown;
  AcGePoint3d origin;
  int flags = 0;
  {
    const AcDbObjectPointer<AcDbBlockTableRecord> record(source);
    if (!record) return;
    shown = record->entities();
    origin = record->origin();
    flags = record->flags();
  }
  const AcDbObjectId made = acdbAddNumberedBlock(m_database, former.substr(0, former[0] == L'*' ? 2 : 1));
  if (made.isNull()) return;
  std::wstring name;
  {
    const AcDbObjectPointer<AcDbBlockTableRecord> record(made, AcDb::kForWrite);
    name = record->name();
    record->setOrigin(origin);
    record->setFlags(flags);
  }
  note(source, made);
  for (const AcDbObjectId id : shown) entity(id, made);
  copy.setPictureName(dxfFromWide(name));
}

void Cloning::finish() {
  for (const AcDbObjectId id : m_made) {
    const AcDbObjectPointer<AcDbObject> made(id, AcDb::kForWrite);
    if (!made) continue;
    made->visitReferences([this](AcDbObjectId& reference) {
      const auto copy = m_copies.find(reference.stub());
      if (copy != m_copies.end()) reference = copy->second;
    });
  }
}

std::vector<AcDbObjectId> copyAll(const std::vector<AcDbObjectId>& entities, AcDbObjectId space) {
  std::vector<AcDbObjectId> copies;
  if (entities.empty()) return copies;
  Cloning cloning(*entities.front().database());
  for (const AcDbObjectId id : entities) {
    AcDbObjectId owner = space;
    if (owner.isNull()) {
      const AcDbObjectPointer<AcDbEntity> entity(id);
      if (entity) owner = entity->blockId();
    }
    copies.push_back(cloning.entity(id, owner));
  }
  cloning.finish();
  return copies;
}

}  // namespace

std::vector<AcDbObjectId> acdbCopyEntities(const std::vector<AcDbObjectId>& entities) {
  return copyAll(entities, {});
}

std::vector<AcDbObjectId> acdbCopyEntities(const std::vector<AcDbObjectId>& entities, AcDbObjectId space) {
  return copyAll(entities, space);
}
