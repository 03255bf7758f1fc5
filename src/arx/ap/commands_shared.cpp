#include "arx/ap/commands_shared.h"

#include "arx/ap/acdocman.h"
#include "arx/db/dballents.h"
#include "arx/ed/edinput.h"

namespace arx_commands {

AcDbObjectId add(std::unique_ptr<AcDbEntity> entity) {
  AcApDocument* const document = curDoc();
  if (!document) return {};
  const AcDbObjectPointer<AcDbBlockTableRecord> space(document->database()->currentSpaceId(),
                                                      AcDb::kForWrite);
  if (!space || space->appendAcDbEntity(entity.get()) != Acad::eOk) return {};
  AcDbEntity* const added = entity.release();  // the database owns it now
  const AcDbObjectId id = added->objectId();
  added->close();
  return id;
}

int askPoint(const wchar_t* prompt, AcGePoint3d& point, const AcGePoint3d* from, const wchar_t* keywords) {
  const bool mayEnd = from && keywords;
  acedInitGet(mayEnd ? 0 : RSG_NONULL, keywords);
  ads_point base = {0, 0, 0};
  if (from) base[0] = from->x, base[1] = from->y, base[2] = from->z;
  ads_point given;
  const int status = acedGetPoint(from ? base : nullptr, prompt, given);
  if (status == RTNORM) point.set(given[0], given[1], given[2]);
  return status;
}

AcDbObjectId recordNamed(AcDbObjectId table, const std::wstring& name) {
  AcDbObjectId id;
  const AcDbObjectPointer<AcDbSymbolTable> records(table);
  if (!records || records->getIdAt(name.c_str(), id) != Acad::eOk) id.setNull();
  return id;
}

std::wstring keywordGiven() {
  std::wstring keyword;
  acedGetInput(keyword);
  return keyword;
}

}  // namespace arx_commands
