#include "arx/dxf/dxfloader.h"

#include "arx/dxf/dxfcomplete.h"
#include "base/text.h"

#include <algorithm>
#include <array>

DxfLoader::DxfLoader(AcDbDatabase& database, DxfSource& source, DxfFindings& findings, Adesk::UInt64 seed)
    : m_db(database),
      m_scan(source),
      m_findings(findings),
      m_seed(seed),
      m_seedKnown(seed != 0),
      m_seedForced(seed != 0) {
  if (seed) m_db.setHandseed(seed);
}

void DxfLoader::finding(const std::string& text) {
  m_findings.push_back("ligne " + std::to_string(m_scan.line()) + " : " + text);
}

void DxfLoader::run() {
  bool ended = false;
  while (!ended && m_scan.next()) {
    if (m_scan.type() == "EOF") {
      ended = true;
    } else if (m_scan.type() == "SECTION") {
      readSection();
    } else {
      throw DxfError{m_scan.line(),
                     "début de section attendu au lieu de \"" + std::string(m_scan.type()) + "\""};
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
    throw DxfError{0, "version de dessin \"" + version + "\" inconnue"};
  }
  m_old = version < "AC1015";
  m_db.fileVersion() = std::max(version, std::string(kDxfOldestWritten));
}

void DxfLoader::readSection() {
  if (m_db.fileVersion().empty()) checkVersion();
  const std::string name = veltora::base::trim(dxfFirst(m_scan.tags(), 2));
  if (name.empty()) throw DxfError{m_scan.line(), "section sans nom"};
  m_db.sectionOrder().push_back(name);
  if (name == "HEADER") return readHeader();
  if (name == "TABLES") return readTables();
  if (name == "BLOCKS") return readBlocks();
  if (name == "ENTITIES") return readEntities();
  if (name == "OBJECTS") return readObjects();
  readRaw(name);
}

bool DxfLoader::nextInSection(const std::string& section, bool keepComments) {
  if (!m_scan.next()) {
    throw DxfError{m_scan.lastLine(), "fichier tronqué : la section " + section + " n'est pas fermée"};
  }
  if (m_scan.type() == "ENDSEC") return false;
  if (m_scan.type() == "SECTION" || m_scan.type() == "EOF") {
    throw DxfError{m_scan.line(), "la section " + section + " n'est pas fermée"};
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
  while (nextInSection("HEADER"))
    finding("\"" + std::string(m_scan.type()) + "\" n'a pas sa place dans HEADER");
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

Adesk::UInt64 DxfLoader::itemHandle() {
  const int wanted = m_scan.type() == "DIMSTYLE" ? 105 : 5;
  for (const DxfTag& tag : m_scan.tags()) {
    if (tag.code == 100 || tag.code >= 1000) break;
    if (tag.code != wanted) continue;
    const Adesk::UInt64 handle = dxfHandleOf(tag.value);
    if (handle != 0 && handle < kDxfHandleLimit) return handle;
    finding("handle \"" + std::string(tag.value) + "\" inutilisable, remplacé");
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
    finding(veltora::base::toUtf8(L"handle ") +
            std::string(dxfFirst(m_scan.tags(), m_scan.type() == "DIMSTYLE" ? 105 : 5)) +
            " déjà pris, remplacé");
  }
  if (!m_seedKnown) throw DxfSeedNeeded{};
  m_db.addAcDbObject(id, object.get());
  object.release()->close();
  return id;
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
  prepareTables();
  while (nextInSection("OBJECTS")) object();
}

std::string_view dxfFirst(std::span<const DxfTag> tags, int code) {
  for (const DxfTag& tag : tags) {
    if (tag.code == code) return tag.value;
  }
  return {};
}

std::unique_ptr<AcDbObject> dxfNewObject(std::string_view type) {
  if (type == "DICTIONARY" || type == "ACDBDICTIONARYWDFLT") return std::make_unique<AcDbDictionary>();
  if (type == "XRECORD") return std::make_unique<AcDbXrecord>();
  if (type == "GROUP") return std::make_unique<AcDbGroup>();
  return std::make_unique<AcDbOtherObject>(std::string(type));
}
