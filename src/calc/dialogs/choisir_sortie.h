#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace veltora {

/// Asks for the name of a file to write, and before an existing one is replaced.
/// @param lus  files that what is written is computed from; empty paths are passed over
/// @return nothing when the user gives up or, with a message, names one of these
std::optional<std::wstring> choisirSortie(const wchar_t* filtre, const wchar_t* extension,
                                          const std::vector<std::filesystem::path>& lus);

}  // namespace veltora
