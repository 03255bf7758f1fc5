#include "arx/db/dbintersect.h"

#include "arx/ge/geangle.h"
#include "arx/ge/gearc2d.h"
#include "arx/ge/gebeziermeet.h"
#include "base/box_index.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_map>

// Two straight pieces meet where they come nearest to each other; on one line, they have the ends in common
// that lie on both. A straight piece meets an arc in the arc's plane: at most two points when it lies in the
// plane, else where it passes through. Two arcs of one plane meet as plane circles; of two planes, on the
// line in which the planes cut; two of one circle have ends in common. Ellipses and splines meet all others
// as Bezier curves.

namespace {

constexpr double kMeet = 1e-9;       // units: farther apart is no meeting
constexpr double kRounding = 8e-15;  // share of the coordinates' size that rounding may cost
constexpr double kParallel = 1e-12;  // sine of the angle between directions that do not meet

double sizeOf(const AcGePoint3d& p) { return std::max({std::fabs(p.x), std::fabs(p.y), std::fabs(p.z)}); }
double sizeOf(const AcGeCurvePiece& piece) { return std::max(sizeOf(piece.start), sizeOf(piece.end)); }

// A piece with what the intersection may do beyond its ends.
struct Operand {
  AcGeCurvePiece piece;
  bool before = false;
  bool after = false;
  bool startsCurve = true;  // of a spline's stretch: an end of the spline, not of a neighbour
  bool endsCurve = true;
  std::vector<AcGeBezierCurve3d> beziers;  // of an ellipse or a spline

  [[nodiscard]] AcGePoint3d nearest(const AcGePoint3d& point) const {
    return piece.pointAt(piece.closest(point, before, after));
  }
  [[nodiscard]] bool holds(const AcGePoint3d& point, double tol) const {
    return nearest(point).distanceTo(point) <= tol;
  }
  [[nodiscard]] AcGeVector3d normal() const { return piece.xAxis.crossProduct(piece.yAxis); }
  [[nodiscard]] bool isOpenEnded() const { return before || after; }
  [[nodiscard]] bool isGeneral() const { return !beziers.empty(); }
  /// The ends that a stretch in common may have: none where the piece goes on.
  template <class Work>
  void forEnds(Work work) const {
    const bool arc = piece.isArc && (isOpenEnded() || std::fabs(piece.sweep) >= kTurn);
    if (!before && !arc && startsCurve) work(piece.start);
    if (!after && !arc && endsCurve) work(piece.end);
  }
};

std::vector<Operand> operandsOf(const AcDbCurve& curve, bool extend) {
  const std::vector<AcGeCurvePiece> pieces = curve.pieces();
  const bool closed = curve.isClosed();
  const bool open = extend && !closed;
  std::vector<Operand> operands;
  operands.reserve(pieces.size());
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    Operand next{pieces[i],
                 pieces[i].endlessBefore || (open && i == 0),
                 pieces[i].endless || (open && i + 1 == pieces.size()),
                 true,
                 true,
                 {}};
    if (pieces[i].bezier) {
      next.before = next.after = false;  // a spline has no points beyond its ends
      next.startsCurve = !closed && i == 0;
      next.endsCurve = !closed && i + 1 == pieces.size();
    }
    if (!pieces[i].isEven()) next.beziers = pieces[i].beziers(next.isOpenEnded());
    operands.push_back(std::move(next));
  }
  return operands;
}

bool apart(const AcDbExtents& a, const AcDbExtents& b, double tol) {
  const AcGePoint3d &al = a.minPoint(), &ah = a.maxPoint(), &bl = b.minPoint(), &bh = b.maxPoint();
  return al.x > bh.x + tol || bl.x > ah.x + tol || al.y > bh.y + tol || bl.y > ah.y + tol ||
         al.z > bh.z + tol || bl.z > ah.z + tol;
}

