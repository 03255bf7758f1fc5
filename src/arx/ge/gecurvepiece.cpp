#include "arx/ge/gecurvepiece.h"

#include "arx/ge/geangle.h"

#include <algorithm>
#include <boost/math/quadrature/gauss.hpp>
#include <cmath>

// t  share of the piece, 0 at its start, 1 at its end     a  angle on the arc's circle, parameter of an
// ellipse

namespace {

constexpr double kChord = kTurn / 256.0;  // of an arc
constexpr double kSag = 1e-4;             // of a spline's stretch: share of its size that a chord may be off
constexpr int kDeepestChord = 8;          // halvings into chords
constexpr int kDeepestLength = 20;        // halvings when a length is summed
constexpr int kNearSteps = 60;            // of Newton's rule, halving where it leaves the range
constexpr double kLengthError = 1e-13;    // share of the length

void cutIntoChords(const AcGeBezierCurve3d& curve, double from, double range, double slack, int depth,
                   std::vector<double>& shares) {
  if (depth == kDeepestChord || curve.sag() <= slack) {
    shares.push_back(from + range);
    return;
  }
  const auto [left, right] = curve.halves();
  cutIntoChords(left, from, range / 2, slack, depth + 1, shares);
  cutIntoChords(right, from + range / 2, range / 2, slack, depth + 1, shares);
}

template <class Speed>
double gauss(const Speed& speed, double from, double to) {
  return boost::math::quadrature::gauss<double, 15>::integrate(speed, from, to);
}

// Halves a range until its halves sum up to it.
template <class Speed>
double summed(const Speed& speed, double from, double to, double whole, double error, int depth) {
  const double middle = (from + to) / 2;
  const double left = gauss(speed, from, middle);
  const double right = gauss(speed, middle, to);
  if (depth == kDeepestLength || !(std::fabs(left + right - whole) > error)) return left + right;
  return summed(speed, from, middle, left, error, depth + 1) +
         summed(speed, middle, to, right, error, depth + 1);
}

}  // namespace

double AcGeCurvePiece::lengthTo(double t) const {
  if (isEven()) return (isArc ? radius * std::fabs(sweep) : start.distanceTo(end)) * t;
  return lengthBetween(0.0, t);
}

// Quarter by quarter: the speed of a flat ellipse has a corner at the ends of its long axis.
double AcGeCurvePiece::lengthBetween(double from, double to) const {
  const auto speed = [this](double t) { return derivativeAt(t).length(); };
  const double quarters = bezier ? 1.0 : std::clamp(std::fabs(sweep) * 4 / kTurn, 1.0, 8.0);
  const double first = bezier ? 0.0 : startAngle * 4 / kTurn;  // axes lie at whole numbers
  const double step = sweep < 0 ? -quarters : quarters;
  double sum = 0;
  double at = from;
  while (at < to) {
    double next = to;
    if (!bezier) {
      const double place = first + step * at + (step > 0 ? 1e-9 : -1e-9);
      next = std::min(to, ((step > 0 ? std::floor(place) + 1 : std::ceil(place) - 1) - first) / step);
    }
    sum += summed(speed, at, next, gauss(speed, at, next), kLengthError * gauss(speed, 0.0, 1.0), 0);
    at = next;
  }
  return sum;
}

double AcGeCurvePiece::shareAt(double wanted) const {
  const double whole = length();
  if (isEven()) return whole > 0 ? wanted / whole : 0.0;
  if (!(wanted > 0) || !(whole > 0)) return 0.0;
  if (wanted >= whole) return 1.0;
  double low = 0, high = 1;
  double t = wanted / whole;
  double reached = lengthTo(t);
  for (int i = 0; i < kNearSteps; ++i) {
    const double off = reached - wanted;
    (off > 0 ? high : low) = t;
    const double speed = derivativeAt(t).length();
    const double step = speed > 0 ? t - off / speed : low;
    const double next = step > low && step < high ? step : (low + high) / 2;
    if (std::fabs(next - t) < 1e-16) break;
    reached += next > t ? lengthBetween(t, next) : -lengthBetween(next, t);
    t = next;
  }
  return t;
}

AcGePoint3d AcGeCurvePiece::pointAt(double t) const {
  if (t == 0) return start;
  if (t == 1) return end;
  if (bezier) return bezier->pointAt(t);
  if (!isArc) return start + (end - start) * t;
  const double a = startAngle + sweep * t;
  return center + xAxis * (radius * std::cos(a)) + yAxis * (radius * ratio * std::sin(a));
}

AcGeVector3d AcGeCurvePiece::derivativeAt(double t) const {
  if (bezier) return bezier->jetAt(t).first;
  if (!isArc) return end - start;
  const double a = startAngle + sweep * t;
  return (yAxis * (ratio * std::cos(a)) - xAxis * std::sin(a)) * (radius * sweep);
}

// Share of an angle; beyond the ends the nearer end, unless the arc is taken as the whole turn.
double AcGeCurvePiece::angleShare(const AcGeVector2d& direction, bool whole) const {
  const double size = std::fabs(sweep);
  if (!(size > 0) || !(direction.lengthSqrd() > 0)) return 0.0;
  double past = std::fmod(sweep < 0 ? startAngle - direction.angle() : direction.angle() - startAngle, kTurn);
  if (past < 0) past += kTurn;
  if (past <= size || whole) return past / size;
  return kTurn - past < past - size ? 0.0 : 1.0;
}

