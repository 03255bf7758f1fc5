#include "core/drawing_groups.h"

#include "arx/db/dbdict.h"
#include "arx/db/dbmain.h"

#include <memory>
#include <string>

namespace veltora {

AcDbObjectId groupEntities(const std::vector<AcDbObjectId>& entities) {
  AcDbObjectId id;
  AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
  if (!database) return id;
  auto group = std::make_unique<AcDbGroup>();
  group->setAnonymous();
  group->append(entities);
  if (group->numEntities() == 0) return id;
  const AcDbObjectPointer<AcDbDictionary> groups(database->groupDictionaryId(), AcDb::kForWrite);
  if (groups.openStatus() != Acad::eOk) return id;
  AcString name;
  AcDbObjectId taken;
  for (int number = 1; name.empty() || groups->getAt(name.c_str(), taken) == Acad::eOk; ++number)
    name = L"*A" + std::to_wstring(number);
  if (groups->setAt(name.c_str(), group.get(), id) != Acad::eOk) return AcDbObjectId::kNull;
  group.release()->close();
  return id;
}

}  // namespace veltora
