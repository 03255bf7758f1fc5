#include "arx/db/dbmain.h"

#include "arx/db/dbentitykinds.h"
#include "arx/db/dbents.h"
#include "arx/db/dbfileformat.h"
#include "arx/db/dbspaceindex.h"
#include "base/text.h"

#include <algorithm>

namespace {

/// Drawings in memory, for checking names that callers hand over.
std::vector<AcDbDatabase*>& liveDatabases() {
  static auto* const all = new std::vector<AcDbDatabase*>;
  return *all;
}

/// An empty record of one of the tables that the host models; null for another table.
AcDbSymbolTableRecord* newRecord(std::string_view kind) {
  if (kind == "LAYER") return new AcDbLayerTableRecord;
  if (kind == "LTYPE") return new AcDbLinetypeTableRecord;
  if (kind == "STYLE") return new AcDbTextStyleTableRecord;
  if (kind == "APPID") return new AcDbRegAppTableRecord;
  if (kind == "VPORT") return new AcDbViewportTableRecord;
  if (kind == "BLOCK_RECORD") return new AcDbBlockTableRecord;
  return nullptr;
}

/// Of an id that the list of tables holds.
AcDbSymbolTable* tableOf(AcDbObjectId id) {
  return id.isLive() ? static_cast<AcDbSymbolTable*>(id.stub()->object) : nullptr;
}

Acad::ErrorStatus tellNoFormat(std::wstring* message) {
  if (message) *message = L"Aucun format de dessin n'est installé.";
  return Acad::eNotImplementedYet;
}

}  // namespace

AcDbDatabase::AcDbDatabase(bool buildDefaultDrawing, bool) {
  liveDatabases().push_back(this);
  const AcDbFileFormat* const format = AcDbFileFormat::installed();
  if (!buildDefaultDrawing || !format) return;
  m_undo.setRecording(false);
  format->buildDefault(*this);
  m_undo.setRecording(true);
  m_undo.clear();
  m_modified = false;
}

void AcDbDatabase::forget() {
  std::erase(liveDatabases(), this);
  AcDbHostApplicationServices* const services = acdbHostApplicationServices();
  if (services->workingDatabase() == this) services->setWorkingDatabase(nullptr);
}

AcDbDatabase::~AcDbDatabase() {
  forget();
  m_spaceIndex.reset();
  m_entityKinds.reset();
  m_undo.setRecording(false);
  m_undo.clear();
  m_stubs.forEach([](AcDbStub& stub) { delete std::exchange(stub.object, nullptr); });
}

void AcDbDatabase::leaveToProcessEnd(std::unique_ptr<AcDbDatabase> database) {
  static auto* const left = new std::vector<AcDbDatabase*>;
  database->forget();
  left->push_back(database.release());
}

// ---- Objects

