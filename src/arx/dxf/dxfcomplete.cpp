#include "arx/dxf/dxfcomplete.h"

#include "arx/db/dbblockmarkers.h"
#include "arx/dxf/dxfdefault.h"
#include "arx/dxf/dxffactory.h"
#include "arx/dxf/dxfscanner.h"
#include "base/text.h"

#include <deque>
#include <unordered_map>
#include <utility>

namespace {

/// Takes over the parts of the empty drawing that a database lacks. Handles of its text are mapped to the
/// objects that serve them in the database.
class Completion {
public:
  explicit Completion(AcDbDatabase& database) : m_db(database) {}
  void tables();
  void objects();

private:
  struct Item {
    std::string type;
    DxfTagText tags;
  };
  struct Place {
    AcDbDictionary* dictionary;
    std::wstring key;
  };
  std::vector<Item> itemsOf(std::string_view section) const;
  void place(std::unique_ptr<AcDbObject> object, const Item& item);
  void readFields();
  void root(const Item& item);
  void entriesOf(const Item& item, bool onlyVital);
  void nameLayouts();
  AcDbObjectId enterAt(const Place& place, AcDbObject& object);

  AcDbDatabase& m_db;
  std::unordered_map<Adesk::UInt64, AcDbObjectId> m_ids;  // by handle in the empty drawing's text
  std::unordered_map<Adesk::UInt64, Place> m_wanted;      // entries to be made, by the same handles
  std::vector<std::pair<AcDbObject*, const Item*>> m_made;
};

std::string valueOf(const DxfTagText& tags, int code) {
  DxfTagText::Cursor cursor = tags.tags();
  for (DxfTag tag; cursor.next(tag);) {
    if (tag.code == code) return std::string(tag.value);
  }
  return {};
}

Adesk::UInt64 handleIn(const DxfTagText& tags) {
  const std::string own = valueOf(tags, 105);
  return dxfHandleOf(own.empty() ? valueOf(tags, 5) : own);
}

AcDbObjectId recordIn(AcDbDatabase& database, const std::string& kind, const std::wstring& name) {
  AcDbObjectId id;
  const AcDbObjectId table = database.tableId(kind);
  if (table.isValid()) AcDbSymbolTable::cast(table.stub()->object)->getIdAt(name.c_str(), id);
  return id;
}

std::vector<Completion::Item> Completion::itemsOf(std::string_view section) const {
  std::vector<Item> items;
  const std::string text = dxfDefaultText();
  DxfMemorySource source(text);
  DxfScanner scanner(source);
  bool inside = false;
  while (scanner.next()) {
    if (scanner.type() == "SECTION") {
      inside = dxfFirst(scanner.tags(), 2) == section;
    } else if (inside && scanner.type() != "ENDSEC" && scanner.type() != "ENDTAB" &&
               scanner.type() != "EOF") {
      Item& item = items.emplace_back();
      item.type = scanner.type();
      for (const DxfTag& tag : scanner.tags()) item.tags.append(tag.code, tag.value);
    }
  }
  return items;
}

void Completion::place(std::unique_ptr<AcDbObject> object, const Item& item) {
  AcDbObjectId id;
  m_db.addAcDbObject(id, object.get());
  object->close();
  m_ids[handleIn(item.tags)] = id;
  m_made.emplace_back(object.release(), &item);
}

/// Fields of what was made, with the handles of this drawing. A reference to what is not here is left out.
void Completion::readFields() {
  std::vector<DxfTag> tags;
  for (const auto& [object, item] : m_made) {
    tags.clear();
    std::deque<std::string> texts;
    DxfTagText::Cursor cursor = item->tags.tags();
    for (DxfTag tag; cursor.next(tag);) {
      const DxfKind kind = dxfKind(tag.code);
      if (kind == DxfKind::kHandle) continue;
      const bool entry = object->isKindOf(AcDbDictionary::desc()) && (tag.code == 3 || tag.code == 350);
      if (entry) continue;
      if (kind == DxfKind::kPointer && tag.value != "0") {
        const auto known = m_ids.find(dxfHandleOf(tag.value));
        if (known == m_ids.end()) continue;
        DxfTagText hex;
        hex.appendHandle(1, known->second.handle());
        texts.push_back(valueOf(hex, 1));
        tag.value = texts.back();
      }
      tags.push_back(tag);
    }
    object->dxfIn(tags, m_db);
  }
  m_made.clear();
}

void Completion::tables() {
  const std::vector<Item> items = itemsOf("TABLES");
  AcDbSymbolTable* table = nullptr;
  for (const Item& item : items) {
    const std::string name = valueOf(item.tags, 2);
    if (item.type == "TABLE") {
      const bool known = m_db.tableId(name).isValid();
      const AcDbObjectId id = m_db.ensureTable(name);
      table = AcDbSymbolTable::cast(id.stub()->object);
      m_ids[handleIn(item.tags)] = id;
      if (!known) m_made.emplace_back(table, &item);
      continue;
    }
    const std::wstring wide = dxfToWide(name);
    const AcDbObjectId known = recordIn(m_db, item.type, wide);
    if (known.isValid()) {
      m_ids[handleIn(item.tags)] = known;
      continue;
    }
    std::unique_ptr<AcDbObject> record = dxfNewRecord(item.type, {});
    static_cast<AcDbSymbolTableRecord&>(*record).assignName(wide);
    place(std::move(record), item);
    m_made.back().first->setOwnerId(table->objectId());
    table->enter(m_made.back().first->objectId(), wide);
  }
  readFields();
}

/// Notes the entries that a dictionary of this drawing lacks.
void Completion::entriesOf(const Item& item, bool onlyVital) {
  auto* dictionary = AcDbDictionary::cast(m_ids[handleIn(item.tags)].stub()->object);
  if (!dictionary) return;
  std::wstring key;
  DxfTagText::Cursor cursor = item.tags.tags();
  for (DxfTag tag; cursor.next(tag);) {
    if (tag.code == 3) key = dxfToWide(tag.value);
    if (tag.code != 350 || dictionary->has(key.c_str())) continue;
    if (onlyVital && key != L"ACAD_GROUP" && key != L"ACAD_LAYOUT") continue;
    m_wanted[dxfHandleOf(tag.value)] = {dictionary, key};
  }
}

void Completion::root(const Item& item) {
  AcDbObjectId root = m_db.namedObjectsDictionaryId();
  for (std::size_t i = 0; root.isNull() && i < m_db.objectOrder().size(); ++i) {
    const AcDbObjectId id = m_db.objectOrder()[i];
    if (id.isValid() && AcDbDictionary::cast(id.stub()->object)) root = id;
  }
  const bool known = root.isValid();
  if (known) {
    m_ids[handleIn(item.tags)] = root;
  } else {
    place(std::make_unique<AcDbDictionary>(), item);
    root = m_made.back().first->objectId();
    m_db.objectOrder().insert(m_db.objectOrder().begin(), root);
  }
  m_db.setNamedObjectsDictionary(root);
  entriesOf(item, known);
}

/// Gives an object to a dictionary, under the handle that an entry without object names already, if any.
AcDbObjectId Completion::enterAt(const Place& place, AcDbObject& object) {
  AcDbObjectId id;
  for (const AcDbDictionary::Entry& entry : place.dictionary->entries()) {
    const bool open = !entry.id.isNull() && !entry.id.isValid() && entry.id.handle() < kDxfHandleLimit;
    if (!open || veltora::base::compareNoCase(entry.key, place.key) != 0) continue;
    if (m_db.addWithHandle(id, &object, entry.id.handle()) == Acad::eOk) return id;
  }
  place.dictionary->setAt(place.key.c_str(), &object, id);
  object.close();
  return id;
}

void Completion::objects() {
  tables();  // all there: learns their handles
  const std::vector<Item> items = itemsOf("OBJECTS");
  root(items.front());
  for (const Item& item : items) {
    const auto wanted = m_wanted.find(handleIn(item.tags));
    if (wanted == m_wanted.end()) continue;
    std::unique_ptr<AcDbObject> object = dxfNewObject(item.type);
    const AcDbObjectId id = enterAt(wanted->second, *object);
    m_ids[handleIn(item.tags)] = id;
    m_made.emplace_back(object.release(), &item);
    m_db.objectOrder().push_back(id);
    entriesOf(item, false);
  }
  readFields();
  nameLayouts();
}

/// Model and paper space get the layouts that were made for them.
void Completion::nameLayouts() {
  const std::pair<Adesk::UInt64, AcDbObjectId> layouts[] = {{0x22, m_db.modelSpaceId()},
                                                            {0x1E, m_db.paperSpaceId()}};
  for (const auto& [handle, space] : layouts) {
    auto* record = space.isValid() ? AcDbBlockTableRecord::cast(space.stub()->object) : nullptr;
    const auto layout = m_ids.find(handle);
    if (record && layout != m_ids.end() && !record->getLayoutId().isValid())
      record->setLayoutId(layout->second);
  }
}

template <class Marker>
AcDbObjectId newMarker(AcDbDatabase& database, AcDbObjectId record) {
  auto marker = std::make_unique<Marker>();
  marker->setLayer(database.layerZero());
  marker->setOwnerId(record);
  AcDbObjectId id;
  database.addAcDbObject(id, marker.get());
  marker.release()->close();
  return id;
}

}  // namespace

void dxfCompleteTables(AcDbDatabase& database) { Completion(database).tables(); }

void dxfCompleteObjects(AcDbDatabase& database) { Completion(database).objects(); }

void dxfCompleteBlocks(AcDbDatabase& database) {
  const AcDbObjectId table = database.blockTableId();
  if (!table.isValid()) return;
  for (const AcDbObjectId id : AcDbSymbolTable::cast(table.stub()->object)->records()) {
    auto* record = id.isLive() ? AcDbBlockTableRecord::cast(id.stub()->object) : nullptr;
    if (!record) continue;
    AcDbObjectId begin = record->blockBeginId();
    AcDbObjectId end = record->blockEndId();
    if (!begin.isLive()) begin = newMarker<AcDbBlockBegin>(database, id);
    if (!end.isLive()) end = newMarker<AcDbBlockEnd>(database, id);
    record->setBlockMarkers(begin, end);
  }
}
