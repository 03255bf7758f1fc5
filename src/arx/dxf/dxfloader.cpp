#include "arx/dxf/dxfloader.h"

#include "arx/db/dbblockmarkers.h"
#include "arx/db/dbentityfactory.h"
#include "arx/db/dbsubents.h"
#include "arx/db/dxfquote.h"
#include "arx/dxf/dxfcomplete.h"
#include "arx/dxf/dxffactory.h"
#include "arx/dxf/dxfwrite.h"
#include "base/text.h"

#include <algorithm>

using veltora::base::toUtf8;

namespace {

/// Last subclass marker, which names the object's own class.
std::string markerOf(std::span<const DxfTag> tags) {
  std::string marker;
  for (const DxfTag& tag : tags) {
    if (tag.code == 100) marker = std::string(tag.value);
  }
  return marker;
}

}  // namespace

DxfLoader::DxfLoader(AcDbDatabase& database, DxfSource& source, DxfFindings& findings, Adesk::UInt64 seed,
                     bool tablesFirst)
    : m_db(database),
      m_scan(source),
      m_findings(findings),
      m_seed(seed),
      m_seedKnown(seed != 0),
      m_seedForced(seed != 0),
      m_tablesFirst(tablesFirst) {
  if (seed) m_db.setHandseed(seed);
}

void DxfLoader::finding(const std::string& text) { finding(m_scan.line(), text); }

void DxfLoader::finding(Adesk::UInt32 line, const std::string& text) {
  m_findings.push_back("ligne " + std::to_string(line) + " : " + text);
}

/// Header and tables alone, wherever they stand.
void DxfLoader::runTables() {
  while (m_scan.next() && m_scan.type() != "EOF") {
    if (m_scan.type() != "SECTION") continue;
    const std::string name = veltora::base::trim(dxfFirst(m_scan.tags(), 2));
    if (name == "HEADER" || name == "TABLES") readSection();
  }
  m_db.sectionOrder().clear();
  prepareTables();
  m_scan.rewind();
  m_headRead = true;
}

void DxfLoader::run() {
  if (m_tablesFirst) runTables();
  bool ended = false;
  while (!ended && m_scan.next()) {
    if (m_scan.type() == "EOF") {
      ended = true;
      if (m_scan.hasTail()) finding("du texte derrière la fin (EOF), laissé de côté");
    } else if (m_scan.type() == "SECTION") {
      readSection();
    } else if (m_scan.type() == "ENDSEC") {
      finding("ENDSEC en trop, laissé de côté");
    } else {
      throw DxfError{m_scan.line(),
                     "début de section attendu au lieu de \"" + dxfQuote(m_scan.type()) + "\""};
    }
  }
  if (!ended) throw DxfError{m_scan.lastLine(), "fichier tronqué : la fin (EOF) manque"};
  prepareTables();
  dxfCompleteObjects(m_db);
  dxfCompleteBlocks(m_db);
  if (m_scan.repaired())
    m_findings.push_back("des textes qui n'étaient pas en UTF-8 ont été lus en Windows-1252");
  if (!m_scan.comments().empty()) m_db.rawSections().push_back({"", m_scan.comments()});
}

void DxfLoader::checkVersion() {
  // A file without any version is of the oldest kind.
  const std::string version = m_scan.version().empty() ? "AC1009" : m_scan.version();
  if (version.size() != 6 || version.rfind("AC1", 0) != 0) {
    throw DxfError{0, "version de dessin \"" + dxfQuote(version) + "\" inconnue"};
  }
  m_old = version < "AC1015";
  m_db.fileVersion() = std::max(version, std::string(kDxfOldestWritten));
}

void DxfLoader::readSection() {
  if (m_db.fileVersion().empty()) checkVersion();
  const std::string name = veltora::base::trim(dxfFirst(m_scan.tags(), 2));
  if (name.empty()) throw DxfError{m_scan.line(), "section sans nom"};
  m_db.sectionOrder().push_back(name);
  if (m_headRead && (name == "HEADER" || name == "TABLES")) {
    while (nextInSection(name)) {
    }
    return;
  }
  if (name == "HEADER") return readHeader();
  if (name == "TABLES") return readTables();
  if (name == "BLOCKS") return readBlocks();
  if (name == "ENTITIES") return readEntities();
  if (name == "OBJECTS") return readObjects();
  readRaw(name);
}

