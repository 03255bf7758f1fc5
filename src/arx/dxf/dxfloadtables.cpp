#include "arx/dxf/dxfloader.h"

#include "base/text.h"

#include <algorithm>
#include <array>

namespace {

/// Table records that the host models only by name: type in the file and marker of their section.
struct OtherRecord {
  std::string_view type;
  const char* subclass;
};
constexpr std::array<OtherRecord, 3> kOtherRecords = {{{"VIEW", "AcDbViewTableRecord"},
                                                       {"UCS", "AcDbUCSTableRecord"},
                                                       {"DIMSTYLE", "AcDbDimStyleTableRecord"}}};

std::string markerOf(std::span<const DxfTag> tags) {
  std::string marker;
  for (const DxfTag& tag : tags) {
    if (tag.code == 100) marker = std::string(tag.value);
  }
  return marker;
}

}  // namespace

std::unique_ptr<AcDbObject> dxfNewRecord(std::string_view type, std::string_view subclass) {
  if (type == "LAYER") return std::make_unique<AcDbLayerTableRecord>();
  if (type == "STYLE") return std::make_unique<AcDbTextStyleTableRecord>();
  if (type == "LTYPE") return std::make_unique<AcDbLinetypeTableRecord>();
  if (type == "APPID") return std::make_unique<AcDbRegAppTableRecord>();
  if (type == "VPORT") return std::make_unique<AcDbViewportTableRecord>();
  if (type == "BLOCK_RECORD") return std::make_unique<AcDbBlockTableRecord>();
  std::string marker(subclass);
  for (const OtherRecord& other : kOtherRecords) {
    if (type == other.type) marker = other.subclass;
  }
  return std::make_unique<AcDbOtherTableRecord>(std::string(type), std::move(marker));
}

void DxfLoader::beginTable() {
  const std::string kind = veltora::base::trim(dxfFirst(m_scan.tags(), 2));
  if (kind.empty()) throw DxfError{m_scan.line(), "table sans nom"};
  const AcDbObjectId known = m_db.tableId(kind);
  if (known.isValid()) {
    m_table = AcDbSymbolTable::cast(known.stub()->object);
    if (!m_tablesReady) finding("table " + kind + " donnée deux fois, réunie");
    return;
  }
  auto table = std::make_unique<AcDbSymbolTable>();
  table->setKind(kind);
  table->dxfIn(m_scan.tags(), m_db);
  m_table = table.get();
  m_db.enterTable(place(std::move(table), itemHandle()));
}

void DxfLoader::tableRecord() {
  const std::string type(m_scan.type());
  if (!m_table) throw DxfError{m_scan.line(), "enregistrement \"" + type + "\" hors d'une table"};
  if (type != m_table->kind()) {
    throw DxfError{m_scan.line(), "enregistrement \"" + type + "\" dans la table " + m_table->kind()};
  }
  const std::wstring name = dxfToWide(dxfFirst(m_scan.tags(), 2));
  std::unique_ptr<AcDbObject> record = dxfNewRecord(type, markerOf(m_scan.tags()));
  Deferred deferred{record.get(), {}, m_scan.line()};
  for (const DxfTag& tag : m_scan.tags()) deferred.tags.append(tag.code, tag.value);
  static_cast<AcDbSymbolTableRecord&>(*record).assignName(
      name);  // is found by others before its fields are read
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
    record.object->dxfIn(m_old ? m_upgrade.record(record.object->dxfName(), tags, m_db) : tags, m_db);
    record.object->setOwnerId(table);
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
