#pragma once

#include "arx/db/dbcurve.h"

/// Parallels of a curve in one plane that is no circle, as cubic splines: their points and directions are
/// exact at the ends of stretches, which are halved until what is between keeps within a millionth of the
/// distance. A corner of the curve ends a spline and begins another.
/// @param normal  of the curve's plane, unit vector
/// @param offset  to the right of the direction of travel as seen from the normal, drawing units, not 0
/// @return `eInvalidInput`, nothing appended, when the curve leaves the plane, or where the distance exceeds
/// its
///         radius on the inner side, so that the parallel would turn round; `curves` are owned by the caller
Acad::ErrorStatus acdbOffsetSpline(const AcDbCurve& curve, const AcGeVector3d& normal, double offset,
                                   std::vector<AcDbCurve*>& curves);
