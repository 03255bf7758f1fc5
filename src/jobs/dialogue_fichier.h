#pragma once

#include "base/export.h"

#include <filesystem>
#include <optional>
#include <string>

namespace veltora {

/// The command whose dialog works with a field file.
struct dialogueFichier {
  std::wstring commande;
  std::wstring ligne;  ///< of a script in that dialog, which makes it ask for the file
};

/// Looks at what the file holds, and at the end of its name where that tells nothing for sure; of a traverse,
/// whether it is open.
/// @param raison  French: why there is none
VELTORA_API std::optional<dialogueFichier> dialoguePour(const std::filesystem::path& fichier,
                                                        std::wstring& raison);

}  // namespace veltora
