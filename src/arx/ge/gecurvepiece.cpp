#include "arx/ge/gecurvepiece.h"

#include <cmath>

// t  share of the piece, 0 at its start, 1 at its end     a  angle on the arc's circle

namespace {
constexpr double kTurn = 6.283185307179586;
}

double AcGeCurvePiece::length() const { return isArc ? radius * std::fabs(sweep) : start.distanceTo(end); }

AcGePoint3d AcGeCurvePiece::pointAt(double t) const {
  if (t == 0) return start;
  if (t == 1) return end;
  if (!isArc) return start + (end - start) * t;
  const double a = startAngle + sweep * t;
  return center + xAxis * (radius * std::cos(a)) + yAxis * (radius * std::sin(a));
}

double AcGeCurvePiece::closest(const AcGePoint3d& point, bool before, bool after) const {
  if (!isArc) {
    const AcGeVector3d along = end - start;
    const double square = along.lengthSqrd();
    if (!(square > 0)) return 0.0;
    const double t = along.dotProduct(point - start) / square;
    if (t < 0 && !before) return 0.0;
    return t > 1 && !after ? 1.0 : t;
  }
  const AcGeVector3d out = point - center;
  const double size = std::fabs(sweep);
  const AcGeVector2d flat(out.dotProduct(xAxis), out.dotProduct(yAxis));
  if (!(size > 0) || !(flat.lengthSqrd() > 0)) return 0.0;  // at the centre all points are equally near
  double past = std::fmod(sweep < 0 ? startAngle - flat.angle() : flat.angle() - startAngle, kTurn);
  if (past < 0) past += kTurn;
  if (past <= size || after || before) return past / size;
  return kTurn - past < past - size ? 0.0 : 1.0;
}

void AcGeCurvePiece::addToExtents(const AcGeMatrix3d& matrix, AcDbExtents& extents) const {
  extents.addPoint(matrix * start);
  extents.addPoint(matrix * end);
  if (!isArc) return;
  // A coordinate of the mapped circle is c + x cos a + y sin a: extreme where tan a = y / x, and opposite.
  const AcGeVector3d x = matrix * (xAxis * radius);
  const AcGeVector3d y = matrix * (yAxis * radius);
  const AcGePoint3d c = matrix * center;
  for (const double extreme : {std::atan2(y.x, x.x), std::atan2(y.y, x.y), std::atan2(y.z, x.z)}) {
    for (const double a : {extreme, extreme + kTurn / 2}) {
      double past = std::fmod(sweep < 0 ? startAngle - a : a - startAngle, kTurn);
      if (past < 0) past += kTurn;
      if (past <= std::fabs(sweep)) extents.addPoint(c + x * std::cos(a) + y * std::sin(a));
    }
  }
}
