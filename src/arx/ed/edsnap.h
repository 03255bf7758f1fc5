#pragma once

#include "arx/adesk.h"
#include "arx/ge/gepoint.h"

#include <optional>
#include <string>
#include <vector>

class AcDbDatabase;

/// What a point can be pulled to.
enum class AcEdSnap { kEnd, kMiddle, kCenter, kIntersection, kNode, kInsertion, kNearest, kPerpendicular };

/// The snaps that words in front of a point name: "_end", "EXT", "_mid,_int"; three letters of each suffice,
/// behind an underscore only the international words count. Nothing for any other line.
ARX_API std::optional<std::vector<AcEdSnap>> acedReadSnaps(const std::wstring& line);

/// The point nearest to a place, in plan, among those that the snaps give of the entities within `aperture`
/// of it, those in blocks included. Nothing when there is none.
/// @param from  where perpendiculars begin
ARX_API std::optional<AcGePoint3d> acedSnap(AcDbDatabase& database, const std::vector<AcEdSnap>& snaps,
                                            const AcGePoint3d& place, double aperture,
                                            const AcGePoint3d& from);
