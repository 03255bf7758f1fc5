#pragma once

#include "base/export.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Numbers as people write them and as the system's files do not hold them. They are read as ever; these tell
/// why.
namespace veltora {

/// What is unusual about a word that was expected to be a number and is none: a decimal comma, degrees with
/// minutes and seconds, blanks between thousands.
/// @return French, how to write it, without capital and full stop; empty when it looks like no number at all
VELTORA_API std::wstring raisonNombre(std::wstring_view texte);

/// Whether a number stands in two words, "652 318.42": a head of one to three digits, then three digits.
VELTORA_API bool milliersSepares(std::wstring_view tete, std::wstring_view suite);
/// Whether a line has more words than it should because its numbers are written with blanks between
/// thousands.
VELTORA_API bool milliersSepares(const std::vector<std::wstring>& mots, std::size_t attendus);

/// What is told of such numbers.
inline constexpr const wchar_t* kRaisonMilliers = L"blancs entre les milliers, les écrire sans blanc";

}  // namespace veltora
