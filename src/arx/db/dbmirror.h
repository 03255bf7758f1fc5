#pragma once

#include "arx/ge/gematrix.h"

class AcDbEntity;

/// The reflection that keeps the upright plane through two points, which differ in plan.
ARX_API AcGeMatrix3d acdbMirrorMatrix(const AcGePoint3d& a, const AcGePoint3d& b);

/// Reflects an entity that is open for writing. A text of several lines and a table stay readable in
/// any case.
/// @param readable  texts and attributes stay readable too, in the reflected box of what they were
/// @return as `AcDbEntity::transformBy`
ARX_API Acad::ErrorStatus acdbMirror(AcDbEntity& entity, const AcGeMatrix3d& mirror, bool readable);
