#pragma once

#include "arx/adesk.h"
#include "arx/db/dbid.h"
#include "arx/ge/gematrix.h"

#include <functional>
#include <optional>
#include <vector>

/// Entities that a command is about to map: while its prompt waits, a window shows where they would come to
/// lie if the user answered with the place of the cursor. Nothing of them is changed.
struct AcEdDraggedSet {
  const std::vector<AcDbObjectId>& entities;
  AcGeMatrix3d map;
};

/// What is dragged now; null for nothing, and before the cursor has moved.
ARX_API const AcEdDraggedSet* acedDraggedSet();

/// The next prompt drags entities, until this object goes.
class ARX_API AcEdDragSet {
public:
  /// The map that an answer would mean; nothing for none.
  using Map = std::function<std::optional<AcGeMatrix3d>(const AcGePoint3d& cursor)>;
  /// @param entities  outlive this object
  AcEdDragSet(const std::vector<AcDbObjectId>& entities, Map map);
  ~AcEdDragSet();
  AcEdDragSet(const AcEdDragSet&) = delete;
  AcEdDragSet& operator=(const AcEdDragSet&) = delete;
};
