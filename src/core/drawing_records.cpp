#include "core/drawing_records.h"

#include "arx/db/dbsymtb.h"

namespace veltora {

AcDbObjectId recordNamed(const AcDbObjectId& table, const std::wstring& name) {
  AcDbObjectId id;
  const AcDbObjectPointer<AcDbSymbolTable> records(table);
  if (records.openStatus() == Acad::eOk) records->getIdAt(name.c_str(), id);
  return id;
}

}  // namespace veltora
