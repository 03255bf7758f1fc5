#pragma once

#include "arx/plot/plpen.h"

#include <algorithm>
#include <functional>
#include <span>
#include <vector>

// Cutting off what lies beyond the paper. Millimetres.

/// A box with its sides along the axes; empty as made.
struct AcPlBox {
  double left = 1e300;
  double right = -1e300;
  double bottom = 1e300;
  double top = -1e300;
  /// The paper and a margin in which cut ends cannot be seen.
  static AcPlBox around(const AcPlPaper& paper, double lineWidth) {
    const double margin = 5.0 + lineWidth;
    return {-margin, paper.width + margin, -margin, paper.height + margin};
  }
  void add(const AcGePoint2d& p) {
    left = std::min(left, p.x), right = std::max(right, p.x);
    bottom = std::min(bottom, p.y), top = std::max(top, p.y);
  }
  [[nodiscard]] bool holds(const AcPlBox& other) const {
    return left <= other.left && other.right <= right && bottom <= other.bottom && other.top <= top;
  }
  /// What both hold; empty when they are apart.
  [[nodiscard]] AcPlBox common(const AcPlBox& other) const {
    return {std::max(left, other.left), std::min(right, other.right), std::max(bottom, other.bottom),
            std::min(top, other.top)};
  }
  [[nodiscard]] bool meets(const AcPlBox& other) const {
    return left <= other.right && other.left <= right && bottom <= other.top && other.bottom <= top;
  }
};

/// The runs of a line of chords within a box, in order. @param run  gets the points and the length that lies
/// before the first of them
ARX_API void acplClipLine(std::span<const AcGePoint2d> points, const AcPlBox& box,
                          const std::function<void(std::span<const AcGePoint2d>, double)>& run);
/// The part of a ring within a box; its edges along the box join what was cut (I. Sutherland, G. Hodgman,
/// Reentrant polygon clipping, 1974).
ARX_API std::vector<AcGePoint2d> acplClipRing(std::span<const AcGePoint2d> ring, const AcPlBox& box);
/// The ring around a line of chords whose width goes evenly from one to the other along its length; mitred at
/// its corners, square at its ends.
ARX_API std::vector<AcGePoint2d> acplWiden(std::span<const AcGePoint2d> points, double startWidth,
                                           double endWidth);
