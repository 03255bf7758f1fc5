#include "arx/dxf/dxfloader.h"

#include "arx/db/dbblockref.h"
#include "arx/db/dbentityfactory.h"
#include "base/text.h"

using veltora::base::toUtf8;

AcDbBlockTableRecord* DxfLoader::beginBlock() {
  auto begin = std::make_unique<AcDbBlockBegin>();
  begin->dxfIn(m_scan.tags(), m_db);
  if (m_old) begin->name = dxfPresentBlockName(begin->name);
  AcDbObjectId id = begin->ownerId();
  if (!id.isValid() || !id.stub()->object->isKindOf(AcDbBlockTableRecord::desc())) {
    id = m_db.recordOf("BLOCK_RECORD", begin->name);
  }
  auto* record = id.isValid() ? AcDbBlockTableRecord::cast(id.stub()->object) : nullptr;
  if (!record) throw DxfError{m_scan.line(), "bloc \"" + toUtf8(begin->name) + "\" sans enregistrement"};
  if (!m_begunBlocks.insert(record).second) {
    finding("bloc \"" + toUtf8(record->name()) + "\" donné deux fois, réuni");
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
  prepareTables();
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
      throw DxfError{m_scan.line(), "entité \"" + std::string(m_scan.type()) + "\" hors d'un bloc"};
    } else {
      entity(block);
    }
  }
  closeParent();
}

void DxfLoader::readEntities() {
  prepareTables();
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
    finding("\"" + std::string(m_scan.type()) + "\" sans entité à laquelle l'attacher, laissé de côté");
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
