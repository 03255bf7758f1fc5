#pragma once

#include "calc/adjustment/reseau_compense.h"

namespace veltora {

class htmlDocument;

/// Writes the report "Compensation pondérée" of an adjusted network into an empty document: what was counted,
/// the doubts, points, measures with their tests, relative ellipses.
VELTORA_API void rapportCompense(const reseauCompense& resultat, htmlDocument& document);

}  // namespace veltora
