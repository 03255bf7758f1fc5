#pragma once

#include "arx/db/dbcolor.h"
#include "arx/db/dbid.h"
#include "arx/ge/gepoint.h"

#include <optional>
#include <string_view>
#include <vector>

/// From one base line to the next at spacing 1, of the height.
inline constexpr double kLinePitch = 5.0 / 3.0;

/// A stretch of a text of several lines that has one look. Places are told from the upper left corner of the
/// text's box, y up.
struct AcDbMTextRun {
  AcString text;
  AcGePoint2d base;                ///< where its base line starts
  double height = 0.0;             ///< of its capitals
  double widthFactor = 1.0;        ///< beside that of the style
  double slant = 0.0;              ///< tangent of its angle
  std::optional<AcCmColor> color;  ///< none for that of the entity
};

/// A line that belongs to a text: under, over or through it, or the bar of a fraction.
struct AcDbMTextStroke {
  AcGePoint2d from;
  AcGePoint2d to;
  std::optional<AcCmColor> color;
};

/// How a text of several lines is set.
struct AcDbMTextLayout {
  double width = 0.0;  ///< of the widest line
  double height = 0.0;
  std::vector<AcString> lines;  ///< as read
  std::vector<AcDbMTextRun> runs;
  std::vector<AcDbMTextStroke> strokes;
};

/// What a text is set with.
struct AcDbMTextFrame {
  AcDbObjectId style;
  double height = 0.0;   ///< of capitals; 0 for that of the style
  double column = 0.0;   ///< width at which lines are broken between words; 0 for none
  double spacing = 1.0;  ///< factor of the distance between lines, above 0
  int across = 0;        ///< lines begin at the left, lie in the middle, end at the right: 0, 1, 2
};

/// Sets a text with its formatting codes: \\P, \\~, \\U+, groups in braces, height \\H, width \\W, slant \\Q
/// and that of fonts \\f, colours \\C and \\c, lines \\L \\O \\K, fractions \\S with their alignment \\A,
/// alignment of paragraphs \\pq. Fonts, tracking, indents and tabulators stay without effect. From one base
/// line to the next are 5/3 of the height of the lower line's tallest letter. A word longer than the column
/// has its own line.
AcDbMTextLayout acdbLayOutText(std::wstring_view contents, const AcDbMTextFrame& frame);
