#include "core/drawing_space.h"

#include <utility>

namespace veltora {

DrawingSpace::DrawingSpace(AcDbDatabase* db, Which which) {
  if (!db) db = acdbHostApplicationServices()->workingDatabase();
  if (db) m_space.open(which == kModel ? db->modelSpaceId() : db->currentSpaceId(), AcDb::kForWrite);
}

AcDbObjectId DrawingSpace::append(AcDbEntity* entity) {
  AcDbObjectId id;
  return ready() && m_space->appendAcDbEntity(id, entity) == Acad::eOk ? id : AcDbObjectId();
}

AcDbObjectId DrawingSpace::add(std::unique_ptr<AcDbEntity> entity) {
  const AcDbObjectId id = append(entity.get());
  if (!id.isNull()) entity.release()->close();
  return id;
}

AcDbObjectId addToModelSpace(std::unique_ptr<AcDbEntity> entity) {
  return DrawingSpace().add(std::move(entity));
}

}  // namespace veltora
