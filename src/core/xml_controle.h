#pragma once

#include <string_view>

namespace veltora {

/// The beginning of the bytes that the library may be given: elements with matched, closed tags, nested at
/// most `profondeurMax` deep, with comments, CDATA sections and instructions around and in them. Empty when
/// there is no whole element. Read before the library sees them, whose parser recurses once a level; it
/// ignores what stands behind. Attributes without quotes or blanks between them pass, since the library reads
/// them. Entities and characters of texts are not looked at.
std::string_view partieLisible(std::string_view xml, std::size_t profondeurMax);

}  // namespace veltora
