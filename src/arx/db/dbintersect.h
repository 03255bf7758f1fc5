#pragma once

#include "arx/db/dbcurve.h"

/// Appends the points that two curves have in common, found piece by piece; see `AcDbEntity::intersectWith`.
/// @param extendFirst, extendSecond  straight ends of that curve go on endlessly, arcs become whole circles
void acdbIntersect(const AcDbCurve& first, bool extendFirst, const AcDbCurve& second, bool extendSecond,
                   AcGePoint3dArray& points);