Adesk::UInt64 AcDbDatabase::takeHandle() {
  // A file may hold the highest handle there is: then the count starts again at the lowest free one.
  while (m_nextHandle == 0 || m_stubs.find(m_nextHandle)) ++m_nextHandle;
  return m_nextHandle++;
}

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObjectId& id, AcDbObject* object) {
  const Acad::ErrorStatus status = addWithHandle(id, object, takeHandle());
  if (status != Acad::eOk) return status;
  id.stub()->writer = true;
  m_undo.noteCreated(id.stub());
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::addWithHandle(AcDbObjectId& id, AcDbObject* object, AcDbHandle handle) {
  id.setNull();
  if (!object) return Acad::eNullObjectPointer;
  if (object->m_stub) return Acad::eAlreadyInDb;
  if (handle.isNull()) return Acad::eInvalidInput;
  AcDbStub& stub = *idOf(handle).stub();
  if (stub.object) return Acad::eDuplicateKey;
  stub.object = object;
  object->m_stub = &stub;
  id = AcDbObjectId(&stub);
  noteTouched(stub);
  setHandseed(handle + 1);
  return Acad::eOk;
}

AcDbObjectId AcDbDatabase::idOf(AcDbHandle handle) { return AcDbObjectId(&m_stubs.get(handle, *this)); }

Acad::ErrorStatus AcDbDatabase::getAcDbObjectId(AcDbObjectId& id, bool createIfNotFound, AcDbHandle handle) {
  id.setNull();
  if (handle.isNull()) return Acad::eUnknownHandle;
  AcDbStub* const found = m_stubs.find(handle);
  if (!found && !createIfNotFound) return Acad::eUnknownHandle;
  id = found ? AcDbObjectId(found) : idOf(handle);
  if (id.isValid() || createIfNotFound) return Acad::eOk;
  id.setNull();
  return Acad::eUnknownHandle;
}

AcDbObjectId AcDbDatabase::liveIdOf(std::string_view handleText) {
  Adesk::UInt64 handle = 0;
  AcDbObjectId id;
  const bool known = dxfParseHandle(handleText, handle) &&
                     getAcDbObjectId(id, false, AcDbHandle(handle)) == Acad::eOk && id.isLive();
  return known ? id : AcDbObjectId();
}

void AcDbDatabase::setHandseed(AcDbHandle next) {
  m_nextHandle = std::max<Adesk::UInt64>(m_nextHandle, next);
}

bool AcDbDatabase::isStubOf(const void* stub, AcDbHandle handle) {
  if (!stub) return false;
  for (const AcDbDatabase* database : liveDatabases()) {
    if (database->m_stubs.find(handle) == stub) return true;
  }
  return false;
}

std::vector<AcDbObjectId> AcDbDatabase::allObjects() const {
  return objectsWhere([](const AcDbStub&) { return true; });
}

std::vector<AcDbObjectId> AcDbDatabase::objectsWhere(
    const std::function<bool(const AcDbStub&)>& wanted) const {
  std::vector<AcDbObjectId> ids;
  m_stubs.forEach([&](AcDbStub& stub) {
    if (stub.object && wanted(stub)) ids.emplace_back(&stub);
  });
  const auto inOrder = [](AcDbObjectId a, AcDbObjectId b) { return a.stub()->handle < b.stub()->handle; };
  if (!std::is_sorted(ids.begin(), ids.end(), inOrder)) std::sort(ids.begin(), ids.end(), inOrder);
  return ids;
}

AcDbSpaceIndex& AcDbDatabase::spaceIndex() {
  if (!m_spaceIndex) m_spaceIndex = std::make_unique<AcDbSpaceIndex>(*this);
  return *m_spaceIndex;
}

AcDbEntityKinds& AcDbDatabase::entityKinds() {
  if (!m_entityKinds) m_entityKinds = std::make_unique<AcDbEntityKinds>(*this);
  return *m_entityKinds;
}

void AcDbDatabase::noteInIndexes(AcDbStub& stub) {
  if (m_spaceIndex) m_spaceIndex->touch(stub);
  if (m_entityKinds) m_entityKinds->touch(stub);
}

void AcDbDatabase::reserve(std::size_t objects) { m_stubs.reserve(objects); }

// ---- Symbol tables

AcDbObjectId AcDbDatabase::tableId(std::string_view kind) const {
  for (const AcDbObjectId id : m_tables) {
    const AcDbSymbolTable* const table = tableOf(id);
    if (table && table->kind() == kind) return id;
  }
  return {};
}

AcDbObjectId AcDbDatabase::ensureTable(const std::string& kind) {
  AcDbObjectId id = tableId(kind);
  if (!id.isNull()) return id;
  auto* table = new AcDbSymbolTable;
  table->setKind(kind);
  addAcDbObject(id, table);
  table->close();
  m_tables.push_back(id);
  return id;
}

AcDbObjectId AcDbDatabase::recordOf(const char* kind, const std::wstring& name) {
  AcDbObjectId id;
  if (name.empty()) return id;
  AcDbSymbolTable* const table = tableOf(ensureTable(kind));
  if (table->getIdAt(name.c_str(), id) == Acad::eOk) return id;
  AcDbSymbolTableRecord* const record = newRecord(kind);
  if (!record) return id;
  // As the file spells it: names of other programs may hold what users may not type.
  record->assignName(name);
  addAcDbObject(id, record);
  record->setOwnerId(table->objectId());
  record->setDatabaseDefaults(*this);
  record->close();
  table->enter(id, name);
  return id;
}

AcDbObjectId AcDbDatabase::recordOfText(const char* kind, std::string_view fileText) {
  if (fileText.empty()) return {};
  const AcDbSymbolTable* const table = tableOf(tableId(kind));
  const AcDbObjectId id = table ? table->idOfText(fileText) : AcDbObjectId();
  return id.isNull() ? recordOf(kind, dxfToWide(fileText)) : id;
}

Acad::ErrorStatus AcDbDatabase::openTable(AcDbSymbolTable*& table, const char* kind, AcDb::OpenMode mode) {
  table = nullptr;
  const AcDbObjectId id = tableId(kind);
  return id.isNull() ? Acad::eKeyNotFound : acdbOpenObject(table, id, mode);
}

Acad::ErrorStatus AcDbDatabase::getLayerTable(AcDbLayerTable*& table, AcDb::OpenMode mode) {
  return openTable(table, "LAYER", mode);
}
Acad::ErrorStatus AcDbDatabase::getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode) {
  return openTable(table, "BLOCK_RECORD", mode);
}
Acad::ErrorStatus AcDbDatabase::getTextStyleTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode) {
  return openTable(table, "STYLE", mode);
}
Acad::ErrorStatus AcDbDatabase::getLinetypeTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode) {
  return openTable(table, "LTYPE", mode);
}
Acad::ErrorStatus AcDbDatabase::getRegAppTable(AcDbRegAppTable*& table, AcDb::OpenMode mode) {
  return openTable(table, "APPID", mode);
}
Acad::ErrorStatus AcDbDatabase::getViewportTable(AcDbViewportTable*& table, AcDb::OpenMode mode) {
  return openTable(table, "VPORT", mode);
}

