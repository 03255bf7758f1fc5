#include "arx/db/dbintersect.h"

#include "arx/ge/gearc2d.h"

#include <algorithm>
#include <cmath>

// Two straight pieces meet where they come nearest to each other. A straight piece meets an arc in the arc's
// plane: at most two points when it lies in the plane, else where it passes through. Two arcs of one plane
// meet as plane circles; of two planes, on the line in which the planes cut.

namespace {

constexpr double kMeet = 1e-9;       // units: farther apart is no meeting
constexpr double kRounding = 8e-15;  // share of the coordinates' size that rounding may cost
constexpr double kParallel = 1e-12;  // sine of the angle between directions that do not meet

// A piece with what the intersection may do beyond its ends.
struct Operand {
  AcGeCurvePiece piece;
  bool before = false;
  bool after = false;

  [[nodiscard]] bool holds(const AcGePoint3d& point, double tol) const {
    return piece.pointAt(piece.closest(point, before, after)).distanceTo(point) <= tol;
  }
  [[nodiscard]] AcGeVector3d normal() const { return piece.xAxis.crossProduct(piece.yAxis); }
  [[nodiscard]] bool isOpenEnded() const { return before || after; }
};

std::vector<Operand> operandsOf(const AcDbCurve& curve, bool extend) {
  std::vector<AcGeCurvePiece> pieces = curve.pieces();
  const bool open = extend && !curve.isClosed();
  std::vector<Operand> operands;
  operands.reserve(pieces.size());
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    const bool endless = pieces[i].endless;
    operands.push_back({pieces[i], open && i == 0, endless || (open && i + 1 == pieces.size())});
  }
  return operands;
}

double sizeOf(const AcGeCurvePiece& piece) {
  double size = 0;
  for (const AcGePoint3d& p : {piece.start, piece.end}) {
    size = std::max({size, std::fabs(p.x), std::fabs(p.y), std::fabs(p.z)});
  }
  return size;
}

bool apart(const AcDbExtents& a, const AcDbExtents& b, double tol) {
  const AcGePoint3d &al = a.minPoint(), &ah = a.maxPoint(), &bl = b.minPoint(), &bh = b.maxPoint();
  return al.x > bh.x + tol || bl.x > ah.x + tol || al.y > bh.y + tol || bl.y > ah.y + tol ||
         al.z > bh.z + tol || bl.z > ah.z + tol;
}

class Meeting {
public:
  Meeting(const Operand& first, const Operand& second, double tol, AcGePoint3dArray& points)
      : m_first(first), m_second(second), m_tol(tol), m_points(points) {}

  void find() {
    const bool firstArc = m_first.piece.isArc;
    const bool secondArc = m_second.piece.isArc;
    if (firstArc && secondArc) return arcs();
    if (firstArc) return lineAndArc(m_second.piece, m_first);
    if (secondArc) return lineAndArc(m_first.piece, m_second);
    lines();
  }

private:
  void offer(const AcGePoint3d& point) {
    if (!m_first.holds(point, m_tol) || !m_second.holds(point, m_tol)) return;
    const auto same = [&](const AcGePoint3d& other) { return other.distanceTo(point) <= 2 * m_tol; };
    if (std::none_of(m_points.begin(), m_points.end(), same)) m_points.push_back(point);
  }

  void lines() {
    const AcGeVector3d u = m_first.piece.end - m_first.piece.start;
    const AcGeVector3d v = m_second.piece.end - m_second.piece.start;
    const AcGeVector3d w = m_second.piece.start - m_first.piece.start;
    const AcGeVector3d cross = u.crossProduct(v);
    const double square = cross.lengthSqrd();
    // Directions that differ by less than the tolerance over the shorter piece are those of parallel lines.
    const double shorter = std::min(u.length(), v.length());
    const double sine = std::max(kParallel, m_tol / shorter);
    if (!(shorter > 0) || !(square > sine * sine * u.lengthSqrd() * v.lengthSqrd())) return;
    offer(m_first.piece.start + u * (w.crossProduct(v).dotProduct(cross) / square));
  }

