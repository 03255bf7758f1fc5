#include "arx/ge/gebeziermeet.h"

#include <algorithm>
#include <cmath>
#include <utility>

// P(t), Q(u)  the two curves
// They cross where P - Q = 0: Gauss and Newton's rule, J = (P', -Q'). Where they touch that system is
// singular; there (P - Q) . P' = 0 and n . (P' x Q') = 0, n the normal of the plane in which they bend, is
// regular.

namespace {

constexpr int kBudget = 2500;       // pairs of parts looked at for one pair of curves
constexpr int kDeepest = 26;        // halvings of each
constexpr int kMeetSteps = 40;      // of Newton's rule
constexpr double kStraight = 0.02;  // sag of a part to its chord that is straight enough for Newton's rule
constexpr double kAskew = 0.15;     // sine of the angle between straight parts that cross but once

double least(const AcGeBezierCurve3d& curve, const AcGePoint3d& origin, const AcGeVector3d& axis,
             double sign) {
  double value = HUGE_VAL;
  for (std::size_t i = 0; i < curve.size(); ++i)
    value = std::min(value, sign * axis.dotProduct(curve.control(i) - origin));
  return value;
}

// Whether a plane square on the axis keeps the curves apart.
bool apartAlong(const AcGeBezierCurve3d& a, const AcGeBezierCurve3d& b, const AcGeVector3d& axis,
                double tol) {
  const AcGePoint3d origin = a.start();
  return least(a, origin, axis, 1) > -least(b, origin, axis, -1) + tol ||
         least(b, origin, axis, 1) > -least(a, origin, axis, -1) + tol;
}

bool apart(const AcGeBezierCurve3d& a, const AcGeBezierCurve3d& b, double tol) {
  const AcDbExtents x = a.hull();
  const AcDbExtents y = b.hull();
  const AcGePoint3d &al = x.minPoint(), &ah = x.maxPoint(), &bl = y.minPoint(), &bh = y.maxPoint();
  if (al.x > bh.x + tol || bl.x > ah.x + tol || al.y > bh.y + tol || bl.y > ah.y + tol || al.z > bh.z + tol ||
      bl.z > ah.z + tol)
    return true;
  // Across the chords: what runs side by side at a distance.
  for (const AcGeBezierCurve3d* own : {&a, &b}) {
    const AcGeVector3d chord = (own->end() - own->start()).normal();
    const AcGeVector3d between = b.pointAt(0.5) - a.pointAt(0.5);
    const AcGeVector3d across = (between - chord * chord.dotProduct(between)).normal();
    if (across.lengthSqrd() > 0 && apartAlong(a, b, across, tol)) return true;
  }
  return false;
}

struct Part {
  AcGeBezierCurve3d curve;
  double from = 0.0;
  double range = 1.0;
  int depth = 0;

  [[nodiscard]] double size() const { return curve.start().distanceTo(curve.end()); }
  [[nodiscard]] bool isStraight() const { return curve.sag() <= kStraight * size(); }
  [[nodiscard]] std::pair<Part, Part> halves() const {
    auto [left, right] = curve.halves();
    const double half = range / 2;
    return {{std::move(left), from, half, depth + 1}, {std::move(right), from + half, half, depth + 1}};
  }
};

class Search {
public:
  Search(const AcGeBezierCurve3d& a, const AcGeBezierCurve3d& b, double tol, std::vector<AcGeMeet>& found)
      : m_a(a), m_b(b), m_tol(tol), m_found(found) {}

  void run() {
    if (apart(m_a, m_b, m_tol)) return;
    if (ends()) return;
    visit({m_a}, {m_b});
  }

private:
  void add(const AcGePoint3d& point, double gap, AcGeMeet::Kind kind, bool ofStretch = false) {
    if (gap <= m_tol) m_found.push_back({point, gap, kind, ofStretch});
  }

  // The ends that lie on the other curve. @return true when they bound a stretch in common
  bool ends() {
    struct End {
      double t;
      AcGePoint3d point;
      double gap;
    };
    std::vector<End> all;
    for (const double t : {0.0, 1.0}) {
      const AcGePoint3d mine = m_a.pointAt(t);
      const double far = m_b.pointAt(m_b.closest(mine)).distanceTo(mine);
      if (far <= m_tol) all.push_back({t, mine, far});
      const AcGePoint3d theirs = m_b.pointAt(t);
      const double at = m_a.closest(theirs);
      const double off = m_a.pointAt(at).distanceTo(theirs);
      if (off <= m_tol) all.push_back({at, theirs, off});
    }
    std::sort(all.begin(), all.end(), [](const End& x, const End& y) { return x.t < y.t; });
    bool stretch = false;
    for (std::size_t i = 0; i + 1 < all.size() && !stretch; ++i) stretch = isCommon(all[i].t, all[i + 1].t);
    for (const End& end : all) add(end.point, end.gap, AcGeMeet::kEnd, stretch);
    return stretch;
  }
  [[nodiscard]] bool isCommon(double t0, double t1) const {
    if (!(m_a.pointAt(t0).distanceTo(m_a.pointAt(t1)) > 16 * m_tol)) return false;
    for (const double share : {0.21, 0.47, 0.83}) {
      const AcGePoint3d point = m_a.pointAt(t0 + (t1 - t0) * share);
      if (!(m_b.pointAt(m_b.closest(point)).distanceTo(point) <= m_tol)) return false;
    }
    return true;
  }

