#pragma once

#include <string_view>

namespace veltora {

/// True when the bytes are one element with matched, closed tags and quoted attributes, nested at most
/// `profondeurMax` deep, with comments, CDATA sections and instructions around and in it. Read before the
/// library sees them, whose parser recurses once a level. Entities and characters of texts are not looked at.
bool estBienForme(std::string_view xml, std::size_t profondeurMax);

}  // namespace veltora
