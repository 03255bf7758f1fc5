#include "arx/db/dbobject.h"

#include "arx/db/dbmain.h"
#include "arx/db/dbobject_rare.h"

#include <algorithm>
#include <limits>

ACRX_DEFINE_MEMBERS(AcDbObject, AcRxObject, nullptr, nullptr)

AcRxClass* AcDbObjectId::objectClass() const { return isValid() ? m_stub->object->isA() : nullptr; }

AcDbObject::AcDbObject() = default;

AcDbObject::AcDbObject(const AcDbObject& other)
    : AcRxObject(other),
      m_stub(other.m_stub),
      m_owner(other.m_owner),
      m_rare(other.m_rare ? std::make_unique<Rare>(*other.m_rare) : nullptr) {}

AcDbObject::~AcDbObject() {
  // A snapshot bears the identity of its original without being it.
  if (m_stub && m_stub->object == this) m_stub->object = nullptr;
}

AcDbObject::Rare& AcDbObject::rare() {
  if (!m_rare) m_rare = std::make_unique<Rare>();
  return *m_rare;
}

void AcDbObject::forgetIdentity() {
  AcDbDatabase* const origin = database();
  m_stub = nullptr;
  m_owner.setNull();
  const bool holdsText = isKindOf(AcDbXrecord::desc()) || isKindOf(AcDbOtherObject::desc());
  if (!m_rare && !(origin && holdsText)) return;
  Rare& r = rare();
  r.extensionDictionary.setNull();
  r.reactors.clear();
  if (origin) {
    r.textDatabase = origin;
    r.translated = false;
  }
}

void AcDbObject::exchangeBase(AcDbObject& other) {
  std::swap(m_owner, other.m_owner);
  std::swap(m_rare, other.m_rare);
}

