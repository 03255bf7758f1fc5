#pragma once

#include "base/export.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace veltora {

/// What a line of these files may hold, in characters; the rest is cut off.
inline constexpr std::size_t kLongueurLigneObs = 1024;

/// Tokens of a line that gives a known station.
inline constexpr std::size_t kJetonsStation = 10;

/// Splits a line of a data file (.obs, and the network files) into its tokens. An empty line, or one whose
/// first character is "*", has none. Separators are blank, tab, ":" and "="; a double quote ends the token
/// before it and begins one that runs to the next double quote, or to the end of the line, separators
/// included. Empty tokens are dropped, quoted ones too.
/// @param ligne without its line end
VELTORA_API std::vector<std::wstring> decouperLigneObs(std::wstring_view ligne);

}  // namespace veltora
