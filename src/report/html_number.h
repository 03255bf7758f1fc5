#pragma once

#include <string>

namespace veltora {

/// A number with a fixed number of decimals, as paragraphs and cells show it.
/// @param decimales 0 to 99; a value outside counts as the nearest of these
std::string texteNombre(double valeur, int decimales);

}  // namespace veltora
