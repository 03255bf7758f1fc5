#include "arx/db/dbobject.h"

#include "arx/db/dbmain.h"
#include "arx/db/dbrarely.h"
#include "arx/db/dbshared.h"
#include "arx/db/dbxdata.h"

#include <algorithm>
#include <limits>

ACRX_DEFINE_MEMBERS(AcDbObject, AcGiDrawable, nullptr, nullptr)

/// What few objects have; of these most have extended data alone.
struct AcDbObject::Rare : AcDbPooled {
  struct Kept {
    DxfTagText groups;  // groups in braces of other programs, in front of the first subclass marker
    std::vector<AcDbObjectId> reactors;
    std::vector<DxfExtra> extras;
    // Handles in the texts of a copy name objects of this database; null: of the object's own.
    AcDbDatabase* textDatabase = nullptr;
    bool translated = false;                   // a visitor has replaced them
    mutable std::vector<char> extraIsWritten;  // while the object is being written
  };
  AcDbShared<DxfTagText> xData;  // as in the file, 1001 first
  AcDbObjectId extensionDictionary;
  AcDbRarely<Kept> kept;
};

namespace {

/// End of the group in braces that begins at `at`: one past its "}", or `at` when it does not end before the
/// first subclass marker.
std::size_t endOfBraces(std::span<const DxfTag> tags, std::size_t at) {
  int depth = 0;
  for (std::size_t i = at; i < tags.size() && tags[i].code != 100; ++i) {
    if (tags[i].code != 102) continue;
    if (tags[i].value.starts_with('{')) ++depth;
    if (tags[i].value.starts_with('}') && --depth == 0) return i + 1;
  }
  return at;
}

bool allOfCode(std::span<const DxfTag> tags, int code) {
  for (const DxfTag& tag : tags) {
    Adesk::UInt64 handle = 0;
    if (tag.code != code || !dxfParseHandle(tag.value, handle)) return false;
  }
  return true;
}

AcDbObjectId idOfTag(const DxfTag& tag, AcDbDatabase& database) {
  Adesk::UInt64 handle = 0;
  return dxfParseHandle(tag.value, handle) && handle ? database.idOf(handle) : AcDbObjectId();
}

}  // namespace

AcRxClass* AcDbObjectId::objectClass() const { return isValid() ? m_stub->object->isA() : nullptr; }

AcDbObject::AcDbObject() = default;

AcDbObject::AcDbObject(const AcDbObject& other)
    : AcGiDrawable(other),
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
  if (!m_rare && !(origin && isFileText())) return;
  Rare& r = rare();
  r.extensionDictionary.setNull();
  if (!r.kept->reactors.empty()) r.kept.own().reactors.clear();
  if (origin) {
    r.kept.own().textDatabase = origin;
    r.kept.own().translated = false;
  }
}

void AcDbObject::exchangeBase(AcDbObject& other) {
  std::swap(m_owner, other.m_owner);
  std::swap(m_rare, other.m_rare);
}

