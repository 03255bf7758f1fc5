#pragma once

#include "base/export.h"

#include <string_view>

namespace veltora {

/// The system's rule of what text is a number: blanks, an optional sign, digits, then optionally a point with
/// optional digits and, only behind the point, an exponent "E"; then blanks. So "12", "-1.5", "1.5E3" and
/// "1.E3" are numbers; "1.", ".5", "1E5", "1e5" and the empty text are not. Only the blank is skipped: a tab
/// refuses. The value is then read with `base::lireReel`.
VELTORA_API bool validerNombre(std::wstring_view texte);
/// The same on Windows-1252 bytes.
VELTORA_API bool validerNombre(std::string_view texte);

}  // namespace veltora
