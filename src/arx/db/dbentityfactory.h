#pragma once

#include "arx/db/dbents.h"

#include <span>
#include <string_view>

/// A new, empty entity for a type of drawing files, owned by the caller; never null.
/// @param dxfType name of the type ("LINE")
/// @param tags groups of the entity: several classes share the names POLYLINE and VERTEX and are told apart
/// by
///        subclass marker, else by the flags in group 70
/// @return an AcDbOtherEntity for a type that the host does not model, and for an ellipse, a spline or a
///         construction line whose groups give none
ARX_API AcDbEntity* acdbNewEntity(std::string_view dxfType, std::span<const DxfTag> tags);
