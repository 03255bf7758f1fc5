#include "arx/db/dbcurve.h"

#include "arx/db/dbintersect.h"
#include "arx/gi/gigeometry.h"
#include "base/box_index.h"

#include <algorithm>
#include <cmath>

ACRX_DEFINE_MEMBERS(AcDbCurve, AcDbEntity, nullptr, nullptr)

// p  parameter of the curve          t  share of a piece, 0 at its start, 1 at its end
// s  length from the curve's start   a  angle on an arc's circle

namespace {

constexpr double kEndlessParam = 1e300;
constexpr double kOnCurve = 1e-6;     // units: a point this near lies on the curve
constexpr double kParamSlack = 1e-9;  // relative: a parameter this far beyond an end counts as the end
constexpr double kBoxSlack = 1e-9;    // of the coordinates: more than rounding puts a point beside its box

// Where on a curve: the piece and the share of it.
struct Place {
  std::size_t piece = 0;
  double t = 0.0;
};

bool locate(const std::vector<AcGeCurvePiece>& pieces, double param, Place& place) {
  if (pieces.empty() || !std::isfinite(param)) return false;
  const double first = pieces.front().endlessBefore ? -kEndlessParam : pieces.front().startParam;
  const double last = pieces.back().endless ? kEndlessParam : pieces.back().endParam;
  const double size = std::max(std::min(std::fabs(first), 1e9), std::min(std::fabs(last), 1e9));
  const double slack = kParamSlack * std::max(1.0, size);
  if (param < first - slack || param > last + slack) return false;
  param = std::clamp(param, first, last);
  const auto behind =
      std::upper_bound(pieces.begin(), pieces.end(), param,
                       [](double p, const AcGeCurvePiece& piece) { return p < piece.startParam; });
  place.piece = behind == pieces.begin() ? 0 : static_cast<std::size_t>(behind - pieces.begin()) - 1;
  const AcGeCurvePiece& piece = pieces[place.piece];
  const double range = piece.endParam - piece.startParam;
  place.t = range > 0 ? (param - piece.startParam) / range : 0.0;
  return true;
}

struct Nearest : Place {
  double distance = HUGE_VAL;
};

// Takes the place of one piece that is nearest to the point when it is nearer than the best so far; `extend`
// lets the first and the last piece of an open curve go on.
void takeNearer(Nearest& best, const std::vector<AcGeCurvePiece>& pieces, std::size_t i,
                const AcGePoint3d& point, bool extend) {
  const bool before = (extend && i == 0) || pieces[i].endlessBefore;
  const bool after = (extend && i + 1 == pieces.size()) || pieces[i].endless;
  const double t = pieces[i].closest(point, before, after);
  const double distance = pieces[i].pointAt(t).distanceTo(point);
  if (distance < best.distance) best = {{i, t}, distance};
}

// Of the pieces of these numbers; of equally near ones the first.
Nearest nearestOf(const std::vector<AcGeCurvePiece>& pieces, const std::vector<std::size_t>& numbers,
                  const AcGePoint3d& point) {
  Nearest best;
  for (const std::size_t i : numbers) takeNearer(best, pieces, i, point, false);
  return best;
}

Place nearest(const std::vector<AcGeCurvePiece>& pieces, const AcGePoint3d& point, bool extend) {
  Nearest best;
  for (std::size_t i = 0; i < pieces.size(); ++i) takeNearer(best, pieces, i, point, extend);
  return best;
}

double lengthUpTo(const std::vector<AcGeCurvePiece>& pieces, const Place& place) {
  double length = 0;
  for (std::size_t i = 0; i < place.piece; ++i) length += pieces[i].length();
  return length + pieces[place.piece].lengthTo(place.t);
}

}  // namespace

