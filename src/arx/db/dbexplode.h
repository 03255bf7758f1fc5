#pragma once

#include "arx/db/dbid.h"

#include <vector>

/// Takes an entity apart; the entity stays. Its parts come into the space or block that holds it:
///   polylines           lines and arcs with the properties of the polyline; widths are lost
///   MTEXT               a text for each line as it is broken; changes of font and colour within are lost
///   a block reference   what the block shows, nested references whole; the attributes and the constant
///                       definitions that can be seen become texts
/// @param parts  the new entities, closed
/// @return `eNotApplicable` for what has no parts, also for rows and columns of a block and for a block of
///         another file; `eCannotScaleNonUniformly` for a block whose scales or place something in it cannot
///         follow. Nothing is made then.
ARX_API Acad::ErrorStatus acdbExplode(AcDbObjectId entity, std::vector<AcDbObjectId>& parts);
