#pragma once

#include "arx/db/dbid.h"

#include <string>
#include <string_view>
#include <vector>

/// Size of a text at rotation 0, measured from the start of its base line. The drawing program has no fonts:
/// every caller measures with this estimate. Characters are as wide as in a common sans serif (DejaVu Sans),
/// by a table; one that the table lacks is as wide as the height; all times the width factor. Control
/// sequences
/// (%%d, %%c, %%p, %%%, %%nnn) count as the character that they show, %%u and %%o as none. Letters with a
/// descender (g j p q y Q , ;) reach 0.3 of the height below the base line.
struct AcDbTextSize {
  double width = 0.0;
  double height = 0.0;   ///< above the base line
  double descent = 0.0;  ///< below it, not negative
};
/// @param height of a capital letter; negative or not finite counts as 0
ARX_API AcDbTextSize acdbTextExtents(std::wstring_view text, double height, double widthFactor = 1.0);
/// The text as it is shown: control sequences resolved.
ARX_API std::wstring acdbShownText(std::wstring_view text);
/// The lines that control sequences draw along a text: %%u under it, %%o over it, %%k through it, until they
/// stand there again.
struct AcDbTextStroke {
  double from = 0.0;  ///< in widths of the text at height and width factor 1, as `acdbTextExtents` gives them
  double to = 0.0;
  double v = 0.0;  ///< above the base line, in heights
};
ARX_API std::vector<AcDbTextStroke> acdbTextStrokes(std::wstring_view text);
inline constexpr double kAcDbUnderline = -0.2;  ///< above the base line, in heights; likewise the next
inline constexpr double kAcDbOverline = 1.2;
inline constexpr double kAcDbStrike = 0.45;
/// With the height and width factor of a text style where the arguments are 0.
ARX_API AcDbTextSize acdbTextExtents(std::wstring_view text, AcDbObjectId style, double height,
                                     double widthFactor);
