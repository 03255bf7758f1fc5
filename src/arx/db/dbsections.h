#pragma once

#include "arx/db/dxftags.h"

#include <algorithm>
#include <span>
#include <string_view>

/// Offers the numbers of one section to a taker before an object is made of them: the groups behind the
/// marker, all groups where there is none.
/// @param takes  (code, value) -> whether the group has a meaning
/// @return false when a group of a meaning is no number, or another object lies in the section (101)
template <class Takes>
bool acdbTakeNumbers(std::span<const DxfTag> tags, std::string_view marker, Takes takes) {
  const bool marked = std::ranges::any_of(tags, [](const DxfTag& tag) { return tag.code == 100; });
  bool within = !marked;
  for (const DxfTag& tag : tags) {
    if (tag.code == 100) {
      within = tag.value == marker;
    } else if (within) {
      double value = 0.0;
      if (tag.code == 101) return false;
      const bool number = dxfParseReal(tag.value, value);
      if (takes(tag.code, number ? value : 0.0) && !number) return false;
    }
  }
  return true;
}
