#pragma once

#include "base/export.h"

#include <string>

class AcDbDatabase;

namespace veltora {

enum class formatTables { kTexte, kCsv };

/// The point tables stored in a drawing, in UTF-8: for each table its name, the current one marked, then a
/// line a point with name, X, Y, Z (empty when absent) and code, in a sheet also its observation when a point
/// shows one. Coordinates in drawing units.
/// @param db  the drawing; the installed project takes no part and nothing changes
/// @param sortie  the text; for data that cannot be read the message, French, UTF-8
/// @return false when the drawing's stored data cannot be read
VELTORA_API bool exporterTables(AcDbDatabase* db, formatTables format, std::string& sortie);

}  // namespace veltora
