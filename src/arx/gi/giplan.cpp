#include "arx/gi/giplan.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kChord = 6.283185307179586 / 256.0;
constexpr double kFar = 1e9;

AcGePoint2d flat(const AcGePoint3d& p) { return {p.x, p.y}; }

}  // namespace

void AcGiPlan::curve(std::span<const AcGeCurvePiece> pieces) {
  const AcGeMatrix3d& matrix = toWorld();
  for (const AcGeCurvePiece& piece : pieces) {
    AcGePoint2d from = flat(matrix * piece.start);
    if (!piece.isArc) {
      const bool endless = piece.endless;
      segment(from,
              flat(matrix * (endless ? piece.start + (piece.end - piece.start).normal() * kFar : piece.end)));
      continue;
    }
    // Of a sweep beyond a turn, or none that is a number, no more than a turn is drawn.
    const double sweep = std::abs(piece.sweep) < 7.0 ? std::abs(piece.sweep) : 7.0;
    const int chords = std::max(1, static_cast<int>(std::ceil(sweep / kChord)));
    for (int i = 1; i <= chords; ++i) {
      const AcGePoint2d to = flat(matrix * piece.pointAt(static_cast<double>(i) / chords));
      segment(from, to);
      from = to;
    }
  }
}

void AcGiPlan::area(std::span<const AcGePoint3d> corners) {
  AcDbExtents box;
  for (const AcGePoint3d& corner : corners) box.addPoint(toWorld() * corner);
  if (!box.isEmpty()) filled(box);
}
