#include "core/drawing_groups.h"

#include "arx/db/dbdict.h"
#include "arx/db/dbmain.h"
#include "base/free_number.h"

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
  const auto named = [](int number) { return L"*A" + std::to_wstring(number); };
  const int free = base::freeNumber([&](int number) {
    AcDbObjectId taken;
    return groups->getAt(named(number).c_str(), taken) == Acad::eOk;
  });
  if (groups->setAt(named(free).c_str(), group.get(), id) != Acad::eOk) return AcDbObjectId::kNull;
  group.release()->close();
  return id;
}

}  // namespace veltora
