#include "arx/db/dboffset.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kStep = 1e-4;  // share of a piece along which its direction is taken

AcGeVector2d inPlan(const AcGeVector3d& v) { return {v.x, v.y}; }

/// A piece at its point nearest to a place.
struct Foot {
  double distance = HUGE_VAL;
  AcGePoint3d point;
  AcGeVector2d direction;  ///< unit vector of travel
};

Foot footOf(const AcGeCurvePiece& piece, const AcGePoint3d& place) {
  const double t = piece.closest(place, false, piece.endless);
  Foot foot;
  foot.point = piece.pointAt(t);
  foot.distance = inPlan(place - foot.point).length();
  const double before = std::max(t - kStep, 0.0);
  const double after = piece.endless ? t + kStep : std::min(t + kStep, 1.0);
  foot.direction = inPlan(piece.pointAt(after) - piece.pointAt(before)).normal();
  return foot;
}

}  // namespace

int acdbSideOf(const AcDbCurve& curve, const AcGePoint3d& place) {
  Foot nearest;
  AcGeVector2d direction;
  for (const AcGeCurvePiece& piece : curve.pieces()) {
    const Foot foot = footOf(piece, place);
    const double same = 1e-12 * (std::fabs(place.x) + std::fabs(place.y) + foot.distance);
    if (foot.distance < nearest.distance - same) {
      nearest = foot;
      direction = foot.direction;
    } else if (foot.distance <= nearest.distance + same &&
               inPlan(foot.point - nearest.point).length() <= same) {
      direction = direction + foot.direction;  // the corner of two pieces
    }
  }
  const double side = direction.crossProduct(inPlan(place - nearest.point));
  return side > 0 ? 1 : side < 0 ? -1 : 0;
}

double acdbDistanceTo(const AcDbCurve& curve, const AcGePoint3d& place) {
  AcGePoint3d foot;
  if (curve.getClosestPointTo(place, foot, true) != Acad::eOk) return 0.0;
  return inPlan(place - foot).length();
}

Acad::ErrorStatus acdbOffsetTowards(const AcDbCurve& curve, double distance, const AcGePoint3d& place,
                                    std::vector<std::unique_ptr<AcDbCurve>>& parallels) {
  parallels.clear();
  const int side = acdbSideOf(curve, place);
  Acad::ErrorStatus status = Acad::eInvalidInput;
  if (side == 0 || !(distance > 0)) return status;
  AcGePoint3d foot;
  curve.getClosestPointTo(place, foot);
  for (const double offset : {distance, -distance}) {
    std::vector<AcDbCurve*> made;
    const Acad::ErrorStatus tried = curve.getOffsetCurves(offset, made);
    if (tried == Acad::eNotImplementedYet) return tried;
    std::vector<std::unique_ptr<AcDbCurve>> owned(made.begin(), made.end());
    const bool there =
        tried == Acad::eOk && std::ranges::any_of(owned, [&](const auto& parallel) {
          AcGePoint3d beside;
          return parallel->getClosestPointTo(foot, beside) == Acad::eOk && acdbSideOf(curve, beside) == side;
        });
    if (!there) continue;
    parallels = std::move(owned);
    return Acad::eOk;
  }
  return status;
}
