#pragma once

#include "arx/ed/edsnap.h"

#include <QString>
#include <optional>
#include <vector>

namespace veltora::app {

/// A snap and what it is called.
struct SnapName {
  AcEdSnap snap;
  const char* word;  ///< French
};
/// In the order in which they are offered.
const std::vector<SnapName>& snapNames();

/// The point that the cursor is pulled to.
struct Snapped {
  AcEdSnap snap;
  AcGePoint3d point;
};

/// The nearest point that one of the snaps gives within `aperture` of a place; where there is none the centre
/// of an arc, then the nearest point of what passes there.
std::optional<Snapped> snapAt(AcDbDatabase& database, const std::vector<AcEdSnap>& snaps,
                              const AcGePoint3d& place, double aperture, const AcGePoint3d& from);

}  // namespace veltora::app
