#pragma once

#include "arx/ge/gepoint.h"
#include "base/remarque.h"

#include <string>
#include <vector>

namespace veltora::terrain {

/// "652310.25, 6862104.50".
std::wstring lieu(const AcGePoint3d& point);

/// Points that stand far from all others are rarely meant: the few that lie more than `kEcarts` median
/// deviations and `kAuMoins` drawing units from the median, in altitude or in plan, altitudes of exactly 0
/// among others that are not, and altitudes as no ground has them, as exchanged columns give them.
/// @param reperes  names of the points; may be shorter than these
void douterDesPoints(const std::vector<AcGePoint3d>& points, const std::vector<std::wstring>& reperes,
                     base::Remarques& remarques);

inline constexpr double kEcarts = 20.0;
inline constexpr double kAuMoins = 10.0;

}  // namespace veltora::terrain
