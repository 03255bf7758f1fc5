#include "arx/gi/giplan.h"

#include "arx/gi/giextents.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kFar = 1e9;

AcGePoint2d flat(const AcGePoint3d& p) { return {p.x, p.y}; }

}  // namespace

bool AcGiSearch::spend() {
  if (m_budget == 0) m_spent = true;
  if (m_budget > 0) --m_budget;
  return !m_spent;
}

const AcDbExtents* AcGiSearch::boxOf(const AcGiDrawable& block) {
  auto found = m_blocks.find(&block);
  if (found == m_blocks.end()) {
    AcGiExtents look;
    look.show(block);
    found = m_blocks.emplace(&block, Measured{look.box(), look.isEndless()}).first;
  }
  return found->second.endless ? nullptr : &found->second.box;
}

bool AcGiPlan::spend() {
  const bool left = m_search.spend();
  if (!left) finish();
  return left;
}

void AcGiPlan::block(const AcGiBlockPlace& place) {
  if (!mayEnter(place.block)) return;
  const AcGeMatrix3d matrix = toWorld() * place.toOuter;
  // Who searches has asked for the box of the whole already.
  if (!references().empty()) {
    if (!spend()) return;
    if (const AcDbExtents* own = m_search.boxOf(place.block)) {
      AcDbExtents box = *own;
      box.transformBy(matrix);
      if (box.isEmpty() || !matters(box)) return;
    }
  }
  enter(place.block, matrix);
}

void AcGiPlan::curve(std::span<const AcGeCurvePiece> pieces) {
  if (!references().empty() && !spend()) return;
  const AcGeMatrix3d& matrix = toWorld();
  for (const AcGeCurvePiece& piece : pieces) {
    const bool straight = !piece.isArc && !piece.bezier;
    const AcGeVector3d far = straight ? (piece.end - piece.start).normal() * kFar : AcGeVector3d();
    AcGePoint2d from = flat(matrix * (piece.endlessBefore ? piece.start - far : piece.start));
    if (straight) {
      segment(from, flat(matrix * (piece.endless ? piece.start + far : piece.end)));
      continue;
    }
    for (const double share : piece.chords()) {
      const AcGePoint2d to = flat(matrix * piece.pointAt(share));
      segment(from, to);
      from = to;
    }
  }
}

void AcGiPlan::area(std::span<const AcGePoint3d> corners) {
  if (!references().empty() && !spend()) return;
  AcDbExtents box;
  for (const AcGePoint3d& corner : corners) box.addPoint(toWorld() * corner);
  if (!box.isEmpty()) filled(box);
}