Acad::ErrorStatus AcDbCurve::getStartParam(double& param) const {
  const auto all = pieces();
  if (all.empty()) return Acad::eDegenerateGeometry;
  param = all.front().endlessBefore ? -kEndlessParam : all.front().startParam;
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
  if (all.front().endlessBefore) return Acad::eNotApplicable;
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
  const AcGeCurvePiece& piece = all[place.piece];
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
  for (const AcGeCurvePiece& piece : all) {
    const double length = piece.length();
    total += length;
    if (rest >= 0 && (rest <= length || piece.endless)) {
      param = piece.paramAt(piece.shareAt(rest));
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
  const AcGeCurvePiece& piece = all[place.piece];
  const double range = piece.endParam - piece.startParam;
  derivative = piece.derivativeAt(place.t) * (range > 0 ? 1 / range : 0.0);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbCurve::getArea(double& area) const {
  const auto all = pieces();
  if (all.empty()) return Acad::eDegenerateGeometry;
  if (all.back().endless) return Acad::eNotApplicable;
  const AcGePoint3d& from = all.front().start;  // near: keeps digits far from the origin
  AcGeVector3d sum;
  for (const AcGeCurvePiece& piece : all) {
    sum = sum + (piece.start - from).crossProduct(piece.end - from) * 0.5;
    sum = sum + piece.areaOverChord();
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

void AcDbCurve::subWorldDraw(AcGiWorldDraw& draw) const { draw.geometry().curve(pieces()); }

// ---- AcDbCurveSearch

namespace {

veltora::base::PlaneBox around(double x0, double y0, double x1, double y1, double margin) {
  return {x0 - margin, y0 - margin, x1 + margin, y1 + margin};
}

veltora::base::PlaneBox boxOf(const AcGeCurvePiece& piece) {
  if (piece.endless) return {-HUGE_VAL, -HUGE_VAL, HUGE_VAL, HUGE_VAL};
  AcDbExtents box;
  piece.addToExtents({}, box);
  const AcGePoint3d low = box.minPoint();
  const AcGePoint3d high = box.maxPoint();
  const double size = std::max({std::fabs(low.x), std::fabs(low.y), std::fabs(high.x), std::fabs(high.y)});
  return around(low.x, low.y, high.x, high.y, kBoxSlack * (size + piece.radius));
}

}  // namespace

AcDbCurveSearch::AcDbCurveSearch(const AcDbCurve& curve) : m_pieces(curve.pieces()) {
  std::vector<veltora::base::PlaneBox> boxes;
  boxes.reserve(m_pieces.size());
  for (const AcGeCurvePiece& piece : m_pieces) boxes.push_back(boxOf(piece));
  m_index = std::make_unique<veltora::base::BoxIndex>(boxes);
}

AcDbCurveSearch::~AcDbCurveSearch() = default;

const std::vector<std::size_t>& AcDbCurveSearch::within(double distance, const AcGePoint3d& given) {
  const double slack = kBoxSlack * (std::fabs(given.x) + std::fabs(given.y) + std::fabs(given.z));
  return m_index->touching(around(given.x, given.y, given.x, given.y, distance * (1.0 + kBoxSlack) + slack));
}

bool AcDbCurveSearch::closestWithin(double reach, const AcGePoint3d& given, AcGePoint3d& result) {
  const std::vector<std::size_t>& near = within(reach, given);
  if (near.empty()) return false;
  // A piece that is nearer in space than the best of these is as near in the plan.
  const Nearest bound = nearestOf(m_pieces, near, given);
  const Place place = nearestOf(m_pieces, within(bound.distance, given), given);
  result = m_pieces[place.piece].pointAt(place.t);
  return true;
}

bool AcDbCurveSearch::paramAtPoint(const AcGePoint3d& point, double& param) {
  const std::vector<std::size_t>& near = within(kOnCurve, point);
  if (near.empty()) return false;
  const Nearest place = nearestOf(m_pieces, near, point);
  if (!(place.distance <= kOnCurve)) return false;
  param = m_pieces[place.piece].paramAt(place.t);
  return true;
}
