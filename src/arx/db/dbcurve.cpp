#include "arx/db/dbcurve.h"

#include "arx/db/dbintersect.h"

#include <algorithm>
#include <cmath>

ACRX_DEFINE_MEMBERS(AcDbCurve, AcDbEntity, nullptr, nullptr)

// p  parameter of the curve          t  share of a piece, 0 at its start, 1 at its end
// s  length from the curve's start   a  angle on an arc's circle

namespace {

constexpr double kTurn = 6.283185307179586;
constexpr double kEndlessParam = 1e300;
constexpr double kOnCurve = 1e-6;     // units: a point this near lies on the curve
constexpr double kParamSlack = 1e-9;  // relative: a parameter this far beyond an end counts as the end

// Where on a curve: the piece and the share of it.
struct Place {
  std::size_t piece = 0;
  double t = 0.0;
};

bool locate(const std::vector<AcDbCurvePiece>& pieces, double param, Place& place) {
  if (pieces.empty() || !std::isfinite(param)) return false;
  const double first = pieces.front().startParam;
  const double last = pieces.back().endless ? kEndlessParam : pieces.back().endParam;
  const double slack = kParamSlack * std::max({1.0, std::fabs(first), std::min(std::fabs(last), 1e9)});
  if (param < first - slack || param > last + slack) return false;
  param = std::clamp(param, first, last);
  const auto behind =
      std::upper_bound(pieces.begin(), pieces.end(), param,
                       [](double p, const AcDbCurvePiece& piece) { return p < piece.startParam; });
  place.piece = behind == pieces.begin() ? 0 : static_cast<std::size_t>(behind - pieces.begin()) - 1;
  const AcDbCurvePiece& piece = pieces[place.piece];
  const double range = piece.endParam - piece.startParam;
  place.t = range > 0 ? (param - piece.startParam) / range : 0.0;
  return true;
}

// Nearest place; `extend` lets the first and the last piece of an open curve go on.
Place nearest(const std::vector<AcDbCurvePiece>& pieces, const AcGePoint3d& point, bool extend) {
  Place best;
  double least = HUGE_VAL;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    const bool before = extend && i == 0;
    const bool after = (extend && i + 1 == pieces.size()) || pieces[i].endless;
    const double t = pieces[i].closest(point, before, after);
    const double distance = pieces[i].pointAt(t).distanceTo(point);
    if (distance < least) best = {i, t}, least = distance;
  }
  return best;
}

double lengthUpTo(const std::vector<AcDbCurvePiece>& pieces, const Place& place) {
  double length = 0;
  for (std::size_t i = 0; i < place.piece; ++i) length += pieces[i].length();
  return length + pieces[place.piece].length() * place.t;
}

}  // namespace

double AcDbCurvePiece::length() const { return isArc ? radius * std::fabs(sweep) : start.distanceTo(end); }

AcGePoint3d AcDbCurvePiece::pointAt(double t) const {
  if (t == 0) return start;
  if (t == 1) return end;
  if (!isArc) return start + (end - start) * t;
  const double a = startAngle + sweep * t;
  return center + xAxis * (radius * std::cos(a)) + yAxis * (radius * std::sin(a));
}

