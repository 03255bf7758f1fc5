#include "arx/dxf/dxfinsert.h"

#include "arx/db/dbentityfactory.h"
#include "arx/db/dbresident.h"
#include "arx/db/dbsubents.h"
#include "arx/dxf/dxffactory.h"
#include "base/text.h"

#include <array>

using veltora::base::toLower;

namespace {

AcDbObjectId recordNamed(AcDbDatabase& database, const char* kind, const std::wstring& name) {
  AcDbObjectId id;
  if (auto* table = resident<AcDbSymbolTable>(database.tableId(kind))) table->getIdAt(name.c_str(), id);
  return id;
}

/// Shows a block that the text names in group 2.
bool namesBlock(const std::string& type) {
  return type == "INSERT" || type == "ACAD_TABLE" || type.find("DIMENSION") != std::string::npos;
}

bool namesDimensionStyle(const std::string& type) {
  return type == "LEADER" || type == "TOLERANCE" || type.find("DIMENSION") != std::string::npos;
}

/// A reference that the copy cannot do without: hard pointers and owned objects.
bool isNeeded(int code) {
  return (code >= 340 && code <= 369) || (code >= 390 && code <= 399) || code == 480 || code == 481;
}

/// An empty object of the same kind.
std::unique_ptr<AcDbObject> emptyLike(const AcDbObject& object) {
  std::string type(object.dxfName());
  if (AcDbOtherEntity::cast(&object)) return std::make_unique<AcDbOtherEntity>(std::move(type));
  if (AcDbOtherObject::cast(&object)) return std::make_unique<AcDbOtherObject>(std::move(type));
  return std::unique_ptr<AcDbObject>(static_cast<AcDbObject*>(object.isA()->create()));
}

/// Last subclass marker of a text, which names the object's own class.
std::string markerOf(const DxfTagText& tags) {
  std::string marker;
  DxfTagText::Cursor cursor = tags.tags();
  for (DxfTag tag; cursor.next(tag);) {
    if (tag.code == 100) marker = std::string(tag.value);
  }
  return marker;
}

/// Key of an entry; empty when the dictionary does not hold it.
AcString keyOf(const AcDbDictionary& dictionary, AcDbObjectId id) {
  for (const AcDbDictionary::Entry& entry : dictionary.entries()) {
    if (entry.id == id) return entry.key;
  }
  return {};
}

}  // namespace

DxfTagText DxfInserter::textOf(const AcDbObject& object) {
  std::string text;
  AcDbDxfWriter out([&](std::string_view piece) { text += piece; });
  object.dxfOut(out);
  out.flush();
  DxfTagText tags;
  tags.assign(std::move(text));
  return tags;
}

void DxfInserter::fill(AcDbBlockTableRecord& block) {
  auto* model = resident<AcDbBlockTableRecord>(m_source.modelSpaceId());
  if (!model) return;
  m_block = block.objectId();
  m_ids[model->objectId().stub()] = m_block;
  copyBlock(*model, block);
  while (!m_needed.empty() || !m_blocks.empty()) {
    if (!m_needed.empty()) {
      const AcDbObjectId next = m_needed.front();
      m_needed.pop_front();
      if (!m_ids.contains(next.stub())) need(next);
    } else {
      const auto [from, to] = m_blocks.front();
      m_blocks.pop_front();
      copyBlock(*from, *to);
    }
  }
  for (const Copy& copy : m_copies) finish(copy);
}

void DxfInserter::copyBlock(const AcDbBlockTableRecord& from, AcDbBlockTableRecord& to) {
  const std::vector<AcDbObjectId>& ids = from.entities();
  for (const AcDbObjectId id : ids) {
    if (const auto* entity = resident<AcDbEntity>(id)) this->entity(*entity, to);
  }
}

AcDbObject* DxfInserter::begin(const AcDbObject& from, std::unique_ptr<AcDbObject> made, AcDbObjectId owner) {
  Copy& copy = m_copies.emplace_back();
  copy.tags = textOf(from);
  copy.type = std::string(from.dxfName());
  copy.owner = owner;
  AcDbObjectId id = made->objectId();
  if (id.isNull()) {
    m_target.addAcDbObject(id, made.get());
  }
  copy.object = made.release();
  m_ids[from.objectId().stub()] = id;
  needsOf(copy.type, copy.tags);
  return copy.object;
}

void DxfInserter::entity(const AcDbEntity& from, AcDbBlockTableRecord& to) {
  AcDbObject* const copy = begin(from, emptyLike(from), to.objectId());
  to.enter(copy->objectId());
  AcDbSubEntityOwner* const parts = static_cast<AcDbEntity*>(copy)->subEntityOwner();
  for (const AcDbObjectId id : from.subObjects()) {
    const auto* part = resident<AcDbEntity>(id);
    if (!part || !parts) continue;
    const AcDbObjectId made = begin(*part, emptyLike(*part), copy->objectId())->objectId();
    if (AcDbSequenceEnd::cast(part)) {
      parts->enterEnd(made);
    } else {
      parts->enterSub(made);
    }
  }
}

