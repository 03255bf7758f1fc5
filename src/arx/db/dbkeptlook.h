#pragma once

#include "arx/db/dbents.h"
#include "arx/db/dbfiler.h"

#include <vector>

class AcGiGeometry;

/// Draws an entity that is kept as file text, as far as its groups say how: hatches, dimensions and tables by
/// their blocks, leaders, solids, multilines, frames of pictures and viewports. One that asks where things
/// lie gets the borders of hatches and solids.
void acdbDrawKept(const AcDbOtherEntity& entity, const std::vector<DxfExtra>& sections,
                  AcGiGeometry& geometry);
