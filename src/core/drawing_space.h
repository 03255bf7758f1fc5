#pragma once

#include "arx/db/dbents.h"
#include "arx/db/dbmain.h"
#include "base/export.h"
#include "base/uncopyable.h"

#include <memory>

namespace veltora {

/// A space of a drawing, open for entities to be added to it. Where many are added, one object serves for
/// all.
class VELTORA_API DrawingSpace : private Uncopyable {
public:
  enum Which { kModel, kCurrent };
  /// @param db  null for the working drawing
  explicit DrawingSpace(AcDbDatabase* db = nullptr, Which which = kModel);
  /// False without a drawing, or when its space does not open: then nothing can be added.
  [[nodiscard]] bool ready() const { return m_space.openStatus() == Acad::eOk; }
  /// Adds an entity and closes it. @return the null id, the entity gone, when that fails
  AcDbObjectId add(std::unique_ptr<AcDbEntity> entity);
  /// Adds an entity and leaves it open for writing; the caller closes it. @return null likewise
  template <class Entity>
  Entity* addOpen(std::unique_ptr<Entity> entity) {
    return append(entity.get()).isNull() ? nullptr : entity.release();
  }

private:
  AcDbObjectId append(AcDbEntity* entity);

  AcDbObjectPointer<AcDbBlockTableRecord> m_space;
};

/// Adds one entity to the model space of the working drawing, closed. @return as `DrawingSpace::add`
VELTORA_API AcDbObjectId addToModelSpace(std::unique_ptr<AcDbEntity> entity);

}  // namespace veltora