void DxfInserter::needRecord(const char* kind, std::string_view name) {
  const AcDbObjectId id = recordNamed(m_source, kind, dxfToWide(name));
  if (id.isLive()) m_needed.push_back(id);
}

void DxfInserter::needsOf(const std::string& type, const DxfTagText& tags) {
  DxfTagText::Cursor cursor = tags.tags();
  for (DxfTag tag; cursor.next(tag);) {
    Adesk::UInt64 handle = 0;
    AcDbObjectId id;
    if (isNeeded(tag.code) && dxfParseHandle(tag.value, handle) &&
        m_source.getAcDbObjectId(id, false, handle) == Acad::eOk) {
      m_needed.push_back(id);
    }
    switch (tag.code) {
      case 2:
        if (namesBlock(type)) needRecord("BLOCK_RECORD", tag.value);
        break;
      case 3:
        if (namesDimensionStyle(type)) needRecord("DIMSTYLE", tag.value);
        break;
      case 6:
        needRecord("LTYPE", tag.value);
        break;
      case 7:
        needRecord("STYLE", tag.value);
        break;
      case 8:
      case 1003:
        needRecord("LAYER", tag.value);
        break;
      case 1001:
        needRecord("APPID", tag.value);
        break;
      default:
        break;
    }
  }
}

void DxfInserter::need(AcDbObjectId id) {
  if (!id.isLive()) return;
  AcDbObject& object = *id.stub()->object;
  if (auto* record = AcDbSymbolTableRecord::cast(&object)) return this->record(*record);
  // Other entities than those of the copied blocks stay behind, and so do tables and the root.
  if (AcDbEntity::cast(&object) || AcDbSymbolTable::cast(&object) || object.ownerId().isNull()) return;
  this->object(object);
}

AcString DxfInserter::freeBlockName(const AcString& name) const {
  const bool anonymous = name.rfind(L'*', 0) == 0;
  const AcString stem = anonymous ? name.substr(0, name.find_last_not_of(L"0123456789") + 1) : name + L"_";
  AcString result = anonymous ? name : stem + L"1";
  for (int number = 1; recordNamed(m_target, "BLOCK_RECORD", result).isValid(); ++number) {
    result = stem + std::to_wstring(number);
  }
  return result;
}

void DxfInserter::record(AcDbSymbolTableRecord& from) {
  const std::string kind(from.dxfName());
  auto* block = AcDbBlockTableRecord::cast(&from);
  if (block && (block->isLayout() || block->objectId() == m_source.paperSpaceId())) return;
  AcString name = from.name();
  const AcDbObjectId known = recordNamed(m_target, kind.c_str(), name);
  // A block within the inserted drawing that bears the inserted block's name would make it contain itself.
  const bool renamed = block && (block->isAnonymous() || known == m_block);
  if (known.isLive() && !renamed) {
    m_ids[from.objectId().stub()] = known;
    return;
  }
  if (renamed) {
    name = freeBlockName(name);
    m_blockNames[toLower(std::wstring_view(from.name()))] = name;
  }
  const AcDbObjectId table = m_target.ensureTable(kind);
  std::unique_ptr<AcDbObject> made = dxfNewRecord(kind, markerOf(textOf(from)));
  static_cast<AcDbSymbolTableRecord&>(*made).assignName(name);
  AcDbObject* const copy = begin(from, std::move(made), table);
  resident<AcDbSymbolTable>(table)->enter(copy->objectId(), name);
  if (!block) return;
  auto* to = static_cast<AcDbBlockTableRecord*>(copy);
  to->setOrigin(block->origin());
  to->setComments(block->comments().c_str());
  m_blocks.emplace_back(block, to);
}

AcDbObjectId DxfInserter::twinOf(AcDbObjectId dictionary) {
  if (dictionary == m_source.namedObjectsDictionaryId()) return m_target.namedObjectsDictionaryId();
  std::vector<AcString> path;
  constexpr std::size_t kDeepest = 16;
  while (dictionary != m_source.namedObjectsDictionaryId()) {
    const auto* child = resident<AcDbDictionary>(dictionary);
    const auto* parent = child ? resident<AcDbDictionary>(child->ownerId()) : nullptr;
    if (!parent || path.size() == kDeepest) return {};
    path.push_back(keyOf(*parent, dictionary));
    if (path.back().empty()) return {};
    dictionary = parent->objectId();
  }
  AcDbObjectId twin = m_target.namedObjectsDictionaryId();
  for (; !path.empty(); path.pop_back()) {
    AcDbObjectPointer<AcDbDictionary> parent(twin, AcDb::kForWrite);
    if (parent.openStatus() != Acad::eOk) return {};
    AcDbObjectId next;
    if (parent->getAt(path.back().c_str(), next) != Acad::eOk) {
      auto made = std::make_unique<AcDbDictionary>();
      if (parent->setAt(path.back().c_str(), made.get(), next) != Acad::eOk) return {};
      made.release()->close();
    }
    if (!resident<AcDbDictionary>(next)) return {};
    twin = next;
  }
  return twin;
}

