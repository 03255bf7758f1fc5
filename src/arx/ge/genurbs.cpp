#include "arx/ge/genurbs.h"

#include <algorithm>
#include <cmath>

namespace {

using Node = AcGeBezierCurve3d::Node;

bool isPlace(double value) { return std::fabs(value) <= 1e100; }

bool isPlace(const AcGePoint3d& p) { return isPlace(p.x) && isPlace(p.y) && isPlace(p.z); }

// Corner of the stretch behind knot k: the polar form at `low` taken degree - high times and `up` high times.
Node polar(const AcGeNurbs& spline, std::vector<Node> d, std::size_t k, int high) {
  const std::vector<double>& u = spline.knots;
  const auto p = static_cast<std::size_t>(spline.degree);
  for (std::size_t r = 1; r <= p; ++r) {
    const double at = r <= p - static_cast<std::size_t>(high) ? u[k] : u[k + 1];
    for (std::size_t i = p; i >= r; --i) {
      const double left = u[k - p + i];
      const double share = (at - left) / (u[i + 1 + k - r] - left);
      d[i] = {d[i - 1].p * (1.0 - share) + d[i].p * share, d[i - 1].w * (1.0 - share) + d[i].w * share};
    }
  }
  return d[p];
}

AcGeBezierCurve3d stretch(const AcGeNurbs& spline, std::size_t k) {
  const auto p = static_cast<std::size_t>(spline.degree);
  const AcGePoint3d origin = spline.controls[k - p];
  std::vector<Node> controls(p + 1);
  for (std::size_t i = 0; i <= p; ++i) {
    const double w = spline.weights.empty() ? 1.0 : spline.weights[k - p + i];
    controls[i] = {(spline.controls[k - p + i] - origin) * w, w};
  }
  std::vector<Node> nodes(p + 1);
  for (std::size_t j = 0; j <= p; ++j) nodes[j] = polar(spline, controls, k, static_cast<int>(j));
  return {origin, std::move(nodes)};
}

bool isBroken(const AcGeNurbs& spline) {
  const auto p = static_cast<std::size_t>(spline.degree);
  const std::size_t n = spline.controls.size();
  for (std::size_t i = p + 1; i + p < n; ++i) {
    if (spline.knots[i] == spline.knots[i + p] && spline.knots[i] > spline.knots[p] &&
        spline.knots[i] < spline.knots[n])
      return true;
  }
  return false;
}

// Solves a system of rows a x(i-1) + b x(i) + c x(i+1) = d in place (Thomas); the result stands in d.
void solveBand(const std::vector<double>& a, std::vector<double> b, const std::vector<double>& c,
               std::vector<AcGeVector3d>& d) {
  const std::size_t n = b.size();
  for (std::size_t i = 1; i < n; ++i) {
    const double f = a[i] / b[i - 1];
    b[i] -= f * c[i - 1];
    d[i] = d[i] - d[i - 1] * f;
  }
  d[n - 1] = d[n - 1] * (1.0 / b[n - 1]);
  for (std::size_t i = n - 1; i-- > 0;) d[i] = (d[i] - d[i + 1] * c[i]) * (1.0 / b[i]);
}

// Derivatives at the points of an open curve.
std::vector<AcGeVector3d> openSlopes(const std::vector<AcGePoint3d>& p, const std::vector<double>& h,
                                     const std::optional<AcGeVector3d>& first,
                                     const std::optional<AcGeVector3d>& last) {
  const std::size_t n = p.size();
  std::vector<double> a(n, 0.0), b(n, 1.0), c(n, 0.0);
  std::vector<AcGeVector3d> d(n);
  for (std::size_t i = 1; i + 1 < n; ++i) {
    a[i] = h[i];
    b[i] = 2 * (h[i - 1] + h[i]);
    c[i] = h[i - 1];
    d[i] = ((p[i] - p[i - 1]) * (h[i] / h[i - 1]) + (p[i + 1] - p[i]) * (h[i - 1] / h[i])) * 3.0;
  }
  if (first) {
    d[0] = first->normal();
  } else {
    b[0] = 2, c[0] = 1;
    d[0] = (p[1] - p[0]) * (3 / h[0]);
  }
  if (last) {
    d[n - 1] = last->normal();
  } else {
    a[n - 1] = 1, b[n - 1] = 2;
    d[n - 1] = (p[n - 1] - p[n - 2]) * (3 / h[n - 2]);
  }
  solveBand(a, b, c, d);
  return d;
}

// The same round a closed curve, whose last point equals the first: the corners of the cyclic system are
// taken out by one more solution (Sherman and Morrison; Numerical Recipes, chapter 2.7).
std::vector<AcGeVector3d> closedSlopes(const std::vector<AcGePoint3d>& p, const std::vector<double>& h) {
  const std::size_t n = p.size() - 1;
  std::vector<double> a(n), b(n), c(n);
  std::vector<AcGeVector3d> d(n), z(n);
  for (std::size_t i = 0; i < n; ++i) {
    const std::size_t before = (i + n - 1) % n;
    a[i] = h[i];
    b[i] = 2 * (h[before] + h[i]);
    c[i] = h[before];
    d[i] = ((p[i] - p[before]) * (h[i] / h[before]) + (p[i + 1] - p[i]) * (h[before] / h[i])) * 3.0;
  }
  const double corner = -b[0];
  const double low = c[n - 1];
  const double high = a[0];
  b[0] -= corner;
  b[n - 1] -= low * high / corner;
  z[0].x = corner;
  z[n - 1].x = low;
  solveBand(a, b, c, d);
  solveBand(a, b, c, z);
  const double below = 1.0 + z[0].x + high * z[n - 1].x / corner;
  const AcGeVector3d factor = (d[0] + d[n - 1] * (high / corner)) * (1.0 / below);
  for (std::size_t i = 0; i < n; ++i) d[i] = d[i] - factor * z[i].x;
  d.push_back(d[0]);
  return d;
}

}  // namespace