bool AcDbDatabase::hasRegApp(const std::wstring& name) const {
  const AcDbSymbolTable* const table = tableOf(regAppTableId());
  return table && table->has(name.c_str());
}

AcDbObjectId AcDbDatabase::layerZero() { return recordOf("LAYER", L"0"); }
AcDbObjectId AcDbDatabase::byLayerLinetype() { return recordOf("LTYPE", L"ByLayer"); }
AcDbObjectId AcDbDatabase::byBlockLinetype() { return recordOf("LTYPE", L"ByBlock"); }
AcDbObjectId AcDbDatabase::continuousLinetype() { return recordOf("LTYPE", L"Continuous"); }

AcDbObjectId AcDbDatabase::modelSpaceId() const {
  AcDbObjectId id;
  if (const AcDbSymbolTable* const table = tableOf(blockTableId())) table->getIdAt(ACDB_MODEL_SPACE, id);
  return id;
}

AcDbObjectId AcDbDatabase::paperSpaceId() const {
  AcDbObjectId id;
  if (const AcDbSymbolTable* const table = tableOf(blockTableId())) table->getIdAt(ACDB_PAPER_SPACE, id);
  return id;
}

// ---- Dictionaries

AcDbObjectId AcDbDatabase::ensureNamedObjects() {
  if (m_namedObjects.isLive()) return m_namedObjects;
  auto* dictionary = new AcDbDictionary;
  addAcDbObject(m_namedObjects, dictionary);
  dictionary->close();
  return m_namedObjects;
}

Acad::ErrorStatus AcDbDatabase::getNamedObjectsDictionary(AcDbDictionary*& dictionary, AcDb::OpenMode mode) {
  return acdbOpenObject(dictionary, ensureNamedObjects(), mode);
}

AcDbObjectId AcDbDatabase::groupDictionaryId() const {
  auto& self = const_cast<AcDbDatabase&>(*this);
  const AcDbObjectId named = self.ensureNamedObjects();
  auto* const dictionary = AcDbDictionary::cast(named.stub()->object);
  AcDbObjectId id;
  if (!dictionary || dictionary->getAt(L"ACAD_GROUP", id) == Acad::eOk) return id;
  AcDbObjectPointer<AcDbDictionary> open(named, AcDb::kForWrite);
  if (open.openStatus() != Acad::eOk) return id;
  auto* groups = new AcDbDictionary;
  if (open->setAt(L"ACAD_GROUP", groups, id) == Acad::eOk)
    groups->close();
  else
    delete groups;
  return id;
}