bool DxfLoader::nextInSection(const std::string& section, bool keepComments) {
  if (!m_scan.next()) {
    throw DxfError{m_scan.lastLine(),
                   "fichier tronqué : la section " + dxfQuote(section) + " n'est pas fermée"};
  }
  if (m_scan.type() == "ENDSEC") return false;
  if (m_scan.type() == "SECTION" || m_scan.type() == "EOF") {
    throw DxfError{m_scan.line(), "la section " + dxfQuote(section) + " n'est pas fermée"};
  }
  if (!keepComments) m_scan.dropComments();
  return true;
}

void DxfLoader::readHeader() {
  m_scan.dropComments();
  std::string name;
  DxfTagText value;
  const auto store = [&] {
    if (!name.empty()) m_db.headerList().emplace_back(name, value);
    value.clear();
  };
  const auto tags = m_scan.tags();
  for (const DxfTag& tag : tags.subspan(1)) {
    if (tag.code != 9) {
      value.append(tag.code, tag.value);
      continue;
    }
    store();
    name = veltora::base::trim(tag.value);
    if (!name.empty() && name[0] == '$') name.erase(0, 1);
    if (name == "HANDSEED" && &tag < &tags.back()) {
      const Adesk::UInt64 seed = dxfHandleOf((&tag)[1].value);
      if (seed > 1 && seed < kDxfHandleLimit && !m_seedForced) {
        m_seed = seed;
        m_seedKnown = true;
        m_db.setHandseed(seed);
      }
    }
  }
  store();
  while (nextInSection("HEADER")) finding("\"" + dxfQuote(m_scan.type()) + "\" n'a pas sa place dans HEADER");
}

void DxfLoader::readRaw(const std::string& name) {
  DxfRawSection section{name, {}};
  const auto tags = m_scan.tags();
  bool named = false;
  for (const DxfTag& tag : tags) {
    if (tag.code == 2 && !named) {
      named = true;
    } else {
      section.tags.append(tag.code, tag.value);
    }
  }
  while (nextInSection(name, true)) {
    section.tags.append(0, m_scan.type());
    for (const DxfTag& tag : m_scan.tags()) section.tags.append(tag.code, tag.value);
  }
  m_db.rawSections().push_back(std::move(section));
}

void DxfLoader::prepareTables() {
  if (m_tablesReady) return;
  m_tablesReady = true;
  if (!m_seedKnown) throw DxfSeedNeeded{};
  dxfCompleteTables(m_db);
}

void DxfLoader::needTables() {
  if (!m_tablesReady && !m_tablesFirst) throw DxfTablesNeeded{};
  prepareTables();
}

Adesk::UInt64 DxfLoader::itemHandle() {
  const int wanted = m_scan.type() == "DIMSTYLE" ? 105 : 5;
  for (const DxfTag& tag : m_scan.tags()) {
    if (tag.code == 100 || tag.code >= 1000) break;
    if (tag.code != wanted) continue;
    const Adesk::UInt64 handle = dxfHandleOf(tag.value);
    if (handle != 0 && handle < kDxfHandleLimit) return handle;
    finding("handle \"" + dxfQuote(tag.value) + "\" inutilisable, remplacé");
    return 0;
  }
  return 0;
}

AcDbObjectId DxfLoader::place(std::unique_ptr<AcDbObject> object, Adesk::UInt64 handle) {
  AcDbObjectId id;
  if (handle != 0) {
    if (m_db.addWithHandle(id, object.get(), handle) == Acad::eOk) {
      static_cast<void>(object.release());
      return id;
    }
    // An object made while reading stands where the file has one of its own: the file's seed was wrong.
    if (handle >= m_seed && !m_seedForced) throw DxfSeedNeeded{};
    finding("handle " + dxfQuote(dxfFirst(m_scan.tags(), m_scan.type() == "DIMSTYLE" ? 105 : 5)) +
            " déjà pris, remplacé");
  }
  if (!m_seedKnown) throw DxfSeedNeeded{};
  m_db.addAcDbObject(id, object.get());
  object.release()->close();
  return id;
}

// ---- Tables

void DxfLoader::beginTable() {
  const std::string kind = veltora::base::trim(dxfFirst(m_scan.tags(), 2));
  if (kind.empty()) throw DxfError{m_scan.line(), "table sans nom"};
  const AcDbObjectId known = m_db.tableId(kind);
  if (known.isValid()) {
    m_table = AcDbSymbolTable::cast(known.stub()->object);
    if (!m_tablesReady) finding("table " + dxfQuote(kind) + " donnée deux fois, réunie");
    return;
  }
  auto table = std::make_unique<AcDbSymbolTable>();
  table->setKind(kind);
  table->dxfIn(m_scan.tags(), m_db);
  if (table->kind() != kind) finding("table " + dxfQuote(kind) + " avec un deuxième nom, laissé de côté");
  table->setKind(kind);  // by which its records are known
  m_table = table.get();
  m_db.enterTable(place(std::move(table), itemHandle()));
}