Acad::ErrorStatus AcDbObject::assertWriteEnabled() {
  if (!m_stub) return Acad::eOk;
  AcDbUndoLog& log = m_stub->database->undoLog();
  if (!log.recording()) return Acad::eOk;
  if (!m_stub->writer) return Acad::eNotOpenForWrite;
  log.noteChange(*this);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::setOwnerId(AcDbObjectId owner) { return change(m_owner, owner); }

Acad::ErrorStatus AcDbObject::upgradeOpen() {
  if (!m_stub) return Acad::eOk;
  if (m_stub->writer) return Acad::eWasOpenForWrite;
  if (m_stub->readers == 0) return Acad::eNotOpenForRead;
  if (m_stub->readers > 1) return Acad::eWasOpenForRead;
  m_stub->readers = 0;
  m_stub->writer = true;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::downgradeOpen() {
  if (!m_stub) return Acad::eOk;
  if (!m_stub->writer) return m_stub->readers > 0 ? Acad::eWasOpenForRead : Acad::eNotOpenForWrite;
  m_stub->writer = false;
  m_stub->readers = 1;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::close() {
  if (!m_stub) return Acad::eOk;
  if (m_stub->writer) {
    m_stub->writer = false;
  } else if (m_stub->readers > 0) {
    --m_stub->readers;
  } else {
    return Acad::eNotOpenForRead;
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::erase(bool erasing) {
  if (!m_stub) return Acad::eNotInDatabase;
  if (!m_stub->writer && m_stub->database->undoLog().recording()) return Acad::eNotOpenForWrite;
  if (m_stub->erased == erasing) return erasing ? Acad::eWasErased : Acad::eNotApplicable;
  markErased(objectId(), erasing);
  return Acad::eOk;
}

void AcDbObject::markErased(AcDbObjectId id, bool erased) {
  std::vector<AcDbObjectId> pending{id};
  while (!pending.empty()) {
    const AcDbObjectId next = pending.back();
    pending.pop_back();
    // The flag is set before the parts are met, so that a damaged file whose objects own each other ends the
    // walk.
    if (!next.isValid() || next.isErased() == erased) continue;
    AcDbStub* const stub = next.stub();
    stub->erased = erased;
    stub->database->undoLog().noteErased(stub, erased);
    const AcDbObject& object = *stub->object;
    const std::vector<AcDbObjectId> parts = object.subObjects();
    pending.insert(pending.end(), parts.rbegin(), parts.rend());
    if (object.m_rare) pending.push_back(object.m_rare->extensionDictionary);
    if (const auto* dictionary = AcDbDictionary::cast(&object)) {
      for (const AcDbDictionary::Entry& entry : dictionary->entries()) {
        if (entry.id.isValid() && entry.id.stub()->object->ownerId() == next) pending.push_back(entry.id);
      }
    } else if (const auto* block = AcDbBlockTableRecord::cast(&object)) {
      pending.insert(pending.end(), block->entities().begin(), block->entities().end());
    }
  }
}

AcDbObjectId AcDbObject::extensionDictionary() const {
  return m_rare && m_rare->extensionDictionary.isLive() ? m_rare->extensionDictionary : AcDbObjectId();
}

Acad::ErrorStatus AcDbObject::createExtensionDictionary() {
  if (!m_stub) return Acad::eNotInDatabase;
  if (!extensionDictionary().isNull()) return isWriteEnabled() ? Acad::eAlreadyInDb : Acad::eNotOpenForWrite;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  auto* dictionary = new AcDbDictionary;
  AcDbObjectId id;
  database()->addAcDbObject(id, dictionary);
  dictionary->setTreatElementsAsHard(true);
  dictionary->setOwnerId(objectId());
  dictionary->close();
  rare().extensionDictionary = id;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::releaseExtensionDictionary() {
  const AcDbObjectId id = extensionDictionary();
  if (id.isNull()) return Acad::eKeyNotFound;
  const auto* dictionary = AcDbDictionary::cast(id.stub()->object);
  if (dictionary && dictionary->numEntries() > 0) return Acad::eObjectIsReferenced;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  markErased(id, true);
  rare().extensionDictionary.setNull();
  return Acad::eOk;
}

void AcDbObject::setExtensionDictionary(AcDbObjectId dictionary) {
  if (dictionary.isNull() && !m_rare) return;
  rare().extensionDictionary = dictionary;
}

std::vector<AcDbObjectId> AcDbObject::reactors() const {
  return m_rare ? m_rare->reactors : std::vector<AcDbObjectId>();
}

void AcDbObject::addPersistentReactor(AcDbObjectId reactor) {
  if (reactor.isNull() || assertWriteEnabled() != Acad::eOk) return;
  std::vector<AcDbObjectId>& all = rare().reactors;
  if (std::find(all.begin(), all.end(), reactor) == all.end()) all.push_back(reactor);
}

void AcDbObject::removePersistentReactor(AcDbObjectId reactor) {
  if (!m_rare || assertWriteEnabled() != Acad::eOk) return;
  std::erase(m_rare->reactors, reactor);
}

void AcDbObject::visitTags(DxfTagText& tags, const std::function<void(AcDbObjectId&)>& visit) {
  AcDbDatabase* const textDatabase = m_rare && m_rare->textDatabase ? m_rare->textDatabase : database();
  if (!textDatabase || tags.empty()) return;
  DxfTagText rewritten;
  bool changed = false;
  DxfTagText::Cursor cursor = tags.tags();
  for (DxfTag tag; cursor.next(tag);) {
    Adesk::UInt64 handle = 0;
    if (dxfKind(tag.code) == DxfKind::kPointer && dxfParseHandle(tag.value, handle) && handle) {
      const AcDbObjectId before = textDatabase->idOf(handle);
      AcDbObjectId id = before;
      visit(id);
      if (id != before) {
        changed = true;
        rewritten.appendHandle(tag.code, id.handle());
        continue;
      }
    }
    rewritten.append(tag.code, tag.value);
  }
  if (!changed) return;
  tags = std::move(rewritten);
  if (m_rare) m_rare->translated = true;
}

void AcDbObject::visitReferences(const std::function<void(AcDbObjectId&)>& visit) {
  if (!m_rare) return;
  if (m_rare->translated) {  // the walk before has replaced the handles by those of the object's own drawing
    m_rare->textDatabase = nullptr;
    m_rare->translated = false;
  }
  for (DxfExtra& extra : m_rare->extras) visitTags(extra.tags, visit);
  visitTags(m_rare->groups, visit);
  visitTags(m_rare->xData, visit);
}

Acad::ErrorStatus acdbOpenObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode, bool openErased) {
  object = nullptr;
  if (id.isNull()) return Acad::eNullObjectId;
  AcDbStub& stub = *id.stub();
  if (!stub.object) return Acad::eUnknownHandle;
  if (stub.erased && !openErased) return Acad::eWasErased;
  if (stub.writer) return Acad::eWasOpenForWrite;
  if (mode == AcDb::kForWrite) {
    if (stub.readers > 0) return Acad::eWasOpenForRead;
    stub.writer = true;
  } else {
    if (stub.readers == std::numeric_limits<Adesk::UInt16>::max()) return Acad::eWasOpenForRead;
    ++stub.readers;
  }
  object = stub.object;
  return Acad::eOk;
}

Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name) {
  id.setNull();
  auto* const stub = reinterpret_cast<AcDbStub*>(static_cast<std::intptr_t>(name[0]));
  if (!AcDbDatabase::isStubOf(stub, static_cast<Adesk::UInt64>(name[1]))) return Acad::eInvalidInput;
  id = AcDbObjectId(stub);
  return id.isValid() ? Acad::eOk : (id.setNull(), Acad::eUnknownHandle);
}

Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id) {
  name[0] = static_cast<Adesk::Int64>(id.asOldId());
  name[1] = static_cast<Adesk::Int64>(static_cast<Adesk::UInt64>(id.handle()));
  return id.isNull() ? Acad::eNullObjectId : Acad::eOk;
}
