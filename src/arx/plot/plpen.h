#pragma once

#include "arx/adesk.h"
#include "arx/ge/gepoint.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

struct AcPlBox;

/// A colour as it is printed, 0 to 255 each.
struct AcPlColor {
  int red = 0;
  int green = 0;
  int blue = 0;
  bool operator==(const AcPlColor&) const = default;
};

/// The sheet that is drawn on, in millimetres.
struct AcPlPaper {
  double width = 297.0;
  double height = 210.0;
  AcPlColor background{255, 255, 255};
  double dotsPerInch = 150.0;  ///< of pictures made of pixels
};

/// How a line is drawn, in millimetres.
struct AcPlStroke {
  AcPlColor color;
  double width = 0.25;
  std::vector<double> dashes;  ///< dash, gap, dash, gap...; none for a whole line
  double phase = 0.0;          ///< length of the pattern that lies before the start
  bool operator==(const AcPlStroke&) const = default;
};

/// A line of text: heights of a capital letter along and above its base line lie at base + along * u + up *
/// v.
struct AcPlText {
  std::string text;  ///< UTF-8, one line
  AcGePoint2d base;
  AcGeVector2d along;
  AcGeVector2d up;
  AcPlColor color;
  const AcPlBox* within = nullptr;  ///< what lies outside is not shown; null for all
};

/// Puts what is drawn into a file format. Places are millimetres from the lower left corner of the paper, y
/// up; they lie within a few sheets of it.
class ARX_API AcPlPen {
public:
  virtual ~AcPlPen() = default;
  /// What follows lies on this layer, UTF-8.
  virtual void layer(const std::string& name) = 0;
  virtual void line(std::span<const AcGePoint2d> points, const AcPlStroke& stroke) = 0;
  /// Between rings, by the even-odd rule.
  virtual void fill(std::span<const std::vector<AcGePoint2d>> rings, const AcPlColor& color) = 0;
  virtual void text(const AcPlText& text) = 0;
  /// What follows shows within this ring alone, by the even-odd rule; on all of the paper for an empty one.
  virtual void clip(std::span<const AcGePoint2d> ring) = 0;
  /// The file. @return false with a reason in French, UTF-8, when it cannot be made
  virtual bool finish(std::string& file, std::string& reason) = 0;
};

/// The share of a letter's size that a capital has in the font of all pens, DejaVu Sans (1493 of 2048 units),
/// whose widths `acdbTextExtents` knows.
inline constexpr double kAcPlCapital = 1493.0 / 2048.0;