void DxfLoader::tableRecord() {
  const std::string type(m_scan.type());
  if (!m_table) throw DxfError{m_scan.line(), "enregistrement \"" + dxfQuote(type) + "\" hors d'une table"};
  if (type != m_table->kind()) {
    throw DxfError{m_scan.line(),
                   "enregistrement \"" + dxfQuote(type) + "\" dans la table " + dxfQuote(m_table->kind())};
  }
  const std::wstring name = dxfToWide(dxfFirst(m_scan.tags(), 2));
  std::unique_ptr<AcDbObject> record = dxfNewRecord(type, markerOf(m_scan.tags()));
  Deferred deferred{static_cast<AcDbSymbolTableRecord*>(record.get()), {}, m_scan.line()};
  for (const DxfTag& tag : m_scan.tags()) deferred.tags.append(tag.code, tag.value);
  deferred.object->assignName(name);  // is found by others before its fields are read
  const AcDbObjectId id = place(std::move(record), itemHandle());
  m_table->enter(id, name);
  deferred.object->setOwnerId(m_table->objectId());
  m_deferred.push_back(std::move(deferred));
}

void DxfLoader::finishRecords() {
  std::vector<DxfTag> tags;
  for (const Deferred& record : m_deferred) {
    tags.clear();
    DxfTagText::Cursor cursor = record.tags.tags();
    Adesk::UInt32 line = record.line;
    for (DxfTag tag; cursor.next(tag);) {
      tag.line = line += 2;
      tags.push_back(tag);
    }
    const AcDbObjectId table = record.object->ownerId();
    const AcString name = record.object->name();
    record.object->dxfIn(m_old ? m_upgrade.record(record.object->dxfName(), tags, m_db) : tags, m_db);
    record.object->setOwnerId(table);
    if (record.object->name() == name) continue;
    // The table finds it by its first name: a space that lost it would be missing.
    finding(record.line, "\"" + dxfQuote(toUtf8(name)) + "\" porte un deuxième nom, laissé de côté");
    record.object->assignName(name);
  }
  m_deferred.clear();
}

void DxfLoader::readTables() {
  m_table = nullptr;
  while (nextInSection("TABLES")) {
    if (m_scan.type() == "TABLE") {
      beginTable();
    } else if (m_scan.type() == "ENDTAB") {
      m_table = nullptr;
    } else {
      tableRecord();
    }
  }
  m_table = nullptr;
  prepareTables();
  finishRecords();
}

// ---- Blocks and entities

AcDbBlockTableRecord* DxfLoader::beginBlock() {
  auto begin = std::make_unique<AcDbBlockBegin>();
  begin->dxfIn(m_scan.tags(), m_db);
  if (m_old) begin->name = dxfPresentBlockName(begin->name);
  AcDbObjectId id = begin->ownerId();
  if (!id.isValid() || !id.stub()->object->isKindOf(AcDbBlockTableRecord::desc())) {
    id = m_db.recordOf("BLOCK_RECORD", begin->name);
  }
  auto* record = id.isValid() ? AcDbBlockTableRecord::cast(id.stub()->object) : nullptr;
  if (!record)
    throw DxfError{m_scan.line(), "bloc \"" + dxfQuote(toUtf8(begin->name)) + "\" sans enregistrement"};
  if (!m_begunBlocks.insert(record).second) {
    finding("bloc \"" + dxfQuote(toUtf8(record->name())) + "\" donné deux fois, réuni");
    return record;
  }
  record->setOrigin(begin->origin);
  record->setComments(begin->comments.c_str());
  begin->setOwnerId(id);
  record->setBlockMarkers(place(std::move(begin), itemHandle()), record->blockEndId());
  return record;
}

void DxfLoader::endBlock(AcDbBlockTableRecord& record) {
  if (!record.blockEndId().isNull()) return;
  auto end = std::make_unique<AcDbBlockEnd>();
  end->dxfIn(m_scan.tags(), m_db);
  end->setOwnerId(record.objectId());
  record.setBlockMarkers(record.blockBeginId(), place(std::move(end), itemHandle()));
}