void DxfInserter::object(AcDbObject& from) {
  const std::string_view type = from.dxfName();
  if (type == "LAYOUT" || type == "GROUP") return;
  const auto owner = m_ids.find(from.ownerId().stub());
  const auto* dictionary = resident<AcDbDictionary>(from.ownerId());
  const AcDbObjectId twin = dictionary ? twinOf(dictionary->objectId()) : AcDbObjectId();
  if (twin.isNull()) {
    if (owner != m_ids.end()) begin(from, emptyLike(from), owner->second);
    return;
  }
  m_ids[dictionary->objectId().stub()] = twin;
  const AcString key = keyOf(*dictionary, from.objectId());
  AcDbObjectPointer<AcDbDictionary> open(twin, AcDb::kForWrite);
  if (key.empty() || open.openStatus() != Acad::eOk) return;
  AcDbObjectId known;
  if (open->getAt(key.c_str(), known) == Acad::eOk) {
    m_ids[from.objectId().stub()] = known;
    return;
  }
  std::unique_ptr<AcDbObject> made = emptyLike(from);
  if (open->setAt(key.c_str(), made.get(), known) == Acad::eOk) begin(from, std::move(made), twin);
}

bool DxfInserter::translate(const Copy& copy, DxfTag& tag, std::deque<std::string>& texts) const {
  if (tag.code == 0) return false;
  if (tag.code == 67 && AcDbEntity::cast(copy.object)) return false;
  Adesk::UInt64 handle = 0;
  if (dxfKind(tag.code) == DxfKind::kPointer && dxfParseHandle(tag.value, handle)) {
    AcDbObjectId id;
    m_source.getAcDbObjectId(id, false, handle);
    const auto known = m_ids.find(id.stub());
    DxfTagText text;
    text.appendHandle(tag.code, known == m_ids.end() ? AcDbHandle() : known->second.handle());
    DxfTag written;
    DxfTagText::Cursor cursor = text.tags();
    cursor.next(written);
    tag.value = texts.emplace_back(written.value);
  }
  if (tag.code == 2 && (namesBlock(copy.type) || copy.type == "BLOCK_RECORD")) {
    const auto name = m_blockNames.find(toLower(std::wstring_view(dxfToWide(tag.value))));
    if (name != m_blockNames.end()) tag.value = texts.emplace_back(dxfFromWide(name->second));
  }
  return true;
}

void DxfInserter::finish(const Copy& copy) {
  std::vector<DxfTag> tags;
  std::deque<std::string> texts;
  DxfTagText::Cursor cursor = copy.tags.tags();
  for (DxfTag tag; cursor.next(tag);) {
    if (!translate(copy, tag, texts)) continue;
    const bool entry = !tags.empty() && tags.back().code == 3 && (tag.code == 350 || tag.code == 360);
    if (entry && tag.value == "0") {
      tags.pop_back();  // of a dictionary, for an object that stays behind
    } else {
      tags.push_back(tag);
    }
  }
  copy.object->dxfIn(tags, m_target);
  copy.object->setOwnerId(copy.owner);
  copy.object->close();
}

Acad::ErrorStatus DxfInserter::emptyBlock(AcDbObjectId& block, const ACHAR* name) {
  block = recordNamed(m_target, "BLOCK_RECORD", name);
  if (const auto* known = resident<AcDbBlockTableRecord>(block)) {
    const std::vector<AcDbObjectId> old = known->entities();
    for (const AcDbObjectId id : old) {
      AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
      if (entity.openStatus() == Acad::eOk) entity->erase();
    }
    return Acad::eOk;
  }
  auto record = std::make_unique<AcDbBlockTableRecord>();
  AcDbObjectPointer<AcDbSymbolTable> table(m_target.ensureTable("BLOCK_RECORD"), AcDb::kForWrite);
  Acad::ErrorStatus status = table.openStatus();
  if (status == Acad::eOk) status = record->setName(name);
  if (status == Acad::eOk) status = table->add(block, record.get());
  if (status == Acad::eOk) record.release()->close();
  return status;
}

Acad::ErrorStatus DxfInserter::run(AcDbObjectId& blockId, const ACHAR* name) {
  AcDbObjectId id;
  const Acad::ErrorStatus status = emptyBlock(id, name);
  if (status != Acad::eOk) return status;
  AcDbObjectPointer<AcDbBlockTableRecord> block(id, AcDb::kForWrite);
  if (block.openStatus() != Acad::eOk) return block.openStatus();
  block->setOrigin(m_source.insbase());
  fill(*block);
  blockId = id;
  return Acad::eOk;
}