// ---- Header variables

std::pair<std::string, DxfTagText>* AcDbDatabase::findHeader(const std::string& name) {
  for (auto& variable : m_headers) {
    if (variable.first == name) return &variable;
  }
  return nullptr;
}

bool AcDbDatabase::header(const std::string& name, DxfTagText& value) const {
  const auto* const found = const_cast<AcDbDatabase*>(this)->findHeader(name);
  if (found) value = found->second;
  return found != nullptr;
}

double AcDbDatabase::headerReal(const std::string& name, double fallback) const {
  DxfTagText value;
  DxfTag tag;
  double real = fallback;
  if (header(name, value) && value.tags().next(tag)) dxfParseReal(tag.value, real);
  return real;
}

AcGePoint3d AcDbDatabase::headerPoint(const std::string& name) const {
  AcGePoint3d point;
  DxfTagText value;
  DxfTag tag;
  header(name, value);
  for (DxfTagText::Cursor cursor = value.tags(); cursor.next(tag);) {
    double& part = tag.code == 10 ? point.x : tag.code == 20 ? point.y : point.z;
    dxfParseReal(tag.value, part);
  }
  return point;
}

void AcDbDatabase::setHeaderPoint(const std::string& name, const AcGePoint3d& point) {
  DxfTagText value;
  value.appendReal(10, point.x);
  value.appendReal(20, point.y);
  value.appendReal(30, point.z);
  setHeader(name, std::move(value));
}

Acad::ErrorStatus AcDbDatabase::updateExt(bool) {
  AcDbExtents box;
  const AcDbObjectPointer<AcDbBlockTableRecord> space(modelSpaceId());
  if (space.openStatus() != Acad::eOk) return space.openStatus();
  for (const AcDbObjectId id : space->entities()) {
    const AcDbObjectPointer<AcDbEntity> entity(id);
    if (entity.openStatus() != Acad::eOk) continue;
    if (const auto* kept = AcDbOtherEntity::cast(entity.object()))
      kept->addKeptExtents(box);
    else if (AcDbExtents own; entity->getGeomExtents(own) == Acad::eOk)
      box.addExt(own);
  }
  if (box.isEmpty()) box = {AcGePoint3d(), AcGePoint3d()};
  setHeaderPoint("EXTMIN", box.minPoint());
  setHeaderPoint("EXTMAX", box.maxPoint());
  return Acad::eOk;
}

std::wstring AcDbDatabase::headerText(const std::string& name, const std::wstring& fallback) const {
  DxfTagText value;
  DxfTag tag;
  return header(name, value) && value.tags().next(tag) ? dxfToWide(tag.value) : fallback;
}

void AcDbDatabase::setHeader(const std::string& name, DxfTagText value) {
  std::pair<std::string, DxfTagText>* const found = findHeader(name);
  if (m_undo.recording()) {
    // The other state: the text of the variable, or that there was none.
    auto other =
        std::make_shared<std::pair<bool, DxfTagText>>(found != nullptr, found ? found->second : DxfTagText());
    m_undo.noteVariable([this, name, other] {
      std::pair<std::string, DxfTagText>* const now = findHeader(name);
      std::pair<bool, DxfTagText> former(now != nullptr, now ? now->second : DxfTagText());
      if (!other->first)
        std::erase_if(m_headers, [&](const auto& variable) { return variable.first == name; });
      else if (now)
        now->second = other->second;
      else
        m_headers.emplace_back(name, other->second);
      *other = std::move(former);
      noteNames();
      m_modified = true;
    });
    m_modified = true;
  }
  if (found)
    found->second = std::move(value);
  else
    m_headers.emplace_back(name, std::move(value));
  noteNames();
}

// ---- What new entities get

