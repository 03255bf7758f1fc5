#include "arx/ent_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

// Intersections against curves cut into thousands of chords, at national coordinates.
namespace {

using namespace ent_test;

constexpr int kChords = 900;

struct Sampled {
  const char* name = "";
  const AcDbCurve* curve = nullptr;
  std::vector<AcGePoint2d> plain;     // as it is
  std::vector<AcGePoint2d> extended;  // as extension makes it
};

AcGePoint2d near(const AcGePoint3d& p) { return {p.x - kFar.x, p.y - kFar.y}; }

// By the curve's own parameters.
std::vector<AcGePoint2d> chordsOf(const AcDbCurve& curve) {
  double first = 0, last = 0;
  curve.getStartParam(first);
  curve.getEndParam(last);
  if (first < -1e100) first = -300;
  if (last > 1e100) last = 300;
  std::vector<AcGePoint2d> chords;
  AcGePoint3d point;
  for (int i = 0; i <= kChords; ++i) {
    curve.getPointAtParam(std::clamp(first + (last - first) * i / kChords, first, last), point);
    chords.push_back(near(point));
  }
  return chords;
}

std::vector<AcGePoint2d> crossings(const std::vector<AcGePoint2d>& a, const std::vector<AcGePoint2d>& b) {
  std::vector<AcGePoint2d> found;
  for (std::size_t i = 0; i + 1 < a.size(); ++i) {
    const double low = std::min(a[i].x, a[i + 1].x), high = std::max(a[i].x, a[i + 1].x);
    const double down = std::min(a[i].y, a[i + 1].y), up = std::max(a[i].y, a[i + 1].y);
    for (std::size_t j = 0; j + 1 < b.size(); ++j) {
      const AcGePoint2d &c = b[j], &d = b[j + 1];
      if (std::max(c.x, d.x) < low || std::min(c.x, d.x) > high || std::max(c.y, d.y) < down ||
          std::min(c.y, d.y) > up)
        continue;
      const AcGeVector2d u = a[i + 1] - a[i], v = d - c, w = c - a[i];
      const double cross = u.crossProduct(v);
      if (cross == 0) continue;
      const double s = w.crossProduct(v) / cross, t = w.crossProduct(u) / cross;
      if (s < 0 || s >= 1 || t < 0 || t >= 1) continue;
      found.push_back(a[i] + u * s);
    }
  }
  return found;
}

class Curves {
public:
  explicit Curves(unsigned seed) : m_random(seed) {
    const AcGePoint3d from = place(), to = place();
    add("line", new AcDbLine(from, to), new AcDbLine(from - (to - from) * 40.0, to + (to - from) * 40.0));
    auto* ray = new AcDbRay;
    ray->setBasePoint(place()), ray->setUnitDir(place() - place());
    auto* both = new AcDbXline;
    both->setBasePoint(ray->basePoint()), both->setUnitDir(ray->unitDir());
    add("ray", ray, both);
    auto* xline = new AcDbXline;
    xline->setBasePoint(place()), xline->setUnitDir(place() - place());
    add("xline", xline, nullptr);
    const AcGePoint3d center = place();
    add("circle", new AcDbCircle(center, {0, 0, 1}, any(5, 30)), nullptr);
    const double radius = any(5, 30);
    add("arc", new AcDbArc(center, radius, any(0, 6), any(0, 6)), new AcDbCircle(center, {0, 0, 1}, radius));
    const AcGeVector3d axis(any(-30, 30), any(5, 30), 0);
    const double ratio = any(0.2, 0.9);
    add("ellipse", new AcDbEllipse(center, {0, 0, 1}, axis, ratio), nullptr);
    add("part of an ellipse", new AcDbEllipse(place(), {0, 0, -1}, axis, ratio, 1, any(2, 6)), nullptr, true);
    light();
    heavy();
    AcGeNurbs nurbs{3, {0, 0, 0, 0, 1, 2, 2, 5, 5, 5, 5}, {}, {}};
    for (int i = 0; i < 7; ++i) nurbs.controls.push_back(place());
    for (int i = 0; i < 7; ++i) nurbs.weights.push_back(any(0.5, 2));
    add("spline", new AcDbSpline(nurbs), nullptr);
    add("spline through points", new AcDbSpline({place(), place(), place(), place(), place()}), nullptr);
  }
  [[nodiscard]] const std::vector<Sampled>& all() const { return m_all; }

private:
  double any(double from, double to) { return std::uniform_real_distribution<double>(from, to)(m_random); }
  AcGePoint3d place() { return kFar + AcGeVector3d(any(0, 60), any(0, 60), 0); }
  void add(const char* name, AcDbCurve* curve, AcDbCurve* longer, bool part = false) {
    m_curves.emplace_back(curve);
    Sampled next{name, curve, chordsOf(*curve), {}};
    if (part) {
      const auto* ellipse = AcDbEllipse::cast(curve);
      longer =
          new AcDbEllipse(ellipse->center(), ellipse->normal(), ellipse->majorAxis(), ellipse->radiusRatio());
    }
    if (longer) m_curves.emplace_back(longer);
    next.extended = longer ? chordsOf(*longer) : next.plain;
    m_all.push_back(std::move(next));
  }
  // Straight ends, so that the longer one is the one whose outer vertices lie farther out.
  void light() {
    Vertices bent;
    for (int i = 0; i < 7; ++i) {
      const AcGePoint3d p = place();
      bent.push_back({p.x, p.y, i > 0 && i < 5 ? any(-1.5, 1.5) : 0.0});
    }
    Vertices longer = bent;
    const auto beyond = [](const std::array<double, 3>& end, const std::array<double, 3>& inner,
                           double bulge) {
      return std::array<double, 3>{end[0] + 40 * (end[0] - inner[0]), end[1] + 40 * (end[1] - inner[1]),
                                   bulge};
    };
    longer.front() = beyond(bent[0], bent[1], 0);
    longer.back() = beyond(bent[6], bent[5], 0);
    add("light polyline", polyline(bent).release(), polyline(longer).release());
    for (auto& vertex : bent) vertex[0] = place().x;
    add("closed polyline", polyline(bent, true).release(), nullptr);
  }
  void heavy() {
    auto* flat = new AcDb2dPolyline;
    auto* raised = new AcDb3dPolyline;
    addTo(m_db.modelSpaceId(), flat);
    addTo(m_db.modelSpaceId(), raised);
    const AcDbObjectPointer<AcDb2dPolyline> first(flat->objectId(), AcDb::kForWrite);
    const AcDbObjectPointer<AcDb3dPolyline> second(raised->objectId(), AcDb::kForWrite);
    first->setClosed(true);
    second->setClosed(true);
    for (int i = 0; i < 5; ++i) {
      AcDbObjectId id;
      auto* bent = new AcDb2dVertex(place());
      bent->setBulge(any(-1, 1));
      first->appendVertex(id, bent);
      bent->close();
      auto* corner = new AcDb3dPolylineVertex(place());
      second->appendVertex(id, corner);
      corner->close();
    }
    m_all.push_back({"heavy polyline", flat, chordsOf(*flat), chordsOf(*flat)});
    m_all.push_back({"polyline in space", raised, chordsOf(*raised), chordsOf(*raised)});
  }
  std::mt19937 m_random;
  AcDbDatabase m_db;
  std::vector<std::unique_ptr<AcDbCurve>> m_curves;
  std::vector<Sampled> m_all;
};

void compare(const Sampled& a, const Sampled& b, AcDb::Intersect type) {
  SCOPED_TRACE(std::string(a.name) + " and " + b.name + ", mode " + std::to_string(type));
  const std::vector<AcGePoint2d> expected = crossings(type & AcDb::kExtendThis ? a.extended : a.plain,
                                                      type & AcDb::kExtendArg ? b.extended : b.plain);
  AcGePoint3dArray points;
  ASSERT_EQ(a.curve->intersectWith(b.curve, type, points), Acad::eOk);
  const auto reach = [](const AcGePoint3d& p) { return std::hypot(p.x - kFar.x, p.y - kFar.y) < 250; };
  const auto count = std::count_if(points.begin(), points.end(), reach);
  EXPECT_EQ(count,
            std::ranges::count_if(expected, [](const AcGePoint2d& p) { return std::hypot(p.x, p.y) < 250; }));
  for (const AcGePoint3d& point : points) {
    for (const Sampled* s : {&a, &b}) {
      AcGePoint3d on;
      const bool longer = (type & (s == &a ? AcDb::kExtendThis : AcDb::kExtendArg)) != 0;
      s->curve->getClosestPointTo(point, on, longer);
      EXPECT_POINT(point, on, 1e-7);
    }
    double least = 1e9;
    for (const AcGePoint2d& e : expected) least = std::min(least, e.distanceTo(near(point)));
    if (reach(point)) {
      EXPECT_LE(least, 0.05);
    }
  }
}

TEST(Intersections, AreThoseOfTheCurvesCutIntoChords) {
  for (const unsigned seed : {1U, 2U}) {
    SCOPED_TRACE(seed);
    const Curves curves(seed);
    const auto& all = curves.all();
    for (std::size_t i = 0; i < all.size(); ++i) {
      for (std::size_t j = i + 1; j < all.size(); ++j) {
        for (const auto type :
             {AcDb::kOnBothOperands, AcDb::kExtendThis, AcDb::kExtendArg, AcDb::kExtendBoth})
          compare(all[i], all[j], type);
      }
    }
  }
}

}  // namespace
