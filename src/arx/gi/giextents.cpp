#include "arx/gi/giextents.h"

#include <utility>

namespace {

constexpr std::size_t kDeepestMeasured = 200;  // blocks within blocks; what is deeper is not measured
constexpr std::size_t kFewParts = 1000;        // of a nested block that is measured exactly each time

}  // namespace

AcGiExtents::AcGiExtents(const AcGeMatrix3d& matrix) : AcGiGeometry(matrix, kDeepestMeasured) {}

void AcGiExtents::curve(std::span<const AcGeCurvePiece> pieces) {
  for (const AcGeCurvePiece& piece : pieces) {
    m_endless = m_endless || piece.endless;
    if (!piece.endless) piece.addToExtents(toWorld(), m_box);
  }
}

void AcGiExtents::area(std::span<const AcGePoint3d> corners) {
  for (const AcGePoint3d& corner : corners) m_box.addPoint(toWorld() * corner);
}

void AcGiExtents::block(const AcGiBlockPlace& place) {
  if (!mayEnter(place.block)) return;
  add(place, toWorld() * place.toOuter);
  if (!place.repeated) return;
  for (const AcGeVector3d& step :
       {place.toLastColumn, place.toLastRow, place.toLastColumn + place.toLastRow}) {
    add(place, toWorld() * AcGeMatrix3d::translation(step) * place.toOuter);
  }
}

void AcGiExtents::add(const AcGiBlockPlace& place, const AcGeMatrix3d& matrix) {
  const std::size_t depth = references().size();
  if (depth == 0 || (depth == 1 && place.parts <= kFewParts)) return enter(place.block, matrix);
  if (!m_boxes.contains(&place.block)) {
    const AcDbExtents outer = std::exchange(m_box, {});
    enter(place.block, AcGeMatrix3d());
    m_boxes[&place.block] = std::exchange(m_box, outer);
  }
  AcDbExtents own = m_boxes[&place.block];
  own.transformBy(matrix);
  m_box.addExt(own);
}
