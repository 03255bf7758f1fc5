#include "arx/dxf/dxffactory.h"

#include "arx/db/dbblocktable.h"
#include "arx/db/dbdict.h"
#include "arx/db/dbsymrecords.h"

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

std::unique_ptr<AcDbObject> dxfNewObject(std::string_view type) {
  if (type == "DICTIONARY" || type == "ACDBDICTIONARYWDFLT") return std::make_unique<AcDbDictionary>();
  if (type == "XRECORD") return std::make_unique<AcDbXrecord>();
  if (type == "GROUP") return std::make_unique<AcDbGroup>();
  return std::make_unique<AcDbOtherObject>(std::string(type));
}