// The points found so far; one that lies within a tolerance of another is that point. In cells, so that many
// points cost no more than few.
class Points {
public:
  explicit Points(AcGePoint3dArray& all) : m_all(all), m_first(all.size()) {}
  void offer(const AcGePoint3d& point, double same) {
    const Cell cell = cellOf(point);
    for (int i = 0; i < 27; ++i) {
      const auto found = m_cells.find({cell[0] + i % 3 - 1, cell[1] + i / 3 % 3 - 1, cell[2] + i / 9 - 1});
      if (found == m_cells.end()) continue;
      for (const std::size_t other : found->second)
        if (m_all[other].distanceTo(point) <= same) return;
    }
    m_cells[cell].push_back(m_all.size());
    m_all.push_back(point);
  }
  /// Of a stretch in common: ends of the curves, which are offered, and joints of their parts, which are not
  /// points of their own, wherever they were met.
  void offerEnd(const AcGePoint3d& point, double same) {
    offer(point, same);
    m_ends.push_back(point);
  }
  void noteJoint(const AcGePoint3d& point) { m_joints.push_back(point); }
  void dropJoints(double same) {
    const auto isIn = [same](const std::vector<AcGePoint3d>& list, const AcGePoint3d& point) {
      return std::ranges::any_of(list, [&](const AcGePoint3d& p) { return p.distanceTo(point) <= same; });
    };
    if (m_joints.empty()) return;
    const auto first = m_all.begin() + static_cast<std::ptrdiff_t>(m_first);
    const auto isJoint = [&](const AcGePoint3d& point) {
      return isIn(m_joints, point) && !isIn(m_ends, point);
    };
    m_all.erase(std::remove_if(first, m_all.end(), isJoint), m_all.end());
  }
  /// Points that were there before the search count too.
  void enterFormer() {
    for (std::size_t i = 0; i < m_first; ++i) m_cells[cellOf(m_all[i])].push_back(i);
  }

private:
  using Cell = std::array<Adesk::Int64, 3>;
  struct Hash {
    std::size_t operator()(const Cell& c) const {
      return static_cast<std::size_t>(c[0] * 73856093) ^ static_cast<std::size_t>(c[1] * 19349663) ^
             static_cast<std::size_t>(c[2] * 83492791);
    }
  };
  static constexpr double kCell = 1e-3;  // above every tolerance of coordinates that a drawing has
  static Cell cellOf(const AcGePoint3d& p) {
    const auto number = [](double v) {
      return std::fabs(v) < 1e12 ? static_cast<Adesk::Int64>(std::floor(v / kCell)) : Adesk::Int64{0};
    };
    return {number(p.x), number(p.y), number(p.z)};
  }
  AcGePoint3dArray& m_all;
  std::size_t m_first;
  std::unordered_map<Cell, std::vector<std::size_t>, Hash> m_cells;
  std::vector<AcGePoint3d> m_ends;
  std::vector<AcGePoint3d> m_joints;
};

class Meeting {
public:
  Meeting(const Operand& first, const Operand& second, double tol, Points& points)
      : m_first(first), m_second(second), m_tol(tol), m_points(points) {}

  void find() {
    if (m_first.isGeneral() || m_second.isGeneral()) return general();
    const bool firstArc = m_first.piece.isArc;
    const bool secondArc = m_second.piece.isArc;
    if (firstArc && secondArc) return arcs();
    if (firstArc) return lineAndArc(m_second.piece, m_first);
    if (secondArc) return lineAndArc(m_first.piece, m_second);
    lines();
  }

private:
  void offer(const AcGePoint3d& point) {
    if (m_first.holds(point, m_tol) && m_second.holds(point, m_tol)) m_points.offer(point, 2 * m_tol);
  }
  // Of a stretch in common, its ends.
  void offerEnds() {
    const auto end = [this](const AcGePoint3d& p) {
      if (m_first.holds(p, m_tol) && m_second.holds(p, m_tol)) m_points.offerEnd(p, 2 * m_tol);
    };
    m_first.forEnds(end);
    m_second.forEnds(end);
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
    if (!(shorter > 0)) return;
    if (!(square > sine * sine * u.lengthSqrd() * v.lengthSqrd())) return offerEnds();
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
    if (b.center.distanceTo(a.center) <= m_tol && std::fabs(a.radius - b.radius) <= m_tol) return offerEnds();
    AcGePoint2d found[2];
    const AcGeCircArc2d mine({0, 0}, a.radius);
    const int count = mine.intersectWith(AcGeCircArc2d(flat(a, b.center), b.radius), found, {m_tol, 1e-10});
    for (int i = 0; i < count; ++i) offer(lift(a, found[i]));
  }

  // ---- with an ellipse or a spline

