#pragma once

#include <filesystem>
#include <string>

namespace veltora {

class htmlDocument;

/// Writes the report of a job without a dialog: the Word form when the name ends in
/// ".doc", nothing for an empty path.
/// @return false with the reason, in French, in `erreur`
bool ecrireRapport(htmlDocument& rapport, const std::filesystem::path& chemin, std::wstring& erreur);
/// Writes bytes, whole or not at all; nothing for an empty path. @return as `ecrireRapport`
bool ecrireOctets(const std::string& octets, const std::filesystem::path& chemin, std::wstring& erreur);

}  // namespace veltora
