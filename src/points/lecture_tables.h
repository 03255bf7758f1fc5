#pragma once

#include "points/projets_topo.h"

namespace veltora {

/// What a drawing holds: no stored tables (or purged ones), tables, or something that cannot be read.
enum class lectureTables { kAucune, kLues, kIllisibles };

/// Replaces the tables of a project by those stored in a drawing (null: the working one), without a message.
/// Unless they could be read the project is a new one.
lectureTables lireTables(AcDbDatabase* db, projetsTopo& projets);

}  // namespace veltora
