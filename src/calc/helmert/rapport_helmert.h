#pragma once

#include "base/export.h"
#include "calc/helmert/helmert.h"

namespace veltora {

class htmlDocument;

/// Computes and writes the report of a transformation into an empty document.
/// @return false, with the document unchanged, when `transformerHelmert` fails
VELTORA_API bool rapportHelmert(const couplesHelmert& couples, htmlDocument& document);

}  // namespace veltora
