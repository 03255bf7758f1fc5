#pragma once

#include "arx/db/dbfiler.h"
#include "arx/ge/gepoint.h"

#include <vector>

class AcDbKeptPen;
class AcGiRenderer;

/// A hatch as its groups give it, in its own plane.
struct AcDbHatchLook {
  /// A family of parallel lines: each passes `base` plus a multiple of `offset`.
  struct Lines {
    double angle = 0.0;  ///< radians
    AcGePoint2d base;
    AcGeVector2d offset;
    std::vector<double> dashes;  ///< negative for gaps; none for whole lines
  };
  double elevation = 0.0;
  AcGeVector3d normal = AcGeVector3d::kZAxis;
  bool solid = false;
  std::vector<std::vector<AcGePoint2d>> rings;
  std::vector<Lines> families;

  /// From the groups of the section AcDbHatch. Curved edges become chords; what is no number ends the
  /// reading.
  explicit AcDbHatchLook(const DxfTagText& tags);
  /// Fills the rings or draws the lines in them. A family of more than 20,000 lines, which nobody could tell
  /// from a fill, is left out. One that asks where things lie gets the rings.
  void draw(const AcDbKeptPen& pen) const;

private:
  void drawLines(AcGiRenderer& renderer, const Lines& lines) const;
};
