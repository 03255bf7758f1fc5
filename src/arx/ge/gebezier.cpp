#include "arx/ge/gebezier.h"

#include <algorithm>
#include <boost/math/quadrature/gauss.hpp>
#include <cmath>

// P = A / W with the weighted points' polynomial A and that of the weights W.
// P' = (A' - P W') / W      P'' = (A'' - 2 P' W' - P W'') / W

namespace {

using Node = AcGeBezierCurve3d::Node;

constexpr int kDeepestNearest = 8;   // halvings in the search for the nearest point
constexpr int kDeepestExtreme = 48;  // and for an extreme coordinate
constexpr double kEqual = 1e-13;     // of the curve's size: an extreme this near is that extreme
constexpr int kNewtonSteps = 30;     // of Newton's rule

Node between(const Node& a, const Node& b, double t) {
  return {a.p * (1.0 - t) + b.p * t, a.w * (1.0 - t) + b.w * t};
}

double distanceToBox(const AcGePoint3d& p, const AcDbExtents& box) {
  const AcGePoint3d& low = box.minPoint();
  const AcGePoint3d& high = box.maxPoint();
  return std::hypot(std::max({low.x - p.x, 0.0, p.x - high.x}), std::max({low.y - p.y, 0.0, p.y - high.y}),
                    std::max({low.z - p.z, 0.0, p.z - high.z}));
}

// One coordinate of a curve, from one side: the greatest value of sign * coordinate.
struct Extreme {
  double AcGePoint3d::*coordinate;
  double sign;
  double slack;
  AcGePoint3d best;
  double value = -HUGE_VAL;

  void offer(const AcGePoint3d& p) {
    if (const double v = sign * p.*coordinate; v > value) value = v, best = p;
  }
  void search(const AcGeBezierCurve3d& curve, int depth) {
    offer(curve.start());
    offer(curve.end());
    double reach = -HUGE_VAL;
    for (std::size_t i = 0; i < curve.size(); ++i)
      reach = std::max(reach, sign * curve.control(i).*coordinate);
    if (!(reach > value + slack) || depth == kDeepestExtreme) return;
    const auto [left, right] = curve.halves();
    search(left, depth + 1);
    search(right, depth + 1);
  }
};

}  // namespace

AcGeBezierCurve3d AcGeBezierCurve3d::line(const AcGePoint3d& from, const AcGePoint3d& to) {
  return {from, {{{0, 0, 0}, 1.0}, {to - from, 1.0}}};
}

AcGeBezierCurve3d AcGeBezierCurve3d::conicArc(const AcGePoint3d& center, const AcGeVector3d& x,
                                              const AcGeVector3d& y, double start, double sweep) {
  const double half = sweep / 2;
  const double w = std::cos(half);
  const auto out = [&](double a) { return x * std::cos(a) + y * std::sin(a); };
  // The tangents of both ends meet at the middle's direction, 1 / cos(half) as far out.
  return {center, {{out(start), 1.0}, {out(start + half), w}, {out(start + sweep), 1.0}}};
}

AcGeBezierCurve3d::Jet AcGeBezierCurve3d::jetAt(double t) const {
  const std::size_t n = m_nodes.size() - 1;
  std::array<Node, kHighestDegree + 1> corner;
  std::copy(m_nodes.begin(), m_nodes.end(), corner.begin());
  Node second{{0, 0, 0}, 0.0};
  Node first{{0, 0, 0}, 0.0};
  for (std::size_t level = n; level > 0; --level) {
    if (level == 2) {
      const double f = static_cast<double>(n * (n - 1));
      second = {(corner[2].p - corner[1].p * 2.0 + corner[0].p) * f,
                (corner[2].w - 2.0 * corner[1].w + corner[0].w) * f};
    }
    if (level == 1) {
      const auto f = static_cast<double>(n);
      first = {(corner[1].p - corner[0].p) * f, (corner[1].w - corner[0].w) * f};
    }
    for (std::size_t i = 0; i < level; ++i) corner[i] = between(corner[i], corner[i + 1], t);
  }
  const double w = corner[0].w;
  const AcGeVector3d at = corner[0].p * (1.0 / w);
  Jet jet;
  jet.first = (first.p - at * first.w) * (1.0 / w);
  jet.second = (second.p - jet.first * (2.0 * first.w) - at * second.w) * (1.0 / w);
  jet.point = t == 0 ? start() : t == 1 ? end() : m_origin + at;
  return jet;
}