  // Plane coordinates about the centre of an arc, and back.
  static AcGePoint2d flat(const AcGeCurvePiece& arc, const AcGePoint3d& point) {
    const AcGeVector3d out = point - arc.center;
    return {out.dotProduct(arc.xAxis), out.dotProduct(arc.yAxis)};
  }
  static AcGePoint3d lift(const AcGeCurvePiece& arc, const AcGePoint2d& point) {
    return arc.center + arc.xAxis * point.x + arc.yAxis * point.y;
  }

  void onCircle(const AcGePoint3d& from, const AcGePoint3d& to, const AcGeCurvePiece& arc) {
    AcGePoint2d found[2];
    const AcGeCircArc2d circle({0, 0}, arc.radius);
    const int count = circle.intersectWith(AcGeLine2d(flat(arc, from), flat(arc, to)), found, {m_tol, 1e-10});
    for (int i = 0; i < count; ++i) offer(lift(arc, found[i]));
  }

  void lineAndArc(const AcGeCurvePiece& line, const Operand& arc) {
    const AcGeVector3d up = arc.normal();
    const double h0 = up.dotProduct(line.start - arc.piece.center);
    const double h1 = up.dotProduct(line.end - arc.piece.center);
    if (std::fabs(h0) <= m_tol && std::fabs(h1) <= m_tol) return onCircle(line.start, line.end, arc.piece);
    if (h0 != h1) offer(line.start + (line.end - line.start) * (h0 / (h0 - h1)));
  }

  void arcs() {
    const AcGeCurvePiece& a = m_first.piece;
    const AcGeCurvePiece& b = m_second.piece;
    const AcGeVector3d na = m_first.normal();
    const AcGeVector3d nb = m_second.normal();
    const AcGeVector3d cut = na.crossProduct(nb);
    if (cut.length() > kParallel) {
      // The line common to both planes: from the foot of a's centre along `cut`.
      const AcGeVector3d across = cut.crossProduct(na).normal();
      const double slope = across.dotProduct(nb);
      const AcGePoint3d foot = a.center + across * (nb.dotProduct(b.center - a.center) / slope);
      return onCircle(foot, foot + cut.normal(), a);
    }
    if (std::fabs(na.dotProduct(b.center - a.center)) > m_tol) return;
    AcGePoint2d found[2];
    const AcGeCircArc2d mine({0, 0}, a.radius);
    const int count = mine.intersectWith(AcGeCircArc2d(flat(a, b.center), b.radius), found, {m_tol, 1e-10});
    for (int i = 0; i < count; ++i) offer(lift(a, found[i]));
  }

  const Operand& m_first;
  const Operand& m_second;
  double m_tol;
  AcGePoint3dArray& m_points;
};

}  // namespace

void acdbIntersect(const AcDbCurve& first, bool extendFirst, const AcDbCurve& second, bool extendSecond,
                   AcGePoint3dArray& points) {
  const std::vector<Operand> mine = operandsOf(first, extendFirst);
  const std::vector<Operand> theirs = operandsOf(second, extendSecond);
  std::vector<AcDbExtents> boxes(theirs.size());
  for (std::size_t i = 0; i < theirs.size(); ++i) theirs[i].piece.addToExtents(AcGeMatrix3d(), boxes[i]);
  for (const Operand& a : mine) {
    AcDbExtents box;
    a.piece.addToExtents(AcGeMatrix3d(), box);
    for (std::size_t i = 0; i < theirs.size(); ++i) {
      const double tol = kMeet + kRounding * std::max(sizeOf(a.piece), sizeOf(theirs[i].piece));
      const bool bounded = !a.isOpenEnded() && !theirs[i].isOpenEnded();
      if (!bounded || !apart(box, boxes[i], tol)) Meeting(a, theirs[i], tol, points).find();
    }
  }
}
