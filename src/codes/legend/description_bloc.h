#pragma once

#include "arx/db/dbid.h"
#include "base/export.h"

#include <string>
#include <vector>

namespace veltora {

/// The descriptions that a block definition carries, without empty and repeated ones, in the order in which
/// they count: its own comment, the record kept with it, the record kept with the first of its entities that
/// has one. Empty for what is no block.
VELTORA_API std::vector<std::wstring> descriptionsBloc(const AcDbObjectId& bloc);

/// The first of them, else the block's name.
VELTORA_API std::wstring descriptionBloc(const AcDbObjectId& bloc);

/// Writes a description to all three places. @return false when the drawing refuses
VELTORA_API bool decrireBloc(const AcDbObjectId& bloc, const std::wstring& description);

}  // namespace veltora
