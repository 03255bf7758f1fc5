#pragma once

#include "arx/adesk.h"

#include <functional>
#include <string>
#include <string_view>

class AcDbDatabase;

/// Writes the whole drawing piece by piece. Makes what every drawing must have and this one lacks (tables,
/// block ends).
ARX_API void dxfWrite(AcDbDatabase& database, const std::function<void(std::string_view)>& sink);
ARX_API std::string dxfWriteText(AcDbDatabase& database);

/// Oldest version written: the first one in UTF-8. Older drawings are raised to it.
inline constexpr const char* kDxfOldestWritten = "AC1021";