void DxfLoader::readBlocks() {
  needTables();
  AcDbBlockTableRecord* block = nullptr;
  while (nextInSection("BLOCKS")) {
    if (m_scan.type() == "BLOCK") {
      closeParent();
      block = beginBlock();
    } else if (m_scan.type() == "ENDBLK") {
      closeParent();
      if (block) endBlock(*block);
      block = nullptr;
    } else if (!block) {
      throw DxfError{m_scan.line(), "entité \"" + dxfQuote(m_scan.type()) + "\" hors d'un bloc"};
    } else {
      entity(block);
    }
  }
  closeParent();
}

void DxfLoader::readEntities() {
  needTables();
  while (nextInSection("ENTITIES")) {
    if (m_scan.type() == "BLOCK" || m_scan.type() == "ENDBLK") {
      throw DxfError{m_scan.line(), "définition de bloc hors de la section BLOCKS"};
    }
    entity(nullptr);
  }
  closeParent();
}

void DxfLoader::entity(AcDbBlockTableRecord* block) {
  if (m_scan.type() == "SEQEND") return sequenceEnd();
  const std::span<const DxfTag> tags = m_old ? m_upgrade.entity(m_scan.type(), m_scan.tags()) : m_scan.tags();
  std::unique_ptr<AcDbEntity> entity(acdbNewEntity(m_scan.type(), tags));
  entity->dxfIn(tags, m_db);
  const Adesk::UInt64 handle = itemHandle();
  AcDbSubEntityOwner* const parent = m_parent ? m_parent->subEntityOwner() : nullptr;
  if (parent && entity->isKindOf(parent->subEntityClass())) {
    entity->setOwnerId(m_parent->objectId());
    parent->enterSub(place(std::move(entity), handle));
    return;
  }
  if (m_scan.type() == "ATTRIB" || m_scan.type() == "VERTEX") {
    finding("\"" + dxfQuote(m_scan.type()) + "\" sans entité à laquelle l'attacher, laissé de côté");
    return;
  }
  closeParent();
  if (!block) block = blockOf(*entity);
  entity->setOwnerId(block->objectId());
  AcDbEntity* const placed = entity.get();
  block->enter(place(std::move(entity), handle));
  if (placed->subEntityOwner()) m_parent = placed;
}

void DxfLoader::sequenceEnd() {
  AcDbSubEntityOwner* const parent = m_parent ? m_parent->subEntityOwner() : nullptr;
  if (!parent) return finding("SEQEND sans entité à laquelle l'attacher, laissé de côté");
  std::unique_ptr<AcDbEntity> end(acdbNewEntity("SEQEND", m_scan.tags()));
  end->dxfIn(m_scan.tags(), m_db);
  end->setOwnerId(m_parent->objectId());
  parent->enterEnd(place(std::move(end), itemHandle()));
  m_parent = nullptr;
}

void DxfLoader::closeParent() {
  AcDbEntity* const entity = std::exchange(m_parent, nullptr);
  AcDbSubEntityOwner* const parent = entity ? entity->subEntityOwner() : nullptr;
  if (!parent || parent->subEntityIds().empty()) return;
  finding("SEQEND manquant, ajouté");
  std::unique_ptr<AcDbEntity> end(acdbNewEntity("SEQEND", {}));
  end->setLayer(entity->layerId());
  end->setOwnerId(entity->objectId());
  parent->enterEnd(place(std::move(end), 0));
}

AcDbBlockTableRecord* DxfLoader::blockOf(const AcDbEntity& entity) {
  AcDbStub* const owner = entity.ownerId().stub();
  if (owner && owner == m_lastOwner) return m_lastBlock;
  AcDbBlockTableRecord* block = owner ? AcDbBlockTableRecord::cast(owner->object) : nullptr;
  if (block) {
    m_lastOwner = owner;
    m_lastBlock = block;
    return block;
  }
  const AcDbObjectId space = entity.inPaperSpace() ? m_db.paperSpaceId() : m_db.modelSpaceId();
  return AcDbBlockTableRecord::cast(space.stub()->object);
}

// ---- Objects

void DxfLoader::object() {
  std::unique_ptr<AcDbObject> object = dxfNewObject(m_scan.type());
  object->dxfIn(m_scan.tags(), m_db);
  const Adesk::UInt64 handle = itemHandle();
  const bool dictionary = object->isKindOf(AcDbDictionary::desc());
  const bool root = dictionary && m_db.namedObjectsDictionaryId().isNull() && object->ownerId().isNull();
  const AcDbObjectId id = place(std::move(object), handle);
  if (root) m_db.setNamedObjectsDictionary(id);
  m_db.objectOrder().push_back(id);
}

void DxfLoader::readObjects() {
  needTables();
  while (nextInSection("OBJECTS")) object();
}