/// The record that a header variable names; one that lacks is `usual`, made if need be, or null.
AcDbObjectId AcDbDatabase::current(Current& known, const char* kind, const char* variable, const ACHAR* usual,
                                   bool make) {
  const bool holds = known.version == namesVersion() && known.table.isLive() &&
                     (known.record.isNull() || known.record.isLive());
  if (holds) return known.record;
  AcDbObjectId id;
  const AcDbSymbolTable* const table = tableOf(tableId(kind));
  if (table) table->getIdAt(headerText(variable, usual).c_str(), id);
  if (id.isNull() && make) id = recordOf(kind, usual);
  known = {tableId(kind), id, namesVersion()};
  return id;
}

AcDbObjectId AcDbDatabase::clayer() { return current(m_clayer, "LAYER", "CLAYER", L"0", true); }

AcDbObjectId AcDbDatabase::celtype() { return current(m_celtype, "LTYPE", "CELTYPE", L"ByLayer", false); }

AcDbObjectId AcDbDatabase::textstyle() {
  return current(m_textstyle, "STYLE", "TEXTSTYLE", L"Standard", true);
}

double AcDbDatabase::cecolor() {
  if (m_cecolor.second != namesVersion()) m_cecolor = {headerReal("CECOLOR", 256), namesVersion()};
  return m_cecolor.first;
}

Acad::ErrorStatus AcDbDatabase::setClayer(AcDbObjectId layer) {
  if (!layer.isLive()) return Acad::eNullObjectId;
  if (layer.database() != this) return Acad::eWrongDatabase;
  const auto* const record = AcDbLayerTableRecord::cast(layer.stub()->object);
  if (!record) return Acad::eWrongObjectType;
  DxfTagText value;
  value.append(8, dxfFromWide(record->name()));
  setHeader("CLAYER", std::move(value));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::setTextstyle(AcDbObjectId style) {
  if (!style.isLive()) return Acad::eNullObjectId;
  if (style.database() != this) return Acad::eWrongDatabase;
  const auto* const record = AcDbTextStyleTableRecord::cast(style.stub()->object);
  if (!record) return Acad::eWrongObjectType;
  DxfTagText value;
  value.append(7, dxfFromWide(record->name()));
  setHeader("TEXTSTYLE", std::move(value));
  return Acad::eOk;
}

// ---- Files

Acad::ErrorStatus AcDbDatabase::readDwgFile(const ACHAR* fileName, std::wstring* message) {
  if (!fileName) return Acad::eInvalidInput;
  const AcDbFileFormat* const format = AcDbFileFormat::installed();
  if (!format) return tellNoFormat(message);
  const Acad::ErrorStatus status = format->read(*this, fileName, message);
  if (status == Acad::eOk) m_fileName = fileName;
  return status;
}

Acad::ErrorStatus AcDbDatabase::saveAs(const ACHAR* fileName, std::wstring* message) {
  if (!fileName || !*fileName) return Acad::eInvalidInput;
  const AcDbFileFormat* const format = AcDbFileFormat::installed();
  if (!format) return tellNoFormat(message);
  const Acad::ErrorStatus status = format->write(*this, fileName, message);
  if (status != Acad::eOk) return status;
  m_fileName = fileName;
  m_modified = false;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::insert(AcDbObjectId& blockId, const ACHAR* blockName, AcDbDatabase* source,
                                       bool) {
  blockId.setNull();
  if (!blockName || !source || source == this) return Acad::eInvalidInput;
  const AcDbFileFormat* const format = AcDbFileFormat::installed();
  if (!format) return Acad::eNotImplementedYet;
  m_undo.begin(L"INSERT");
  const Acad::ErrorStatus status = format->insert(*this, blockId, blockName, *source);
  m_undo.end();
  return status;
}

void AcDbDatabase::clear() {
  m_spaceIndex.reset();
  m_entityKinds.reset();
  m_undo.clear();
  m_stubs.forEach([](const AcDbStub& stub) { delete stub.object; });
  m_stubs.clear();
  m_nextHandle = 1;
  m_tables.clear();
  m_namedObjects.setNull();
  m_objectOrder.clear();
  m_headers.clear();
  noteNames();
  m_rawSections.clear();
  m_sectionOrder.clear();
  m_version.clear();
  m_findings.clear();
  m_fileName.clear();
  m_modified = false;
}