double AcDbCurvePiece::closest(const AcGePoint3d& point, bool before, bool after) const {
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

void AcDbCurvePiece::addToExtents(const AcGeMatrix3d& matrix, AcDbExtents& extents) const {
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

Acad::ErrorStatus AcDbCurve::getStartParam(double& param) const {
  const auto all = pieces();
  if (all.empty()) return Acad::eDegenerateGeometry;
  param = all.front().startParam;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getEndParam(double& param) const {
  const auto all = pieces();
  if (all.empty()) return Acad::eDegenerateGeometry;
  param = all.back().endless ? kEndlessParam : all.back().endParam;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getStartPoint(AcGePoint3d& point) const {
  const auto all = pieces();
  if (all.empty()) return Acad::eDegenerateGeometry;
  point = all.front().start;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getEndPoint(AcGePoint3d& point) const {
  const auto all = pieces();
  if (all.empty()) return Acad::eDegenerateGeometry;
  if (all.back().endless) return Acad::eNotApplicable;
  point = all.back().end;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getPointAtParam(double param, AcGePoint3d& point) const {
  const auto all = pieces();
  Place place;
  if (!locate(all, param, place)) return all.empty() ? Acad::eDegenerateGeometry : Acad::eOutOfRange;
  point = all[place.piece].pointAt(place.t);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getParamAtPoint(const AcGePoint3d& point, double& param) const {
  const auto all = pieces();
  if (all.empty()) return Acad::eDegenerateGeometry;
  const Place place = nearest(all, point, false);
  const AcDbCurvePiece& piece = all[place.piece];
  if (!(piece.pointAt(place.t).distanceTo(point) <= kOnCurve)) return Acad::eInvalidInput;
  param = piece.paramAt(place.t);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getDistAtParam(double param, double& dist) const {
  const auto all = pieces();
  Place place;
  if (!locate(all, param, place)) return all.empty() ? Acad::eDegenerateGeometry : Acad::eOutOfRange;
  dist = lengthUpTo(all, place);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getParamAtDist(double dist, double& param) const {
  const auto all = pieces();
  if (all.empty()) return Acad::eDegenerateGeometry;
  double rest = dist;
  double total = 0;
  for (const AcDbCurvePiece& piece : all) {
    const double length = piece.length();
    total += length;
    if (rest >= 0 && (rest <= length || piece.endless)) {
      param = piece.paramAt(length > 0 ? rest / length : 0.0);
      return Acad::eOk;
    }
    rest -= length;
  }
  if (!(dist >= 0) || dist > total * (1 + kParamSlack)) return Acad::eOutOfRange;
  param = all.back().endParam;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getDistAtPoint(const AcGePoint3d& point, double& dist) const {
  double param = 0;
  const Acad::ErrorStatus status = getParamAtPoint(point, param);
  return status == Acad::eOk ? getDistAtParam(param, dist) : status;
}

Acad::ErrorStatus AcDbCurve::getPointAtDist(double dist, AcGePoint3d& point) const {
  double param = 0;
  const Acad::ErrorStatus status = getParamAtDist(dist, param);
  return status == Acad::eOk ? getPointAtParam(param, point) : status;
}

Acad::ErrorStatus AcDbCurve::getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& result,
                                               bool extend) const {
  const auto all = pieces();
  if (all.empty()) return Acad::eDegenerateGeometry;
  const Place place = nearest(all, given, extend && !isClosed());
  result = all[place.piece].pointAt(place.t);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getFirstDeriv(double param, AcGeVector3d& derivative) const {
  const auto all = pieces();
  Place place;
  if (!locate(all, param, place)) return all.empty() ? Acad::eDegenerateGeometry : Acad::eOutOfRange;
  const AcDbCurvePiece& piece = all[place.piece];
  const double range = piece.endParam - piece.startParam;
  derivative = piece.end - piece.start;
  if (piece.isArc) {
    const double a = piece.startAngle + piece.sweep * place.t;
    derivative = (piece.yAxis * std::cos(a) - piece.xAxis * std::sin(a)) * (piece.radius * piece.sweep);
  }
  derivative = derivative * (range > 0 ? 1 / range : 0.0);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getArea(double& area) const {
  const auto all = pieces();
  if (all.empty()) return Acad::eDegenerateGeometry;
  if (all.back().endless) return Acad::eNotApplicable;
  const AcGePoint3d& from = all.front().start;  // near: keeps digits far from the origin
  AcGeVector3d sum;
  for (const AcDbCurvePiece& piece : all) {
    sum = sum + (piece.start - from).crossProduct(piece.end - from) * 0.5;
    if (!piece.isArc) continue;
    const double segment = piece.radius * piece.radius / 2 * (piece.sweep - std::sin(piece.sweep));
    sum = sum + piece.xAxis.crossProduct(piece.yAxis) * segment;
  }
  area = sum.length();
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getOffsetCurves(double, std::vector<AcDbCurve*>&) const {
  return Acad::eNotImplementedYet;
}

Acad::ErrorStatus AcDbCurve::intersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                           AcGePoint3dArray& points) const {
  if (!other) return Acad::eNullObjectPointer;
  const AcDbCurve* second = AcDbCurve::cast(other);
  if (!second) return Acad::eNotImplementedYet;
  acdbIntersect(*this, (type & AcDb::kExtendThis) != 0, *second, (type & AcDb::kExtendArg) != 0, points);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getGeomExtents(AcDbExtents& extents) const {
  AcDbExtents own;
  addExtentsUnder(AcGeMatrix3d(), own);
  if (own.isEmpty()) return Acad::eInvalidExtents;
  extents = own;
  return Acad::eOk;
}

void AcDbCurve::addExtentsUnder(const AcGeMatrix3d& matrix, AcDbExtents& extents) const {
  for (const AcDbCurvePiece& piece : pieces()) {
    if (!piece.endless) piece.addToExtents(matrix, extents);
  }
}