std::pair<AcGeBezierCurve3d, AcGeBezierCurve3d> AcGeBezierCurve3d::halves() const {
  const std::size_t n = m_nodes.size();
  std::vector<Node> left(n);
  std::vector<Node> right(m_nodes);
  for (std::size_t k = 0; k < n; ++k) {
    left[k] = right[0];
    for (std::size_t i = 0; i + 1 < n - k; ++i) right[i] = between(right[i], right[i + 1], 0.5);
  }
  // Each round leaves the last corner of its level in place.
  return {{m_origin, std::move(left)}, {m_origin, std::move(right)}};
}

AcDbExtents AcGeBezierCurve3d::hull() const {
  AcDbExtents box;
  for (std::size_t i = 0; i < m_nodes.size(); ++i) box.addPoint(control(i));
  return box;
}

double AcGeBezierCurve3d::sag() const {
  const AcGePoint3d from = start();
  const AcGeVector3d chord = (end() - from).normal();
  double most = 0;
  for (std::size_t i = 1; i + 1 < m_nodes.size(); ++i)
    most = std::max(most, chord.crossProduct(control(i) - from).length());
  if (chord.lengthSqrd() > 0) return most;
  for (std::size_t i = 1; i + 1 < m_nodes.size(); ++i) most = std::max(most, control(i).distanceTo(from));
  return most;
}

double AcGeBezierCurve3d::closest(const AcGePoint3d& point) const {
  double best = 0.0;
  double distance = start().distanceTo(point);
  const auto offer = [&](double t) {
    const double d = pointAt(t).distanceTo(point);
    if (d < distance) best = t, distance = d;
  };
  offer(1.0);
  // Where the way to the point stands square on the curve: (P - p) . P' = 0.
  const auto refine = [&](double t) {
    for (int i = 0; i < kNewtonSteps; ++i) {
      const Jet jet = jetAt(t);
      const AcGeVector3d out = jet.point - point;
      const double square = jet.first.lengthSqrd();
      double slope = square + out.dotProduct(jet.second);
      if (!(slope > 0)) slope = square;
      if (!(slope > 0)) break;
      const double next = std::clamp(t - out.dotProduct(jet.first) / slope, 0.0, 1.0);
      const bool still = std::fabs(next - t) < 1e-16;
      t = next;
      if (still) break;
    }
    offer(t);
  };
  struct Part {
    AcGeBezierCurve3d curve;
    double from;
    double range;
  };
  std::vector<Part> open{{*this, 0.0, 1.0}};
  const double finest = std::ldexp(1.0, -kDeepestNearest);
  while (!open.empty()) {
    const Part part = std::move(open.back());
    open.pop_back();
    if (!(distanceToBox(point, part.curve.hull()) < distance)) continue;
    refine(part.from + part.range / 2);
    if (part.range <= finest) continue;
    auto [left, right] = part.curve.halves();
    const double half = part.range / 2;
    open.push_back({std::move(right), part.from + half, half});
    open.push_back({std::move(left), part.from, half});
  }
  return best;
}

AcGeVector3d AcGeBezierCurve3d::doubleAreaOverChord() const {
  const AcGePoint3d from = start();
  AcGeVector3d sum;
  // Polynomials of this degree are summed exactly; the parts are small, so that weights cost little.
  constexpr int kParts = 16;
  for (int i = 0; i < kParts; ++i) {
    for (const auto part : {&AcGeVector3d::x, &AcGeVector3d::y, &AcGeVector3d::z}) {
      const auto share = [&](double t) {
        const Jet jet = jetAt(t);
        return (jet.point - from).crossProduct(jet.first).*part;
      };
      sum.*part += boost::math::quadrature::gauss<double, 15>::integrate(share, i / double{kParts},
                                                                         (i + 1) / double{kParts});
    }
  }
  return sum;
}

void AcGeBezierCurve3d::addToExtents(const AcGeMatrix3d& matrix, AcDbExtents& extents) const {
  AcGeBezierCurve3d mapped(matrix * m_origin, m_nodes);
  for (Node& node : mapped.m_nodes) node.p = matrix * node.p;
  const AcDbExtents hull = mapped.hull();
  const double slack = kEqual * hull.minPoint().distanceTo(hull.maxPoint());
  for (const auto coordinate : {&AcGePoint3d::x, &AcGePoint3d::y, &AcGePoint3d::z}) {
    for (const double sign : {-1.0, 1.0}) {
      Extreme extreme{coordinate, sign, slack, {}};
      extreme.search(mapped, 0);
      extents.addPoint(extreme.best);
    }
  }
}

bool AcGeBezierCurve3d::isFinite() const {
  return std::all_of(m_nodes.begin(), m_nodes.end(), [](const Node& node) {
    return std::isfinite(node.p.x) && std::isfinite(node.p.y) && std::isfinite(node.p.z) &&
           std::isfinite(node.w) && node.w > 0;
  });
}
