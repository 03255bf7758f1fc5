#pragma once

#include "arx/db/dbid.h"

#include <cstddef>
#include <vector>

class AcDbBlockTableRecord;

/// Order in which the entities of a block are drawn, one over the other: that of its list, unless its table
/// of sorting handles (ACAD_SORTENTS) says otherwise. Then all go by ascending handle, one that the table
/// names by the handle that stands beside it there. Holds until the list grows or the table changes.
class ARX_API AcDbDrawOrder {
public:
  explicit AcDbDrawOrder(const AcDbBlockTableRecord& block);
  /// Whether the list of the block is the order.
  [[nodiscard]] bool followsList() const { return m_keys.empty(); }
  /// Puts places of the list into the order of drawing. @param places  ascending
  void arrange(std::vector<std::size_t>& places) const;
  /// All entities of the block, the erased ones included.
  [[nodiscard]] std::vector<AcDbObjectId> entities() const;

private:
  const AcDbBlockTableRecord* m_block;
  std::vector<Adesk::UInt64> m_keys;  // by place
};
