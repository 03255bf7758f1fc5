#include "arx/dxf/dxfwrite.h"

#include "arx/db/dbblockmarkers.h"
#include "arx/db/dbresident.h"
#include "arx/dxf/dxfcomplete.h"

#include <algorithm>
#include <array>
#include <map>
#include <unordered_set>

namespace {

constexpr int kHasAttributes = 2;  // bit of a block's flags

/// Sections that the host models, in the order in which they are written.
constexpr std::array<const char*, 5> kModelled = {"HEADER", "TABLES", "BLOCKS", "ENTITIES", "OBJECTS"};

class DxfDrawingWriter {
public:
  DxfDrawingWriter(AcDbDatabase& database, AcDbDxfWriter& out) : m_db(database), m_out(out) {}
  void run();

private:
  [[nodiscard]] std::vector<std::string> sections() const;
  void section(const std::string& name);
  void header();
  void tables();
  void blocks();
  void block(AcDbBlockTableRecord& record);
  void entities();
  void entitiesOf(AcDbObjectId space);
  void objects();
  void object(AcDbObjectId id);
  void raw(const std::string& name);
  [[nodiscard]] bool ownerErased(AcDbObjectId id) const;

  AcDbDatabase& m_db;
  AcDbDxfWriter& m_out;
  std::map<std::string, std::size_t> m_rawSeen;
  std::unordered_set<const AcDbStub*> m_written;
};

bool isModelled(const std::string& name) {
  return std::find(kModelled.begin(), kModelled.end(), name) != kModelled.end();
}

/// Belongs to the objects section.
bool isPlainObject(const AcDbObject& object) {
  return !object.isKindOf(AcDbEntity::desc()) && !object.isKindOf(AcDbSymbolTableRecord::desc()) &&
         !object.isKindOf(AcDbSymbolTable::desc());
}

/// Order of the file, modelled sections once and in their proper order; those that are missing follow their
/// predecessor.
std::vector<std::string> DxfDrawingWriter::sections() const {
  std::vector<std::string> order;
  for (const std::string& name : m_db.sectionOrder()) {
    const bool again = std::find(order.begin(), order.end(), name) != order.end();
    if (!isModelled(name) || !again) order.push_back(name);
  }
  std::vector<std::size_t> places;
  for (std::size_t i = 0; i < order.size(); ++i) {
    if (isModelled(order[i])) places.push_back(i);
  }
  std::size_t at = 0;
  std::vector<std::string> present;
  for (const char* name : kModelled) {
    if (std::find(order.begin(), order.end(), name) != order.end()) present.emplace_back(name);
  }
  for (const std::string& name : present) order[places[at++]] = name;
  std::ptrdiff_t behind = 0;
  for (const std::string name : kModelled) {
    auto found = std::find(order.begin(), order.end(), name);
    if (found == order.end()) found = order.insert(order.begin() + behind, name);
    behind = found - order.begin() + 1;
    const bool classes = name == "HEADER" && behind < std::ssize(order) &&
                         order[static_cast<std::size_t>(behind)] == "CLASSES";
    if (classes) ++behind;
  }
  return order;
}

void DxfDrawingWriter::run() {
  for (const DxfRawSection& part : m_db.rawSections()) {
    if (part.name.empty()) m_out.raw(part.tags.text());
  }
  for (const std::string& name : sections()) section(name);
  m_out.text(0, "EOF");
}

void DxfDrawingWriter::section(const std::string& name) {
  m_out.text(0, "SECTION");
  m_out.text(2, name);
  if (name == "HEADER") {
    header();
  } else if (name == "TABLES") {
    tables();
  } else if (name == "BLOCKS") {
    blocks();
  } else if (name == "ENTITIES") {
    entities();
  } else if (name == "OBJECTS") {
    objects();
  } else {
    raw(name);
  }
  m_out.text(0, "ENDSEC");
}

void DxfDrawingWriter::raw(const std::string& name) {
  std::size_t skip = m_rawSeen[name]++;
  for (const DxfRawSection& part : m_db.rawSections()) {
    if (part.name == name && skip-- == 0) return m_out.raw(part.tags.text());
  }
}

void DxfDrawingWriter::header() {
  const auto version = [&] { m_out.text(9, "$ACADVER"), m_out.text(1, m_db.fileVersion()); };
  const auto seed = [&] { m_out.text(9, "$HANDSEED"), m_out.handle(5, m_db.handseed()); };
  DxfTagText ignored;
  if (!m_db.header("ACADVER", ignored)) version();
  for (const auto& [name, value] : m_db.headers()) {
    if (name == "ACADVER") {
      version();
    } else if (name == "HANDSEED") {
      seed();
    } else {
      m_out.text(9, "$" + name);
      m_out.kept(value, &m_db);
    }
  }
  if (!m_db.header("HANDSEED", ignored)) seed();
}

void DxfDrawingWriter::tables() {
  for (const AcDbObjectId id : m_db.tables()) {
    const auto* table = resident<AcDbSymbolTable>(id);
    if (!table) continue;
    table->dxfOut(m_out);
    for (const AcDbObjectId record : table->records()) {
      if (record.isLive()) record.stub()->object->dxfOut(m_out);
    }
    m_out.text(0, "ENDTAB");
  }
}

void DxfDrawingWriter::blocks() {
  const auto* table = resident<AcDbSymbolTable>(m_db.blockTableId());
  if (!table) return;
  for (const AcDbObjectId id : table->records()) {
    if (auto* record = resident<AcDbBlockTableRecord>(id)) block(*record);
  }
}

void DxfDrawingWriter::block(AcDbBlockTableRecord& record) {
  auto* begin = resident<AcDbBlockBegin>(record.blockBeginId());
  const auto* end = resident<AcDbBlockEnd>(record.blockEndId());
  if (!begin || !end) return;
  begin->name = record.name();
  begin->origin = record.origin();
  begin->comments = record.comments();
  if (!record.isLayout() && record.hasAttributeDefinitions()) begin->flags |= kHasAttributes;
  begin->dxfOut(m_out);
  const AcDbObjectId id = record.objectId();
  if (id != m_db.modelSpaceId() && id != m_db.paperSpaceId()) entitiesOf(id);
  end->dxfOut(m_out);
}

void DxfDrawingWriter::entities() {
  entitiesOf(m_db.modelSpaceId());
  entitiesOf(m_db.paperSpaceId());
}

void DxfDrawingWriter::entitiesOf(AcDbObjectId space) {
  const auto* record = resident<AcDbBlockTableRecord>(space);
  if (!record) return;
  for (const AcDbObjectId id : record->entities()) {
    if (!id.isLive()) continue;
    const AcDbObject* const entity = id.stub()->object;
    entity->dxfOut(m_out);
    for (const AcDbObjectId part : entity->subObjects()) {
      if (part.isLive()) part.stub()->object->dxfOut(m_out);
    }
  }
}

bool DxfDrawingWriter::ownerErased(AcDbObjectId id) const {
  constexpr int kDeepest = 100;
  for (int level = 0; level < kDeepest && id.isValid(); ++level) {
    if (id.isErased()) return true;
    id = id.stub()->object->ownerId();
  }
  return false;
}

void DxfDrawingWriter::object(AcDbObjectId id) {
  if (!id.isLive() || !m_written.insert(id.stub()).second || ownerErased(id)) return;
  id.stub()->object->dxfOut(m_out);
}

void DxfDrawingWriter::objects() {
  object(m_db.namedObjectsDictionaryId());
  for (const AcDbObjectId id : m_db.objectOrder()) object(id);
  // What was made since; it keeps its place from now on.
  const auto isNew = [this](const AcDbStub& stub) {
    return !stub.erased && isPlainObject(*stub.object) && !m_written.contains(&stub);
  };
  for (const AcDbObjectId id : m_db.objectsWhere(isNew)) {
    m_db.objectOrder().push_back(id);
    object(id);
  }
}

}  // namespace

void dxfWrite(AcDbDatabase& database, const std::function<void(std::string_view)>& sink) {
  const bool recording = database.undoLog().recording();
  database.undoLog().setRecording(false);
  dxfCompleteTables(database);
  dxfCompleteObjects(database);
  dxfCompleteBlocks(database);
  database.undoLog().setRecording(recording);
  if (database.fileVersion().empty()) database.fileVersion() = "AC1032";
  AcDbDxfWriter out(sink);
  DxfDrawingWriter(database, out).run();
  out.flush();
}

std::string dxfWriteText(AcDbDatabase& database) {
  std::string text;
  dxfWrite(database, [&](std::string_view piece) { text += piece; });
  return text;
}
