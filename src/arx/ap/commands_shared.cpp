#include "arx/ap/commands_shared.h"

#include "arx/ap/acdocman.h"
#include "arx/db/dballents.h"
#include "arx/ed/edinput.h"
#include "arx/ed/edselect.h"
#include "arx/ed/edvars.h"

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

std::optional<std::vector<AcDbObjectId>> selectEntities(bool oneAnswer) {
  ads_name set;
  if (acedSSGet(L"I", nullptr, nullptr, nullptr, set) == RTNORM)
    acedSSSetFirst(nullptr, nullptr);
  else if (acedSSGet(oneAnswer ? L":S" : nullptr, nullptr, nullptr, nullptr, set) != RTNORM)
    return std::nullopt;
  std::vector<AcDbObjectId> entities = acedSSEntities(set);
  acedSSFree(set);
  return entities;
}

std::optional<std::vector<AcDbObjectId>> selectEditable(bool oneAnswer) {
  std::optional<std::vector<AcDbObjectId>> entities = selectEntities(oneAnswer);
  if (!entities) return entities;
  const std::size_t locked = std::erase_if(*entities, [](AcDbObjectId id) {
    const AcDbObjectPointer<AcDbEntity> entity(id);
    return entity && entity->layerState().locked;
  });
  if (locked > 0)
    acutPrintf(L"\n%d objet(s) laissé(s) de côté, sur un calque verrouillé\n", static_cast<int>(locked));
  return entities;
}

int integerVariable(const wchar_t* name) {
  resbuf value{};
  if (acedGetVar(name, &value) != RTNORM) return 0;
  const bool number = acutRbKind(value.restype) == RbKind::kShort;
  return number ? value.resval.rint : 0;
}

std::wstring keywordGiven() {
  std::wstring keyword;
  acedGetInput(keyword);
  return keyword;
}

}  // namespace arx_commands
