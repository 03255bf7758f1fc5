#pragma once

#include "base/export.h"

#include <string>
#include <string_view>

namespace veltora {

/// The system's own UTF-8, in both directions by 16-bit units: a character above U+FFFF goes out as two
/// sequences of three bytes, and a sequence of up to six bytes that stands for more than 65535 comes in as
/// "?". A byte that begins no sequence is skipped; a truncated or malformed sequence ends the text.
VELTORA_API std::string utf8DepuisTexte(std::wstring_view texte);
VELTORA_API std::wstring texteDepuisUtf8(std::string_view octets);

}  // namespace veltora