double AcGeCurvePiece::closest(const AcGePoint3d& point, bool before, bool after) const {
  if (bezier) return bezier->closest(point);
  if (!isArc) {
    const AcGeVector3d along = end - start;
    const double square = along.lengthSqrd();
    if (!(square > 0)) return 0.0;
    const double t = along.dotProduct(point - start) / square;
    if (t < 0 && !before) return 0.0;
    return t > 1 && !after ? 1.0 : t;
  }
  const AcGeVector3d out = point - center;
  if (ratio == 1.0) {  // at the centre all points are equally near
    return angleShare({out.dotProduct(xAxis), out.dotProduct(yAxis)}, before || after);
  }
  return closestParameter(point, before || after);
}

// Of an ellipse. The parameter comes from that of the rational quarter, which keeps its digits where the
// angle of the point loses them: on flat ellipses far from the origin.
double AcGeCurvePiece::closestParameter(const AcGePoint3d& point, bool whole) const {
  const std::vector<AcGeBezierCurve3d> parts = beziers(whole);
  const double turn = std::clamp(sweep, -kTurn, kTurn);
  const double each = (whole ? std::copysign(kTurn, turn) : turn) / static_cast<double>(parts.size());
  double least = HUGE_VAL;
  double share = 0;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const double s = parts[i].closest(point);
    const double distance = parts[i].pointAt(s).distanceTo(point);
    if (!(distance < least)) continue;
    least = distance;
    // On the unit circle about the middle of the part, with the corners (cos h, -+ sin h) and 1 / cos h.
    const double h = each / 2;
    const double off =
        std::atan2(std::sin(h) * (2 * s - 1), 2 * s * (1 - s) + std::cos(h) * (1 - 2 * s * (1 - s)));
    const double past = each * (static_cast<double>(i) + 0.5) + off;
    share = s == 0 ? each * static_cast<double>(i) / turn
                   : (s == 1 ? each * static_cast<double>(i + 1) : past) / turn;
  }
  return share;
}

AcGeVector3d AcGeCurvePiece::areaOverChord() const {
  if (bezier) return bezier->doubleAreaOverChord() * 0.5;
  if (!isArc) return {};
  const double segment = radius * radius / 2 * (sweep - std::sin(sweep));
  return xAxis.crossProduct(yAxis) * (segment * ratio);
}

std::vector<double> AcGeCurvePiece::chords() const {
  std::vector<double> shares;
  if (bezier) {
    const AcDbExtents hull = bezier->hull();
    const double slack = kSag * hull.minPoint().distanceTo(hull.maxPoint());
    cutIntoChords(*bezier, 0.0, 1.0, slack, 0, shares);
    return shares;
  }
  // Of a sweep beyond a turn, or none that is a number, no more than a turn is drawn.
  const double size = std::fabs(sweep) < 7.0 ? std::fabs(sweep) : 7.0;
  const int count = isArc ? std::max(1, static_cast<int>(std::ceil(size / kChord))) : 1;
  for (int i = 1; i <= count; ++i) shares.push_back(static_cast<double>(i) / count);
  return shares;
}

std::vector<AcGeBezierCurve3d> AcGeCurvePiece::beziers(bool whole) const {
  if (bezier) return {*bezier};
  if (!isArc) return {AcGeBezierCurve3d::line(start, end)};
  const double turn = std::clamp(sweep, -kTurn, kTurn);
  const double all = whole ? (turn < 0 ? -kTurn : kTurn) : turn;
  const int parts = static_cast<int>(std::clamp(std::ceil(std::fabs(all) * 4 / kTurn), 1.0, 4.0));
  std::vector<AcGeBezierCurve3d> result;
  for (int i = 0; i < parts; ++i)
    result.push_back(AcGeBezierCurve3d::conicArc(center, xAxis * radius, yAxis * (radius * ratio),
                                                 startAngle + all * i / parts, all / parts));
  return result;
}

void AcGeCurvePiece::addToExtents(const AcGeMatrix3d& matrix, AcDbExtents& extents) const {
  extents.addPoint(matrix * start);
  extents.addPoint(matrix * end);
  if (bezier) return bezier->addToExtents(matrix, extents);
  if (!isArc) return;
  // A coordinate of the mapped arc is c + x cos a + y sin a: extreme where tan a = y / x, and opposite.
  const AcGeVector3d x = matrix * (xAxis * radius);
  const AcGeVector3d y = matrix * (yAxis * (radius * ratio));
  const AcGePoint3d c = matrix * center;
  for (const double extreme : {std::atan2(y.x, x.x), std::atan2(y.y, x.y), std::atan2(y.z, x.z)}) {
    for (const double a : {extreme, extreme + kTurn / 2}) {
      double past = std::fmod(sweep < 0 ? startAngle - a : a - startAngle, kTurn);
      if (past < 0) past += kTurn;
      if (past <= std::fabs(sweep)) extents.addPoint(c + x * std::cos(a) + y * std::sin(a));
    }
  }
}