Acad::ErrorStatus AcDbObject::assertWriteEnabled() {
  if (!m_stub) return Acad::eOk;
  AcDbUndoLog& log = m_stub->database->undoLog();
  if (log.recording() && !m_stub->writer) return Acad::eNotOpenForWrite;
  m_stub->database->noteTouched(*m_stub);
  if (!log.recording()) return Acad::eOk;
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
  m_stub->database->noteTouched(*m_stub);
  m_stub->writer = false;
  m_stub->readers = 1;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::close() {
  if (!m_stub) return Acad::eOk;
  if (m_stub->writer) {
    m_stub->database->noteTouched(*m_stub);
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
    stub->database->noteTouched(*stub);
    stub->database->undoLog().noteErased(stub, erased);
    const AcDbObject& object = *stub->object;
    if (object.m_rare) pending.push_back(object.m_rare->extensionDictionary);
    const std::vector<AcDbObjectId> owned = object.ownedObjects();
    pending.insert(pending.end(), owned.rbegin(), owned.rend());
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
  return m_rare ? m_rare->kept->reactors : std::vector<AcDbObjectId>();
}

void AcDbObject::addPersistentReactor(AcDbObjectId reactor) {
  if (reactor.isNull() || assertWriteEnabled() != Acad::eOk) return;
  std::vector<AcDbObjectId>& all = rare().kept.own().reactors;
  if (std::find(all.begin(), all.end(), reactor) == all.end()) all.push_back(reactor);
}

void AcDbObject::removePersistentReactor(AcDbObjectId reactor) {
  if (!m_rare || assertWriteEnabled() != Acad::eOk) return;
  std::erase(m_rare->kept.own().reactors, reactor);
}

void AcDbObject::visitTags(DxfTagText& tags, const std::function<void(AcDbObjectId&)>& visit) {
  AcDbDatabase* const textDatabase =
      m_rare && m_rare->kept->textDatabase ? m_rare->kept->textDatabase : database();
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
  if (m_rare) m_rare->kept.own().translated = true;
}

void AcDbObject::visitReferences(const std::function<void(AcDbObjectId&)>& visit) {
  if (!m_rare) return;
  if (m_rare->kept->translated) {
    // The walk before has replaced the handles by those of the object's own drawing.
    m_rare->kept.own().textDatabase = nullptr;
    m_rare->kept.own().translated = false;
  }
  if (!m_rare->kept->extras.empty()) {
    for (DxfExtra& extra : m_rare->kept.own().extras) visitTags(extra.tags, visit);
  }
  if (!m_rare->kept->groups.empty()) visitTags(m_rare->kept.own().groups, visit);
  DxfTagText data = *m_rare->xData;
  visitTags(data, visit);
  m_rare->xData.set(data.text());
}

// ---- Extended data

resbuf* AcDbObject::xData(const ACHAR* application) const { return acdbXDataChain(xDataTags(), application); }

bool AcDbObject::hasXData(const ACHAR* application) const { return acdbHasXData(xDataTags(), application); }

Acad::ErrorStatus AcDbObject::setXData(const resbuf* chain) {
  DxfTagText all = xDataTags();
  const auto isRegistered = [this](const std::wstring& application) {
    return !m_stub || database()->hasRegApp(application);
  };
  Acad::ErrorStatus status = acdbReplaceXData(all, chain, isRegistered);
  if (status == Acad::eOk) status = assertWriteEnabled();
  if (status == Acad::eOk) setXDataTags(all);
  return status;
}

Acad::ErrorStatus AcDbObject::xDataTransformBy(const AcGeMatrix3d& matrix) {
  resbuf* const chain = xData();
  const bool moved = acdbTransformXData(chain, matrix);
  const Acad::ErrorStatus status = moved ? setXData(chain) : Acad::eOk;
  acutRelRb(chain);
  return status;
}

const DxfTagText& AcDbObject::xDataTags() const {
  static const DxfTagText none;
  return m_rare ? *m_rare->xData : none;
}

void AcDbObject::setXDataTags(const DxfTagText& tags) {
  if (tags.empty() && !m_rare) return;
  rare().xData.set(tags.text());
}

// ---- Drawing files

void AcDbObject::dxfIn(std::span<const DxfTag> tags, AcDbDatabase& database) {
  // As most objects have it: handle and owner in front, nothing of other programs, extended data at the end.
  const int handleCode = dxfName() == "DIMSTYLE" ? 105 : 5;
  const bool usual =
      tags.size() > 2 && tags[0].code == handleCode && tags[1].code == 330 && tags[2].code == 100;
  const auto data =
      std::find_if(tags.begin(), tags.end(), [](const DxfTag& tag) { return tag.code == 1001; });
  const bool dataAtEnd = std::all_of(data, tags.end(), [](const DxfTag& tag) { return tag.code >= 1000; });
  std::vector<DxfTag> sorted;
  std::span<const DxfTag> body(tags.begin(), data);
  if (usual && dataAtEnd) {
    m_owner = idOfTag(tags[1], database);
    body = body.subspan(2);
    DxfTagText extended;
    for (const DxfTag& tag : std::span(data, tags.end())) extended.append(tag.code, tag.value);
    setXDataTags(extended);
  } else {
    sorted = sortOut(tags, handleCode, database);
    body = sorted;
  }
  AcDbDxfReader in(body, database);
  dxfInFields(in);
  std::vector<DxfExtra> extras = in.takeExtras();
  if (!extras.empty()) rare().kept.own().extras = std::move(extras);
}

/// Takes handle, owner, groups in braces and extended data wherever they stand. @return the rest
std::vector<DxfTag> AcDbObject::sortOut(std::span<const DxfTag> tags, int handleCode,
                                        AcDbDatabase& database) {
  std::vector<DxfTag> body;
  body.reserve(tags.size());
  bool inFront = true;
  bool hasHandle = false;
  bool hasOwner = false;
  bool inXData = false;
  DxfTagText extended;
  for (std::size_t i = 0; i < tags.size(); ++i) {
    const DxfTag& tag = tags[i];
    if (tag.code == 100) inFront = false;
    if (tag.code == 1001) inXData = true;
    if (inXData && tag.code >= 1000) {
      extended.append(tag.code, tag.value);
    } else if (inFront && tag.code == handleCode && !hasHandle) {
      hasHandle = true;
    } else if (inFront && tag.code == 330 && !hasOwner) {
      hasOwner = true;
      m_owner = idOfTag(tag, database);
    } else if (inFront && tag.code == 102 && endOfBraces(tags, i) > i) {
      const std::size_t end = endOfBraces(tags, i);
      dxfInBraces(tags.subspan(i, end - i), database);
      i = end - 1;
    } else {
      body.push_back(tag);
    }
  }
  setXDataTags(extended);
  return body;
}

void AcDbObject::dxfInBraces(std::span<const DxfTag> tags, AcDbDatabase& database) {
  const std::span<const DxfTag> content = tags.subspan(1, tags.size() - 2);
  Rare& r = rare();
  if (tags[0].value == "{ACAD_XDICTIONARY" && content.size() == 1 && allOfCode(content, 360) &&
      r.extensionDictionary.isNull()) {
    r.extensionDictionary = idOfTag(content[0], database);
  } else if (tags[0].value == "{ACAD_REACTORS" && allOfCode(content, 330)) {
    for (const DxfTag& tag : content) r.kept.own().reactors.push_back(idOfTag(tag, database));
  } else {
    for (const DxfTag& tag : tags) r.kept.own().groups.append(tag.code, tag.value);
  }
}

void AcDbObject::dxfOut(AcDbDxfWriter& out) const {
  out.text(0, dxfName());
  dxfOutHead(out);
  if (m_stub) out.handle(dxfName() == "DIMSTYLE" ? 105 : 5, handle());
  if (m_rare) dxfOutBraces(out);
  if (m_stub || !m_owner.isNull()) out.id(330, m_owner);
  const std::vector<DxfExtra>& extras = keptSections();
  if (!extras.empty()) m_rare->kept->extraIsWritten.assign(extras.size(), 0);
  writeExtras(out, {});
  dxfOutFields(out);
  if (!m_rare) return;
  for (std::size_t i = 0; i < extras.size(); ++i) {
    const DxfExtra& extra = extras[i];
    if (m_rare->kept->extraIsWritten[i]) continue;
    if (!extra.whole) out.subclass(extra.subclass);  // of a section that the class has not written this time
    out.kept(extra.tags, database());
  }
  out.kept(*m_rare->xData, database());
}

void AcDbObject::dxfOutBraces(AcDbDxfWriter& out) const {
  out.kept(m_rare->kept->groups, database());
  if (m_rare->extensionDictionary.isValid() && !m_rare->extensionDictionary.isErased()) {
    out.text(102, "{ACAD_XDICTIONARY");
    out.id(360, m_rare->extensionDictionary);
    out.text(102, "}");
  }
  bool any = false;
  for (const AcDbObjectId reactor : m_rare->kept->reactors) {
    if (reactor.isNull() || reactor.isErased()) continue;
    if (!any) out.text(102, "{ACAD_REACTORS");
    any = true;
    out.id(330, reactor);
  }
  if (any) out.text(102, "}");
}

void AcDbObject::dxfOutHead(AcDbDxfWriter&) const {}
void AcDbObject::dxfInFields(AcDbDxfReader&) {}
void AcDbObject::dxfOutFields(AcDbDxfWriter&) const {}

std::string_view AcDbObject::dxfName() const {
  const char* const name = isA()->dxfName();
  return name ? name : std::string_view();
}

void AcDbObject::writeExtras(AcDbDxfWriter& out, std::string_view subclass) const {
  const std::vector<DxfExtra>& extras = keptSections();
  if (extras.empty()) return;
  std::vector<char>& written = m_rare->kept->extraIsWritten;
  written.resize(extras.size(), 0);
  for (std::size_t i = 0; i < extras.size(); ++i) {
    const DxfExtra& extra = extras[i];
    if (extra.whole || extra.subclass != subclass || written[i]) continue;
    out.kept(extra.tags, database());
    written[i] = 1;
  }
}

const std::vector<DxfExtra>& AcDbObject::keptSections() const {
  static const std::vector<DxfExtra> none;
  return m_rare ? m_rare->kept->extras : none;
}

void AcDbObject::setKeptSections(std::vector<DxfExtra> sections) {
  rare().kept.own().extras = std::move(sections);
}

bool AcDbObject::hasExtras(std::string_view subclass) const {
  if (!m_rare) return false;
  for (const DxfExtra& extra : m_rare->kept->extras) {
    if (!extra.whole && extra.subclass == subclass) return true;
  }
  return false;
}

// ---- Opening

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
