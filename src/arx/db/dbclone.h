#pragma once

#include "arx/db/dbid.h"

#include <vector>

/// Copies entities of one drawing, each into the space that holds it, with its attributes or vertices, its
/// extended data, its extension dictionary and, of a dimension or a table, its picture. The copies belong to
/// no group. Where copied entities refer to each other, the copies refer to the copies.
/// @return the copies in the same order, closed; null for what cannot be opened
ARX_API std::vector<AcDbObjectId> acdbCopyEntities(const std::vector<AcDbObjectId>& entities);

/// The same into another space or block.
ARX_API std::vector<AcDbObjectId> acdbCopyEntities(const std::vector<AcDbObjectId>& entities,
                                                   AcDbObjectId space);
