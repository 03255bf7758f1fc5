#pragma once

#include "base/export.h"

#include <string>
#include <string_view>

namespace veltora {

/// Filters of the file dialog of traverse files, the first in force.
inline constexpr const wchar_t* kFiltreObs = L"Observations|*.obs|Sans extension|*.|Tous|*.*|Text|*.TXT";

/// The name under which a traverse is saved: the file's own name in lower case, with the ending that goes
/// with the filter: ".obs" for the first, ".txt" for the fourth, a point for the others, each unless it is
/// there; and ".obs" when there is no point at all by then.
/// @param choisi the path that the user chose
/// @param filtre from 1
VELTORA_API std::wstring nomFichierObs(std::wstring_view choisi, int filtre);

}  // namespace veltora