  void visit(const Part& a, const Part& b) {
    if (++m_visits > kBudget || apart(a.curve, b.curve, m_tol)) return;
    const double sizeA = a.size();
    const double sizeB = b.size();
    const bool straight = a.isStraight() && b.isStraight();
    if (straight && isAskew(a, b)) return cross(a.from + a.range / 2, b.from + b.range / 2);
    const bool small = std::max(sizeA, sizeB) <= 64 * m_tol || (a.depth >= kDeepest && b.depth >= kDeepest);
    if (small) return polish(a.from + a.range / 2, b.from + b.range / 2);
    const bool first = b.depth >= kDeepest || (a.depth < kDeepest && sizeA >= sizeB);
    if (first) {
      const auto [left, right] = a.halves();
      visit(left, b);
      visit(right, b);
    } else {
      const auto [left, right] = b.halves();
      visit(a, left);
      visit(a, right);
    }
  }
  [[nodiscard]] static bool isAskew(const Part& a, const Part& b) {
    const AcGeVector3d u = (a.curve.end() - a.curve.start()).normal();
    const AcGeVector3d v = (b.curve.end() - b.curve.start()).normal();
    return u.crossProduct(v).length() >= kAskew;
  }
  void polish(double t, double u) {
    if (!touch(t, u)) cross(t, u);
  }

  void cross(double t, double u) {
    for (int i = 0; i < kMeetSteps; ++i) {
      const auto p = m_a.jetAt(t);
      const auto q = m_b.jetAt(u);
      const AcGeVector3d gap = p.point - q.point;
      const double aa = p.first.lengthSqrd();
      const double bb = q.first.lengthSqrd();
      const double ab = p.first.dotProduct(q.first);
      const double det = aa * bb - ab * ab;
      if (!(det > 1e-24 * aa * bb)) break;
      const double ga = -p.first.dotProduct(gap);
      const double gb = q.first.dotProduct(gap);
      const double t1 = std::clamp(t + (bb * ga + ab * gb) / det, 0.0, 1.0);
      const double u1 = std::clamp(u + (ab * ga + aa * gb) / det, 0.0, 1.0);
      const bool still = std::fabs(t1 - t) + std::fabs(u1 - u) < 1e-16;
      t = t1;
      u = u1;
      if (still) break;
    }
    const AcGePoint3d p = m_a.pointAt(t);
    add(p, p.distanceTo(m_b.pointAt(u)), AcGeMeet::kCross);
  }

  // @return whether the curves run side by side near these places and touch there
  bool touch(double t, double u) {
    for (int i = 0; i < kMeetSteps; ++i) {
      const auto p = m_a.jetAt(t);
      const auto q = m_b.jetAt(u);
      const AcGeVector3d bendA = p.first.crossProduct(p.second);
      const AcGeVector3d bendB = q.first.crossProduct(q.second);
      const AcGeVector3d n = (bendA.lengthSqrd() > bendB.lengthSqrd() ? bendA : bendB).normal();
      if (!(n.lengthSqrd() > 0)) return false;
      const AcGeVector3d gap = p.point - q.point;
      const double f = gap.dotProduct(p.first);
      const double g = n.dotProduct(p.first.crossProduct(q.first));
      const double ft = p.first.lengthSqrd() + gap.dotProduct(p.second);
      const double fu = -q.first.dotProduct(p.first);
      const double gt = n.dotProduct(p.second.crossProduct(q.first));
      const double gu = n.dotProduct(p.first.crossProduct(q.second));
      const double det = ft * gu - fu * gt;
      if (!(std::fabs(det) > 0)) return false;
      const double stepT = (g * fu - f * gu) / det;
      const double stepU = (f * gt - g * ft) / det;
      t += std::clamp(stepT, -0.1, 0.1);
      u += std::clamp(stepU, -0.1, 0.1);
      if (!(t >= -0.01 && t <= 1.01 && u >= -0.01 && u <= 1.01)) return false;
      if (std::fabs(stepT) + std::fabs(stepU) < 1e-15) break;
    }
    t = std::clamp(t, 0.0, 1.0);
    u = std::clamp(u, 0.0, 1.0);
    const AcGePoint3d p = m_a.pointAt(t);
    const double gap = p.distanceTo(m_b.pointAt(u));
    add(p, gap, AcGeMeet::kTouch);
    return gap <= m_tol;
  }

  const AcGeBezierCurve3d& m_a;
  const AcGeBezierCurve3d& m_b;
  double m_tol;
  std::vector<AcGeMeet>& m_found;
  int m_visits = 0;
};

}  // namespace

void acgeMeet(const AcGeBezierCurve3d& a, const AcGeBezierCurve3d& b, double tol,
              std::vector<AcGeMeet>& found) {
  Search(a, b, tol, found).run();
}