bool AcGeNurbs::isUsable() const {
  if (degree < 1 || degree > AcGeBezierCurve3d::kHighestDegree) return false;
  const auto p = static_cast<std::size_t>(degree);
  const std::size_t n = controls.size();
  if (n < p + 1 || knots.size() != n + p + 1 || (!weights.empty() && weights.size() != n)) return false;
  if (!std::all_of(controls.begin(), controls.end(), [](const AcGePoint3d& c) { return isPlace(c); }) ||
      !std::all_of(knots.begin(), knots.end(), [](double u) { return isPlace(u); }) ||
      !std::all_of(weights.begin(), weights.end(), [](double w) { return w > 0 && isPlace(w); }))
    return false;
  if (!std::is_sorted(knots.begin(), knots.end()) || !(knots[n] > knots[p]) || isBroken(*this)) return false;
  const std::vector<AcGeSplineSpan> all = spans();
  return std::all_of(all.begin(), all.end(), [](const AcGeSplineSpan& s) { return s.curve.isFinite(); });
}

std::vector<AcGeSplineSpan> AcGeNurbs::spans() const {
  std::vector<AcGeSplineSpan> result;
  for (auto k = static_cast<std::size_t>(degree); k < controls.size(); ++k) {
    if (knots[k + 1] > knots[k]) result.push_back({knots[k], knots[k + 1], stretch(*this, k)});
  }
  return result;
}

std::vector<AcGeSplineSpan> acgeSplineThrough(const std::vector<AcGePoint3d>& points,
                                              const std::optional<AcGeVector3d>& startTangent,
                                              const std::optional<AcGeVector3d>& endTangent, bool closed) {
  std::vector<AcGePoint3d> p;
  for (const AcGePoint3d& point : points) {
    if (p.empty() || point.distanceTo(p.back()) > 0) p.push_back(point);
  }
  if (closed && p.size() > 2 && p.front().distanceTo(p.back()) > 0) p.push_back(p.front());
  if (p.size() < 2) return {};
  std::vector<double> h;
  for (std::size_t i = 0; i + 1 < p.size(); ++i) h.push_back(p[i].distanceTo(p[i + 1]));
  const bool round = closed && p.size() > 3;
  const std::vector<AcGeVector3d> slope =
      round ? closedSlopes(p, h) : openSlopes(p, h, startTangent, endTangent);
  std::vector<AcGeSplineSpan> result;
  double at = 0;
  for (std::size_t i = 0; i + 1 < p.size(); ++i) {
    const AcGeVector3d chord = p[i + 1] - p[i];
    std::vector<Node> nodes{{{0, 0, 0}, 1.0},
                            {slope[i] * (h[i] / 3), 1.0},
                            {chord - slope[i + 1] * (h[i] / 3), 1.0},
                            {chord, 1.0}};
    result.push_back({at, at + h[i], AcGeBezierCurve3d(p[i], std::move(nodes))});
    at += h[i];
  }
  return result;
}
