#pragma once

#include "arx/db/dbcurve.h"

#include <memory>
#include <vector>

/// On which side of a curve a place lies, seen in plan along the direction of travel: 1 left, -1 right, 0 on
/// it or for a curve without points. At a corner both of its segments count.
ARX_API int acdbSideOf(const AcDbCurve& curve, const AcGePoint3d& place);

/// Distance in plan from a curve, whose straight ends go on endlessly and whose arcs become circles.
ARX_API double acdbDistanceTo(const AcDbCurve& curve, const AcGePoint3d& place);

/// The parallels of a curve that lie on the side of a place. @param distance  above 0
/// @return `eInvalidInput` when none is possible there, else as `AcDbCurve::getOffsetCurves`
ARX_API Acad::ErrorStatus acdbOffsetTowards(const AcDbCurve& curve, double distance, const AcGePoint3d& place,
                                            std::vector<std::unique_ptr<AcDbCurve>>& parallels);
