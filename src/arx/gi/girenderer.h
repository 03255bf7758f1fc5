#pragma once

#include "arx/gi/gigeometry.h"

#include <string_view>

class AcCmColor;

/// A line of text as it is drawn: a place at (u, v), in heights of a capital letter along and above the base
/// line, lies at base + along * u + up * v.
struct AcGiTextLine {
  std::wstring_view text;  ///< control sequences (%%d) included
  AcGePoint3d base;
  AcGeVector3d along;  ///< width factor and mirroring included
  AcGeVector3d up;     ///< slant included
};

/// Takes in what is drawn, and not only where it lies: texts as texts, fills, edges. What looks the same to
/// others and to a renderer (curves, blocks) comes by the functions of the base.
class ARX_API AcGiRenderer : public AcGiGeometry {
public:
  [[nodiscard]] AcGiRenderer* renderer() final { return this; }
  /// Areas are what things cover: a renderer gets what is drawn there instead.
  void area(std::span<const AcGePoint3d>) final {}

  /// What is drawn now has a look that is not known.
  virtual void unknown() = 0;
  virtual void textLine(const AcGiTextLine& line) = 0;
  /// The colour of what follows, in place of that of what is drawn, which null gives back.
  virtual void setColor(const AcCmColor* color) = 0;
  /// A point as drawn thing.
  virtual void dot(const AcGePoint3d& place) = 0;
  /// Straight edges, never dashed.
  virtual void edges(std::span<const AcGePoint3d> points) = 0;
  /// Filled between its rings, by the even-odd rule.
  virtual void polygon(std::span<const std::vector<AcGePoint3d>> rings) = 0;
  /// What was drawn before is hidden within this ring.
  virtual void mask(std::span<const AcGePoint3d> ring) = 0;
  /// A curve with a width at the start and the end of each piece.
  virtual void wideCurve(std::span<const AcGeCurvePiece> pieces,
                         std::span<const std::pair<double, double>> widths) = 0;
};
