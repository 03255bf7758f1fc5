#pragma once

#include "arx/ge/gematrix2d.h"
#include "base/export.h"

#include <string>

/// Transformations of the plane on the host's command line, to see what they do.
namespace veltora {

/// Prints the rows and what the map does: displacement, rotation, scale, reflection; or that it is no
/// similarity.
VELTORA_API void analyserMatrice(const AcGeMatrix2d& matrice, const std::wstring& nom);
/// Prints the rows alone.
VELTORA_API void imprimerMatrice(const AcGeMatrix2d& matrice, const std::wstring& nom);

}  // namespace veltora