  void general() {
    std::vector<AcGeMeet> met;
    const std::vector<AcGeBezierCurve3d> mine = beziersOf(m_first, m_second);
    const std::vector<AcGeBezierCurve3d> theirs = beziersOf(m_second, m_first);
    for (const AcGeBezierCurve3d& a : mine)
      for (const AcGeBezierCurve3d& b : theirs) acgeMeet(a, b, m_tol, met);
    std::stable_sort(met.begin(), met.end(), [](const AcGeMeet& a, const AcGeMeet& b) {
      return a.kind != b.kind ? a.kind < b.kind : a.gap < b.gap;
    });
    std::vector<AcGePoint3d> kept;
    bool stretch = false;
    for (const AcGeMeet& meet : met) {
      stretch = stretch || meet.ofStretch;
      if (meet.ofStretch) m_points.noteJoint(meet.point);
      if (meet.ofStretch) continue;
      const auto same = [&](const AcGePoint3d& other) { return isOnePlace(other, meet.point); };
      if (std::none_of(kept.begin(), kept.end(), same)) kept.push_back(meet.point);
    }
    if (stretch) offerEnds();
    for (const AcGePoint3d& point : kept) offer(point);
  }
  // A touch shows as a crowd of points between which the curves do not part.
  [[nodiscard]] bool isOnePlace(const AcGePoint3d& a, const AcGePoint3d& b) const {
    if (a.distanceTo(b) <= 2 * m_tol) return true;
    // Between two crossings far from each other the curves run far from the chord.
    const double near = 0.1 * a.distanceTo(b);
    for (const double share : {0.5, 0.23, 0.81}) {
      const AcGePoint3d middle = a + (b - a) * share;
      const AcGePoint3d mine = m_first.nearest(middle);
      if (!(mine.distanceTo(middle) <= near && mine.distanceTo(m_second.nearest(mine)) <= 2 * m_tol))
        return false;
    }
    return true;
  }

  // A straight piece that goes on is followed as far as the other one reaches.
  static std::vector<AcGeBezierCurve3d> beziersOf(const Operand& own, const Operand& other) {
    if (own.isGeneral()) return own.beziers;
    const AcGeCurvePiece& piece = own.piece;
    if (piece.isArc) return piece.beziers(own.isOpenEnded());
    AcDbExtents box;
    for (const AcGeBezierCurve3d& part : other.beziers) box.addExt(part.hull());
    const AcGeVector3d along = piece.end - piece.start;
    const double square = along.lengthSqrd();
    if (!(square > 0) || box.isEmpty()) return {};
    const AcGePoint3d middle = box.minPoint() + (box.maxPoint() - box.minPoint()) * 0.5;
    const double foot = along.dotProduct(middle - piece.start) / square;
    const double reach = box.minPoint().distanceTo(box.maxPoint()) / std::sqrt(square) + 1e-6;
    const double from = std::max(foot - reach, own.before ? -HUGE_VAL : 0.0);
    const double to = std::min(foot + reach, own.after ? HUGE_VAL : 1.0);
    if (!(from < to)) return {};
    const auto at = [&](double t) {
      return t == 0 ? piece.start : t == 1 ? piece.end : piece.start + along * t;
    };
    return {AcGeBezierCurve3d::line(at(from), at(to))};
  }

  const Operand& m_first;
  const Operand& m_second;
  double m_tol;
  Points& m_points;
};

AcDbExtents boxOf(const Operand& operand) {
  AcDbExtents box;
  operand.piece.addToExtents(AcGeMatrix3d(), box);
  return box;
}

veltora::base::PlaneBox around(const Operand& operand, const AcDbExtents& box) {
  if (operand.isOpenEnded()) return {-HUGE_VAL, -HUGE_VAL, HUGE_VAL, HUGE_VAL};
  const double tol = kMeet + kRounding * std::max(sizeOf(box.minPoint()), sizeOf(box.maxPoint()));
  return {box.minPoint().x - tol, box.minPoint().y - tol, box.maxPoint().x + tol, box.maxPoint().y + tol};
}

}  // namespace

void acdbIntersect(const AcDbCurve& first, bool extendFirst, const AcDbCurve& second, bool extendSecond,
                   AcGePoint3dArray& points) {
  const std::vector<Operand> mine = operandsOf(first, extendFirst);
  const std::vector<Operand> theirs = operandsOf(second, extendSecond);
  std::vector<AcDbExtents> boxes;
  std::vector<veltora::base::PlaneBox> places;
  boxes.reserve(theirs.size());
  places.reserve(theirs.size());
  for (const Operand& b : theirs) {
    boxes.push_back(boxOf(b));
    places.push_back(around(b, boxes.back()));
  }
  veltora::base::BoxIndex index(places);
  Points found(points);
  found.enterFormer();
  double widest = 0;
  for (const Operand& a : mine) {
    const AcDbExtents box = boxOf(a);
    for (const std::size_t i : index.touching(around(a, box))) {
      const double tol = kMeet + kRounding * std::max(sizeOf(a.piece), sizeOf(theirs[i].piece));
      const bool bounded = !a.isOpenEnded() && !theirs[i].isOpenEnded();
      if (!bounded || !apart(box, boxes[i], tol)) Meeting(a, theirs[i], tol, found).find();
      widest = std::max(widest, tol);
    }
  }
  found.dropJoints(2 * widest);
}
