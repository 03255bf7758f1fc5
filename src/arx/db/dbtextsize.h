#pragma once

#include "arx/db/dbid.h"

#include <string_view>

/// Size of a text at rotation 0, measured from the start of its base line. The drawing program has no fonts:
/// every caller measures with this rule. A character is 0.9 of the height wide (a space too, the last one
/// without its gap of 0.2), times the width factor; control sequences (%%d, %%c, %%p, %%nnn) count as one
/// character, %%u and %%o as none. Letters with a descender (g j p q y Q , ;) reach 0.3 of the height below
/// the base line.
struct AcDbTextSize {
  double width = 0.0;
  double height = 0.0;   ///< above the base line
  double descent = 0.0;  ///< below it, not negative
};
/// @param height of a capital letter; negative or not finite counts as 0
ARX_API AcDbTextSize acdbTextExtents(std::wstring_view text, double height, double widthFactor = 1.0);
/// With the height and width factor of a text style where the arguments are 0.
ARX_API AcDbTextSize acdbTextExtents(std::wstring_view text, AcDbObjectId style, double height,
                                     double widthFactor);
