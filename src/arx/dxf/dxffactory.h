#pragma once

#include "arx/db/dbobject.h"

#include <memory>
#include <string_view>

/// An empty object of the class that models a table record.
/// @param type name in the file ("LAYER")
/// @param subclass marker of its section, for those that the host does not model
std::unique_ptr<AcDbObject> dxfNewRecord(std::string_view type, std::string_view subclass);
/// An empty object of the OBJECTS section.
std::unique_ptr<AcDbObject> dxfNewObject(std::string_view type);
