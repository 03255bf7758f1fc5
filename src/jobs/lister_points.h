#pragma once

#include "base/export.h"

#include <filesystem>
#include <string>
#include <vector>

/// The point tables stored in a drawing file, listed in one call; neither documents nor the
/// installed project take part.
namespace veltora {

/// @param csv  columns parted by semicolons instead of a text for people  @param texte  UTF-8
/// @param defauts what the reader of the drawing mended, UTF-8
/// @return false with `erreur`, French, when the drawing or its stored points cannot be read
VELTORA_API bool listerPoints(const std::filesystem::path& dessin, bool csv, std::string& texte,
                              std::wstring& erreur, std::vector<std::string>& defauts);

}  // namespace veltora
