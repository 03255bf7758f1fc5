#include "arx/ent_support.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <ostream>
#include <random>

namespace {

using namespace ent_test;

using Maker = std::function<std::unique_ptr<AcDbCurve>()>;
template <class T, class... Args>
Maker of(Args... args) {
  return [=] { return std::make_unique<T>(args...); };
}
Maker seg(double x1, double y1, double x2, double y2, double z = 0) {
  return of<AcDbLine>(AcGePoint3d(x1, y1, z), AcGePoint3d(x2, y2, z));
}
Maker ring(const AcGePoint3d& center, double radius, const AcGeVector3d& normal = {0, 0, 1}) {
  return of<AcDbCircle>(center, normal, radius);
}
Maker path(const Vertices& vertices, bool closed = false) {
  return [=] { return polyline(vertices, closed); };
}
const Maker kBay = path({{0, 0}, {4, 0, -1}, {8, 0}});
Maker oval(const AcGePoint3d& center, const AcGeVector3d& major, double ratio, double start = 0,
           double end = 2 * kPi, const AcGeVector3d& normal = {0, 0, 1}) {
  return of<AcDbEllipse>(center, normal, major, ratio, start, end);
}
Maker spline(int degree, const std::vector<double>& knots, const std::vector<AcGePoint3d>& controls,
             const std::vector<double>& weights = {}) {
  return of<AcDbSpline>(AcGeNurbs{degree, knots, controls, weights});
}
const std::vector<double> kBezier2 = {0, 0, 0, 1, 1, 1};
const Maker kParabola = spline(2, kBezier2, {{0, 0, 0}, {2, 4, 0}, {4, 0, 0}});  // y = x (4 - x) / 2
// The circle about (3, 4) with radius 2 in four quarters.
const Maker kRoundSpline = spline(
    2, {0, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 4},
    {{5, 4, 0}, {5, 6, 0}, {3, 6, 0}, {1, 6, 0}, {1, 4, 0}, {1, 2, 0}, {3, 2, 0}, {5, 2, 0}, {5, 4, 0}},
    {1, std::sqrt(0.5), 1, std::sqrt(0.5), 1, std::sqrt(0.5), 1, std::sqrt(0.5), 1});

const Maker kOval = oval({}, {5, 0, 0}, 0.6);

struct CurveRow {
  const char* name;
  Maker make;
  double startParam, endParam, length, area;
  bool closed;
};
std::ostream& operator<<(std::ostream& out, const CurveRow& row) { return out << row.name; }

const CurveRow kCurves[] = {
    {"line", of<AcDbLine>(AcGePoint3d(1, 2, 3), AcGePoint3d(4, 6, 15)), 0, 13, 13, 0, false},
    {"circle", ring({3, 4, 5}, 2), 0, 2 * kPi, 4 * kPi, 4 * kPi, true},
    {"tilted circle", ring({3, 4, 5}, 2, {0.6, 0, 0.8}), 0, 2 * kPi, 4 * kPi, 4 * kPi, true},
    {"quarter", of<AcDbArc>(AcGePoint3d(1, 1, 0), 2.0, 0.0, kPi / 2), 0, kPi / 2, kPi, kPi - 2, false},
    {"arc through +X", of<AcDbArc>(AcGePoint3d(1, 1, 0), 2.0, 1.5 * kPi, kPi / 2), 1.5 * kPi, 2.5 * kPi,
     2 * kPi, 2 * kPi, false},
    {"square", path({{0, 0}, {4, 0}, {4, 4}, {0, 4}}, true), 0, 4, 16, 16, true},
    {"two half circles", path({{0, 0, 1}, {4, 0, 1}}, true), 0, 2, 4 * kPi, 4 * kPi, true},
    {"bay", kBay, 0, 2, 4 + 2 * kPi, 2 * kPi, false},
    {"doubled vertex", path({{0, 0}, {3, 4}, {3, 4, 0.7}, {3, 10}}), 0, 3,
     5 + 6 * (1 + 0.49) / 2.8 * 4 * std::atan(0.7), -1, false},
    {"ellipse", oval({3, 4, 5}, {4, 3, 0}, 0.6), 0, 2 * kPi, 20 * std::comp_ellint_2(0.8), 15 * kPi, true},
    {"flat tilted ellipse", oval({3, 4, 5}, {0, 5, 0}, 1e-3, 0, 2 * kPi, {0.6, 0, 0.8}), 0, 2 * kPi,
     20 * std::comp_ellint_2(std::sqrt(1 - 1e-6)), 0.025 * kPi, true},
    {"half ellipse through +X", oval({1, 1, 0}, {5, 0, 0}, 0.6, 1.5 * kPi, 0.5 * kPi), 1.5 * kPi, 2.5 * kPi,
     10 * std::comp_ellint_2(0.8), 7.5 * kPi, false},
    {"parabola", kParabola, 0, 1, 4 * std::sqrt(1.25) + std::asinh(2.0), 16.0 / 3, false},
    {"circle as a spline", kRoundSpline, 0, 4, 4 * kPi, 4 * kPi, true},
    {"spline with loose ends",
     spline(3, {0, 1, 2, 3, 4, 5, 6, 7}, {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}}), 3, 4, 1, 0, false},
    {"spline with a corner", spline(1, {0, 0, 1, 3, 3}, {{0, 0, 0}, {3, 4, 0}, {3, 10, 0}}), 0, 3, 11, 9,
     false},
    {"spline through two points", of<AcDbSpline>(std::vector<AcGePoint3d>{{1, 2, 3}, {4, 6, 15}}), 0, 13, 13,
     0, false},
};

class Curve : public ::testing::TestWithParam<CurveRow> {};

// The same facts where the curve was drawn, in national coordinates, turned and mirrored.
TEST_P(Curve, ParametersLengthsAndPointsAgree) {
  const CurveRow& row = GetParam();
  const AcGeMatrix3d moves[] = {
      AcGeMatrix3d(), AcGeMatrix3d::translation(kFar.asVector()),
      AcGeMatrix3d::rotation(0.7, {0, 0, 1}, {5, -3, 0}), AcGeMatrix3d::scaling(AcGeScale3d(-1, 1, 1)),
      AcGeMatrix3d::translation(kFar.asVector()) * AcGeMatrix3d::rotation(2.1, {0.6, 0, 0.8})};
  for (std::size_t i = 0; i < std::size(moves); ++i) {
    SCOPED_TRACE(i);
    const std::unique_ptr<AcDbCurve> curve = row.make();
    ASSERT_EQ(curve->transformBy(moves[i]), Acad::eOk);
    EXPECT_EQ(curve->isClosed(), row.closed);
    double first = 0, last = 0, length = 0, area = 0;
    ASSERT_EQ(curve->getStartParam(first), Acad::eOk);
    ASSERT_EQ(curve->getEndParam(last), Acad::eOk);
    EXPECT_NEAR(last - first, row.endParam - row.startParam, 1e-9);
    ASSERT_EQ(curve->getDistAtParam(last, length), Acad::eOk);
    EXPECT_NEAR(length, row.length, 2e-9);
    ASSERT_EQ(curve->getArea(area), Acad::eOk);
    if (row.area >= 0) {
      EXPECT_NEAR(area, row.area, 1e-8);
    }
    AcGePoint3d start, end, at;
    ASSERT_EQ(curve->getStartPoint(start), Acad::eOk);
    ASSERT_EQ(curve->getEndPoint(end), Acad::eOk);
    EXPECT_LE(start.distanceTo(end), row.closed ? 1e-9 : 1e9);
    for (double share = 0.053; share < 1; share += 0.09) {
      const double dist = share * length;
      double param = 0, back = 0;
      ASSERT_EQ(curve->getParamAtDist(dist, param), Acad::eOk);
      ASSERT_EQ(curve->getDistAtParam(param, back), Acad::eOk);
      EXPECT_NEAR(back, dist, 1e-9);
      ASSERT_EQ(curve->getPointAtParam(param, at), Acad::eOk);
      ASSERT_EQ(curve->getDistAtPoint(at, back), Acad::eOk);
      EXPECT_NEAR(back, dist, 1e-7);
      AcGeVector3d along;
      ASSERT_EQ(curve->getFirstDeriv(param, along), Acad::eOk);
      AcGePoint3d ahead;
      if (curve->getPointAtParam(param + 1e-5, ahead) != Acad::eOk) continue;
      EXPECT_LE(((ahead - at) * 1e5 - along).length(), 2e-3 + 1e-4 * along.length());
    }
  }
}

// Nearest means: no sampled point is nearer, and a point pushed off the curve comes back.
TEST_P(Curve, ClosestPointIsTheNearest) {
  for (const AcGeVector3d& offset : {AcGeVector3d(0, 0, 0), kFar.asVector()}) {
    const std::unique_ptr<AcDbCurve> curve = GetParam().make();
    curve->transformBy(AcGeMatrix3d::translation(offset));
    double first = 0, last = 0;
    curve->getStartParam(first);
    curve->getEndParam(last);
    for (const AcGeVector3d& probe : {AcGeVector3d(1, 1, 0), AcGeVector3d(-5, 7, 2), AcGeVector3d(9, -1, -3),
                                      AcGeVector3d(3.9, 3.9, 5), AcGeVector3d(0.5, 4.1, 0)}) {
      const AcGePoint3d given = AcGePoint3d::kOrigin + offset + probe;
      AcGePoint3d nearest, sample;
      ASSERT_EQ(curve->getClosestPointTo(given, nearest), Acad::eOk);
      double param = 0;
      EXPECT_EQ(curve->getParamAtPoint(nearest, param), Acad::eOk);
      for (int i = 0; i <= 400; ++i) {
        ASSERT_EQ(curve->getPointAtParam(first + (last - first) * i / 400, sample), Acad::eOk);
        ASSERT_LE(nearest.distanceTo(given), sample.distanceTo(given) + 1e-8);
      }
    }
    double param = 0;
    EXPECT_EQ(curve->getParamAtPoint(AcGePoint3d(99, 99, 99), param), Acad::eInvalidInput);
    EXPECT_EQ(curve->getPointAtParam(last + 0.5, *std::make_unique<AcGePoint3d>()), Acad::eOutOfRange);
  }
}

TEST_P(Curve, ExtentsHoldTheCurveTightly) {
  for (const AcGeMatrix3d& move :
       {AcGeMatrix3d(), AcGeMatrix3d::translation(kFar.asVector()),
        AcGeMatrix3d::rotation(0.4, {0.6, 0.8, 0}), AcGeMatrix3d::scaling(AcGeScale3d(3, 0.5, 1))}) {
    const std::unique_ptr<AcDbCurve> curve = GetParam().make();
    AcDbExtents box, sampled;
    curve->addExtentsUnder(move, box);
    double first = 0, last = 0;
    curve->getStartParam(first);
    curve->getEndParam(last);
    AcGePoint3d point;
    for (int i = 0; i <= 6000; ++i) {
      curve->getPointAtParam(first + (last - first) * i / 6000, point);
      sampled.addPoint(move * point);
    }
    EXPECT_POINT(sampled.minPoint(), box.minPoint(), 1e-4);
    EXPECT_POINT(sampled.maxPoint(), box.maxPoint(), 1e-4);
  }
}

INSTANTIATE_TEST_SUITE_P(Rows, Curve, ::testing::ValuesIn(kCurves));

// Under any map, points of the curve lie on the mapped curve, and its ends are the mapped ends.
TEST_P(Curve, MapsAsItsPointsDo) {
  AcGeMatrix3d skew;
  skew.entry[0][1] = 0.8, skew.entry[1][1] = 0.4, skew.entry[2][0] = 0.3;
  for (const AcGeMatrix3d& map :
       {skew, AcGeMatrix3d::scaling(AcGeScale3d(-2, 0.5, 1)), AcGeMatrix3d::scaling(AcGeScale3d(1, 1, -1)),
        AcGeMatrix3d::translation(kFar.asVector()) * skew * AcGeMatrix3d::rotation(2.1, {0.6, 0, 0.8})}) {
    const std::unique_ptr<AcDbCurve> curve = GetParam().make();
    const std::unique_ptr<AcDbCurve> moved = GetParam().make();
    if (moved->transformBy(map) != Acad::eOk) continue;  // arcs that would be ellipses
    double first = 0, last = 0;
    curve->getStartParam(first);
    curve->getEndParam(last);
    AcGePoint3d from, to, point, found;
    moved->getStartPoint(from);
    moved->getEndPoint(to);
    for (int i = 0; i <= 40; ++i) {
      ASSERT_EQ(curve->getPointAtParam(first + (last - first) * i / 40, point), Acad::eOk);
      const AcGePoint3d wanted = map * point;
      ASSERT_EQ(moved->getClosestPointTo(wanted, found), Acad::eOk);
      EXPECT_POINT(wanted, found, 1e-8);
      if (i == 0 && !curve->isClosed()) {
        EXPECT_LE(std::min(wanted.distanceTo(from), wanted.distanceTo(to)), 1e-8);
      }
    }
  }
}

// Against the definition by the basis functions (Cox and de Boor), of knots of any valid form.
TEST(Spline, IsTheSumOfItsBasisFunctions) {
  const std::function<double(const std::vector<double>&, std::size_t, int, double)> basis =
      [&](const std::vector<double>& u, std::size_t i, int p, double x) -> double {
    if (p == 0) return u[i] <= x && x < u[i + 1] ? 1.0 : 0.0;
    const auto n = static_cast<std::size_t>(p);
    const double left = u[i + n] - u[i], right = u[i + n + 1] - u[i + 1];
    return (left > 0 ? (x - u[i]) / left * basis(u, i, p - 1, x) : 0.0) +
           (right > 0 ? (u[i + n + 1] - x) / right * basis(u, i + 1, p - 1, x) : 0.0);
  };
  std::mt19937 random(7);
  std::uniform_real_distribution<double> any(0, 1);
  for (const std::vector<double>& knots : {std::vector<double>{0, 0, 0, 0, 1, 1, 3, 3.5, 4, 4, 4, 4},
                                           {-2, 0, 1, 2, 3, 4, 5, 7, 7.5, 9, 9, 10},
                                           {5, 5, 5, 5, 6, 6, 6, 9, 9, 9, 9, 9}}) {
    for (const bool weighted : {false, true}) {
      AcGeNurbs nurbs{3, knots, {}, {}};
      for (int i = 0; i < 8; ++i) {
        nurbs.controls.emplace_back(650000 + 50 * any(random), 6860000 + 50 * any(random), any(random));
        if (weighted) nurbs.weights.push_back(0.2 + 3 * any(random));
      }
      const AcDbSpline curve(nurbs);
      ASSERT_EQ(curve.numControlPoints(), 8);
      for (int k = 0; k < 50; ++k) {
        const double x = knots[3] + (knots[8] - knots[3]) * any(random);
        AcGeVector3d sum;
        double weight = 0;
        for (std::size_t i = 0; i < 8; ++i) {
          const double b = basis(knots, i, 3, x) * curve.weightAt(static_cast<int>(i));
          sum = sum + (nurbs.controls[i] - kFar) * b;
          weight += b;
        }
        AcGePoint3d found;
        ASSERT_EQ(curve.getPointAtParam(x, found), Acad::eOk);
        EXPECT_POINT(kFar + sum * (1 / weight), found, 1e-8) << x;
      }
    }
  }
}

// The derivatives of weighted curves are those of their points.
TEST(Spline, HasTheDerivativesOfItsPoints) {
  const AcGeBezierCurve3d curve(kFar, {{{0, 0, 0}, 1}, {{2, 6, 1}, 2}, {{9, -3, 2}, 0.7}, {{8, 4, 0}, 1.5}});
  constexpr double h = 1e-4;
  for (double t = 0.05; t < 1; t += 0.1) {
    const auto before = curve.jetAt(t - h), at = curve.jetAt(t), after = curve.jetAt(t + h);
    EXPECT_LE(((after.point - before.point) * (0.5 / h) - at.first).length(), 1e-4);
    EXPECT_LE(((after.first - before.first) * (0.5 / h) - at.second).length(), 1e-4);
  }
}

// Without control points: through the fit points, neither direction nor curvature jumps, ends as told.
TEST(Spline, ThroughFitPointsIsSmooth) {
  AcDbDatabase db;
  const std::string points =
      "|11 650000|21 6860000|31 0|11 650010|21 6860004|31 1|11 650013|21 6860020|31 0|"
      "11 650000|21 6860025|31 0|11 649990|21 6860011|31 2";
  for (const char* head : {"70 0|71 3", "70 1|71 3", "70 0|71 3|12 0|22 2|32 0|13 3|23 0|33 0"}) {
    const auto entity = read(db, "SPLINE", std::string("100 AcDbEntity|8 0|100 AcDbSpline|") + head + points);
    const AcDbSpline* curve = AcDbSpline::cast(entity.get());
    ASSERT_NE(curve, nullptr);
    const bool closed = head[3] == '1';
    EXPECT_EQ(curve->isClosed(), closed);
    const auto pieces = curve->pieces();
    ASSERT_EQ(pieces.size(), closed ? 5U : 4U);
    for (std::size_t i = 0; i < pieces.size(); ++i) {
      AcGePoint3d fit;
      curve->getFitPointAt(static_cast<int>(i), fit);
      EXPECT_POINT(fit, pieces[i].start, 0);
      const bool ends = i + 1 == pieces.size();
      if (ends && !closed) continue;
      const AcGeCurvePiece& next = pieces[(i + 1) % pieces.size()];
      const double h = pieces[i].endParam - pieces[i].startParam, k = next.endParam - next.startParam;
      const auto before = pieces[i].bezier->jetAt(1), after = next.bezier->jetAt(0);
      EXPECT_LE((before.first * (1 / h) - after.first * (1 / k)).length(), 1e-9);
      EXPECT_LE((before.second * (1 / (h * h)) - after.second * (1 / (k * k))).length(), 1e-9);
    }
    const auto first = pieces.front().bezier->jetAt(0), last = pieces.back().bezier->jetAt(1);
    if (head[9] == '\0' && !closed) {
      EXPECT_LE(first.second.length() + last.second.length(), 1e-9);
    } else if (!closed) {
      EXPECT_LE((first.first.normal() - AcGeVector3d(0, 1, 0)).length(), 1e-12);
      EXPECT_LE((last.first.normal() - AcGeVector3d(1, 0, 0)).length(), 1e-12);
    }
  }
}

// Every place of a parallel lies at the distance, on its side; on the inner side of a bend not beyond its
// radius.
TEST(CurveParallel, KeepsItsDistance) {
  const Maker slope = spline(1, {0, 0, 1, 2, 2}, {{0, 0, 0}, {4, 0, 0}, {4, 3, 0}});
  const struct {
    Maker make;
    double offset;
    std::size_t count;  // of the parallels, none where there is no parallel
  } rows[] = {{kOval, 1, 1},
              {kOval, -1.5, 1},
              {kOval, -2, 0},
              {kParabola, 0.2, 1},
              {kParabola, -3, 1},
              {kRoundSpline, 1, 1},
              {kRoundSpline, -1.9, 1},
              {slope, 0.5, 2},
              {oval({0, 0, 0}, {0, 5, 0}, 0.6, 1, 2, {0.6, 0, 0.8}), 1, 1}};
  for (const auto& row : rows) {
    const std::unique_ptr<AcDbCurve> curve = row.make();
    curve->transformBy(AcGeMatrix3d::translation(kFar.asVector()));
    std::vector<AcDbCurve*> parallels;
    EXPECT_EQ(curve->getOffsetCurves(row.offset, parallels), row.count > 0 ? Acad::eOk : Acad::eInvalidInput);
    ASSERT_EQ(parallels.size(), row.count) << row.offset;
    for (AcDbCurve* raw : parallels) {
      const std::unique_ptr<AcDbCurve> parallel(raw);
      double first = 0, last = 0, own = 0, wider = 0;
      parallel->getStartParam(first);
      parallel->getEndParam(last);
      for (int i = 0; i <= 300; ++i) {
        AcGePoint3d at, foot;
        ASSERT_EQ(parallel->getPointAtParam(first + (last - first) * i / 300, at), Acad::eOk);
        curve->getClosestPointTo(at, foot);
        EXPECT_NEAR(at.distanceTo(foot), std::fabs(row.offset), 1e-6 * std::fabs(row.offset) + 2e-9);
      }
      if (!curve->isClosed()) continue;
      curve->getArea(own);
      parallel->getArea(wider);
      EXPECT_EQ(wider > own, row.offset > 0);
    }
  }
}

// Groups that give no curve stay file text; they neither crash nor stop the reading.
TEST(CurveGroups, StayTextWhenTheyGiveNoCurve) {
  const std::string oval = "10 0|20 0|30 0|", bezier = "|40 0|40 0|40 0|40 1|40 1|40 1";
  const std::string three = "|10 0|20 0|30 0|10 1|20 2|30 0|10 2|20 0|30 0";
  const struct {
    const char* type;
    std::string groups;
  } rows[] = {
      {"ELLIPSE", oval + "11 0|21 0|31 0|40 0.5"},
      {"ELLIPSE", oval + "11 1|21 0|31 0|40 0"},
      {"ELLIPSE", oval + "11 1|21 0|31 0|40 -0.5"},
      {"ELLIPSE", oval + "11 0|21 0|31 2|40 0.5"},  // the axis stands on the plane
      {"ELLIPSE", oval + "11 1|21 0|31 0|40 0.5|41 1e300"},
      {"ELLIPSE", "10 1e200|20 0|30 0|11 1|21 0|31 0|40 0.5"},
      {"ELLIPSE", oval + "11 1|21 deux|31 0|40 0.5"},
      {"SPLINE", "70 8|71 0|40 0|40 1|10 0|20 0|30 0"},
      {"SPLINE", "70 8|71 100" + bezier + three},
      {"SPLINE", "70 8|71 -1" + bezier + three},
      {"SPLINE", "70 8|71 3" + bezier + three},                       // too few control points
      {"SPLINE", "70 8|71 2|40 0|40 0|40 0|40 1|40 1" + three},       // a knot is missing
      {"SPLINE", "70 8|71 2|40 0|40 0|40 2|40 1|40 3|40 3" + three},  // knots that descend
      {"SPLINE", "70 8|71 2|40 1|40 1|40 1|40 1|40 1|40 1" + three},  // no range
      {"SPLINE",
       "70 8|71 1|40 0|40 0.5|40 0.5|40 0.5|40 1|10 0|20 0|30 0|10 1|20 1|30 0|10 2|20 2|30 0|40 2"},
      {"SPLINE", "70 8|71 2" + bezier + "|41 1|41 0|41 1" + three},  // a weight of 0
      {"SPLINE", "70 8|71 2" + bezier + "|41 1|41 1" + three},       // a weight is missing
      {"SPLINE", "70 8|71 2" + bezier + "|10 0|20 0|30 0|10 1e300|20 2|30 0|10 2|20 0|30 0"},
      {"SPLINE", "70 0|71 3|11 1|21 1|31 1"},
      {"SPLINE", "70 0|71 3"},
      {"XLINE", "10 0|20 0|30 0|11 0|21 0|31 0"},
  };
  AcDbDatabase db;
  for (const auto& row : rows) {
    const std::string marker = row.type[0] == 'E' ? "Ellipse" : row.type[0] == 'S' ? "Spline" : "Xline";
    const std::string groups = "100 AcDbEntity|8 0|100 AcDb" + marker + "|" + row.groups;
    const auto entity = read(db, row.type, groups);
    EXPECT_EQ(entity->isA(), AcDbOtherEntity::desc()) << row.groups;
    EXPECT_EQ(written(*entity), groups);
  }
}

TEST(CurveExtended, GoesOnBeyondItsEnds) {
  const AcDbLine line({0, 0, 0}, {10, 0, 0});
  AcGePoint3d found;
  EXPECT_EQ(line.getClosestPointTo({-4, 3, 0}, found), Acad::eOk);
  EXPECT_POINT(AcGePoint3d(0, 0, 0), found, 0);
  EXPECT_EQ(line.getClosestPointTo({-4, 3, 0}, found, true), Acad::eOk);
  EXPECT_POINT(AcGePoint3d(-4, 0, 0), found, 1e-12);
  const AcDbArc arc({0, 0, 0}, 5, 0, kPi / 2);
  EXPECT_EQ(arc.getClosestPointTo({-9, 0, 0}, found, true), Acad::eOk);
  EXPECT_POINT(AcGePoint3d(-5, 0, 0), found, 1e-12);
  const auto open = polyline({{0, 0}, {10, 0}, {10, 10}});
  EXPECT_EQ(open->getClosestPointTo({12, 25, 0}, found, true), Acad::eOk);
  EXPECT_POINT(AcGePoint3d(10, 25, 0), found, 1e-12);
  AcDbRay ray;
  ray.setBasePoint({1, 1, 0});
  ray.setUnitDir({3, 4, 0});
  EXPECT_EQ(ray.getClosestPointTo({301, 401, 0}, found), Acad::eOk);
  EXPECT_POINT(AcGePoint3d(301, 401, 0), found, 1e-9);
  EXPECT_EQ(ray.getPointAtDist(500, found), Acad::eOk);
  EXPECT_POINT(AcGePoint3d(301, 401, 0), found, 1e-9);
  EXPECT_EQ(ray.getClosestPointTo({-9, 0, 0}, found), Acad::eOk);
  EXPECT_POINT(AcGePoint3d(1, 1, 0), found, 1e-12);
  AcDbExtents box;
  EXPECT_EQ(ray.getGeomExtents(box), Acad::eInvalidExtents);
  EXPECT_EQ(ray.getEndPoint(found), Acad::eNotApplicable);
  AcDbXline xline;
  xline.setBasePoint({1, 1, 0});
  xline.setUnitDir({3, 4, 0});
  EXPECT_EQ(xline.getClosestPointTo({-299, -399, 0}, found), Acad::eOk);
  EXPECT_POINT(AcGePoint3d(-299, -399, 0), found, 1e-9);
  EXPECT_EQ(xline.getPointAtParam(-500, found), Acad::eOk);
  EXPECT_POINT(AcGePoint3d(-299, -399, 0), found, 1e-9);
  EXPECT_EQ(xline.getGeomExtents(box), Acad::eInvalidExtents);
  EXPECT_EQ(xline.getStartPoint(found), Acad::eNotApplicable);
  const AcDbEllipse part({0, 0, 0}, {0, 0, 1}, {5, 0, 0}, 0.6, 0, kPi / 2);
  EXPECT_EQ(part.getClosestPointTo({-9, 0, 0}, found, true), Acad::eOk);
  EXPECT_POINT(AcGePoint3d(-5, 0, 0), found, 1e-12);
  EXPECT_EQ(part.getClosestPointTo({-9, 0, 0}, found), Acad::eOk);
  EXPECT_POINT(AcGePoint3d(0, 3, 0), found, 1e-12);
}

// Every curve without extent answers each question with a status or a finite value.
TEST(CurveDegenerate, AnswersWithoutNonsense) {
  AcDbRay still;
  AcDbDatabase db;
  std::unique_ptr<AcDbEntity> flatRay =
      read(db, "RAY", "100 AcDbEntity|8 0|100 AcDbRay|10 1.0|20 1.0|30 0.0|11 0.0|21 0.0|31 0.0");
  const Maker makers[] = {
      seg(1, 2, 1, 2, 3),
      ring({1, 2, 3}, 0, {0, 0, 0}),
      of<AcDbArc>(AcGePoint3d(1, 2, 3), 0.0, 1.0, 1.0),
      path({}),
      path({}, true),
      path({{1, 2, 0.5}}, true),
      path({{1, 2, 0.5}, {1, 2, 0.5}}, true),
      path({{0, 0, 1e300}, {1, 0, 1e-300}, {2, 0}}, true),
      [&] { return std::unique_ptr<AcDbCurve>(AcDbCurve::cast(flatRay.release())); },
      of<AcDb2dPolyline>(),
      of<AcDb3dPolyline>(),
      of<AcDbSpline>(),
      spline(1, {0, 0, 1, 1}, {{1, 2, 3}, {1, 2, 3}}),
  };
  int index = 0;
  for (const Maker& make : makers) {
    SCOPED_TRACE(index++);
    const std::unique_ptr<AcDbCurve> curve = make();
    AcGePoint3d point(7, 7, 7);
    double value = 7;
    const AcDbLine through({-10, 2, 3}, {10, 2, 3});
    AcGePoint3dArray points;
    for (const Acad::ErrorStatus status :
         {curve->getClosestPointTo({5, 5, 5}, point), curve->getClosestPointTo({5, 5, 5}, point, true),
          curve->getStartPoint(point), curve->getEndPoint(point), curve->getPointAtParam(0, point),
          curve->getDistAtParam(0, value), curve->getParamAtDist(0, value), curve->getArea(value),
          curve->getParamAtPoint({1, 2, 3}, value),
          curve->intersectWith(&through, AcDb::kExtendBoth, points)}) {
      EXPECT_TRUE(status == Acad::eOk || status == Acad::eDegenerateGeometry ||
                  status == Acad::eNotApplicable || status == Acad::eInvalidInput ||
                  status == Acad::eOutOfRange);
      EXPECT_TRUE(std::isfinite(point.x + point.y + point.z) && std::isfinite(value));
    }
    AcGePoint3d nan(std::nan(""), 0, 0);
    EXPECT_NE(curve->getParamAtPoint(nan, value), Acad::eOk);
    EXPECT_NE(curve->getPointAtParam(std::nan(""), point), Acad::eOk);
    std::vector<AcDbCurve*> offsets;
    if (curve->getOffsetCurves(std::nan(""), offsets) == Acad::eOk) ADD_FAILURE() << "offset by no number";
  }
}

struct MeetRow {
  const char* name;
  Maker first, second;
  AcDb::Intersect type;
  std::vector<AcGePoint3d> points;
};
std::ostream& operator<<(std::ostream& out, const MeetRow& row) { return out << row.name; }

constexpr AcDb::Intersect kBoth = AcDb::kOnBothOperands;
const Maker kBlock = path({{0, 0}, {2, 0}, {4, 0}, {4, 4}, {0, 4}}, true);
const double kAcross = std::sqrt(225.0 / 34);
Maker endless(const AcGePoint3d& base, const AcGeVector3d& direction) {
  return [=] {
    auto line = std::make_unique<AcDbXline>();
    line->setBasePoint(base);
    line->setUnitDir(direction);
    return line;
  };
}
const MeetRow kMeetings[] = {
    {"lines", seg(0, 0, 4, 4), seg(0, 4, 4, 0), kBoth, {{2, 2, 0}}},
    {"lines above each other", seg(0, 0, 4, 4), seg(0, 4, 4, 0, 1), kBoth, {}},
    {"end on line", seg(0, 0, 4, 0), seg(2, 0, 2, 9), kBoth, {{2, 0, 0}}},
    {"too short", seg(0, 0, 1, 0), seg(3, -1, 3, 1), kBoth, {}},
    {"the first goes on", seg(0, 0, 1, 0), seg(3, -1, 3, 1), AcDb::kExtendThis, {{3, 0, 0}}},
    {"the wrong one goes on", seg(0, 0, 1, 0), seg(3, -1, 3, 1), AcDb::kExtendArg, {}},
    {"parallel", seg(0, 0, 4, 0), seg(2, 0, 9, 0), AcDb::kExtendBoth, {}},
    {"line through circle", seg(-9, 3, 9, 3), ring({0, 0, 0}, 5), kBoth, {{-4, 3, 0}, {4, 3, 0}}},
    {"line touches circle", seg(-9, 5, 9, 5), ring({0, 0, 0}, 5), kBoth, {{0, 5, 0}}},
    {"line pierces an upright circle", seg(3, -9, 3, 9, 4), ring({}, 5, {0, 1, 0}), kBoth, {{3, 0, 4}}},
    {"line and half circle", seg(3, -9, 3, 9), of<AcDbArc>(AcGePoint3d(), 5.0, 0.0, kPi), kBoth, {{3, 4, 0}}},
    {"circles", ring({0, 0, 0}, 5), ring({6, 0, 0}, 5, {0, 0, -1}), kBoth, {{3, -4, 0}, {3, 4, 0}}},
    {"circles that touch", ring({0, 0, 0}, 5), ring({2, 0, 0}, 3), kBoth, {{5, 0, 0}}},
    {"circles of two planes", ring({0, 0, 0}, 5), ring({5, 0, 0}, 2, {0, 1, 0}), kBoth, {}},
    {"planes that meet", ring({0, 0, 0}, 5), ring({7, 0, 0}, 2, {0, 1, 0}), kBoth, {{5, 0, 0}}},
    {"a corner counts once", path({{0, 0}, {5, 5}, {10, 0}}), seg(5, -9, 5, 9), kBoth, {{5, 5, 0}}},
    {"line through a bay", kBay, seg(6, -9, 6, 9), kBoth, {{6, 2, 0}}},
    {"lines that overlap", seg(0, 0, 4, 0), seg(2, 0, 9, 0), kBoth, {{2, 0, 0}, {4, 0, 0}}},
    {"overlapped by a line that goes on",
     seg(0, 0, 4, 0),
     seg(2, 0, 9, 0),
     AcDb::kExtendThis,
     {{2, 0, 0}, {9, 0, 0}}},
    {"edges on a line", kBlock, seg(-9, 0, 9, 0), kBoth, {{0, 0, 0}, {2, 0, 0}, {4, 0, 0}}},
    {"a construction line through it",
     endless({-3, -3, 0}, {1, 1, 0}),
     kBlock,
     kBoth,
     {{0, 0, 0}, {4, 4, 0}}},
    {"a doubled corner on a line",
     path({{0, 0}, {5, 5}, {5, 5}, {10, 0}}),
     seg(5, -9, 5, 9),
     kBoth,
     {{5, 5, 0}}},
    {"an arc of a circle",
     ring({1, 2, 0}, 5),
     of<AcDbArc>(AcGePoint3d(1, 2, 0), 5.0, 0.0, kPi / 2),
     kBoth,
     {{6, 2, 0}, {1, 7, 0}}},
    {"circles that are one", ring({1, 2, 0}, 5), ring({1, 2, 0}, 5), kBoth, {}},
    {"line through ellipse", kOval, seg(3, -9, 3, 9), kBoth, {{3, 2.4, 0}, {3, -2.4, 0}}},
    {"line touches ellipse", kOval, seg(-9, 3, 9, 3), kBoth, {{0, 3, 0}}},
    {"line pierces an upright ellipse",
     seg(3, -9, 3, 9, 2.4),
     oval({}, {5, 0, 0}, 0.6, 0, 2 * kPi, {0, 1, 0}),
     kBoth,
     {{3, 0, 2.4}}},
    {"circle through ellipse",
     kOval,
     ring({}, 4),
     kBoth,
     {{std::sqrt(175) / 4, 2.25, 0},
      {std::sqrt(175) / 4, -2.25, 0},
      {-std::sqrt(175) / 4, 2.25, 0},
      {-std::sqrt(175) / 4, -2.25, 0}}},
    {"circle around ellipse", ring({}, 5), kOval, kBoth, {{5, 0, 0}, {-5, 0, 0}}},
    {"circle in ellipse, by its curvature", ring({3.2, 0, 0}, 1.8), kOval, kBoth, {{5, 0, 0}}},
    {"ellipses that touch", kOval, oval({10, 0, 0}, {0, 3, 0}, 5.0 / 3), kBoth, {{5, 0, 0}}},
    {"ellipses across",
     kOval,
     oval({}, {0, 5, 0}, 0.6),
     kBoth,
     {{kAcross, kAcross, 0}, {kAcross, -kAcross, 0}, {-kAcross, kAcross, 0}, {-kAcross, -kAcross, 0}}},
    {"half of an ellipse on it", kOval, oval({}, {5, 0, 0}, 0.6, 0, kPi), kBoth, {{5, 0, 0}, {-5, 0, 0}}},
    {"ellipses that are one", kOval, oval({}, {0, 3, 0}, 5.0 / 3), kBoth, {}},
    {"half an ellipse goes on",
     oval({}, {5, 0, 0}, 0.6, 0, kPi),
     seg(3, -9, 3, -1),
     AcDb::kExtendThis,
     {{3, -2.4, 0}}},
    {"half an ellipse ends",
     oval({}, {5, 0, 0}, 0.6, 0, kPi),
     seg(3, -9, 3, -1),
     AcDb::kExtendArg,
     {{3, 2.4, 0}}},
    {"line through spline", kParabola, seg(-9, 1.5, 9, 1.5), kBoth, {{1, 1.5, 0}, {3, 1.5, 0}}},
    {"line touches spline", kParabola, seg(-9, 2, 9, 2), kBoth, {{2, 2, 0}}},
    {"line just above spline", kParabola, seg(-9, 2.0001, 9, 2.0001), kBoth, {}},
    {"a spline ends where it ends", kParabola, seg(-9, -1, 9, -1), AcDb::kExtendBoth, {}},
    {"end of a spline on a line", kParabola, seg(4, -9, 4, 9), kBoth, {{4, 0, 0}}},
    {"half of a spline on it",
     kParabola,
     spline(2, kBezier2, {{0, 0, 0}, {1, 2, 0}, {2, 2, 0}}),
     kBoth,
     {{0, 0, 0}, {2, 2, 0}}},
    {"a spline that is a circle, on it", kRoundSpline, ring({3, 4, 0}, 2), kBoth, {}},
    {"bay and ellipse that touch", kBay, oval({6, -1, 0}, {0, 3, 0}, 0.3), kBoth, {{6, 2, 0}}},
};

class Meeting : public ::testing::TestWithParam<MeetRow> {};

TEST_P(Meeting, GivesThePointsInCommon) {
  const MeetRow& row = GetParam();
  for (const AcGeMatrix3d& move :
       {AcGeMatrix3d(), AcGeMatrix3d::translation(kFar.asVector()),
        AcGeMatrix3d::scaling(AcGeScale3d(1, -1, 1)),
        AcGeMatrix3d::translation(kFar.asVector()) * AcGeMatrix3d::rotation(1.1, {0, 0, 1})}) {
    for (const bool swapped : {false, true}) {
      const std::unique_ptr<AcDbCurve> first = row.first();
      const std::unique_ptr<AcDbCurve> second = row.second();
      first->transformBy(move);
      second->transformBy(move);
      AcGePoint3dArray points;
      AcDb::Intersect type = row.type;
      if (swapped && (type == AcDb::kExtendThis || type == AcDb::kExtendArg)) {
        type = type == AcDb::kExtendThis ? AcDb::kExtendArg : AcDb::kExtendThis;
      }
      ASSERT_EQ(swapped ? second->intersectWith(first.get(), type, points)
                        : first->intersectWith(second.get(), type, points),
                Acad::eOk);
      ASSERT_EQ(points.size(), row.points.size()) << swapped;
      for (const AcGePoint3d& expected : row.points) {
        double least = 1e9;
        for (const AcGePoint3d& p : points) least = std::min(least, p.distanceTo(move * expected));
        EXPECT_LE(least, 1e-7);
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Rows, Meeting, ::testing::ValuesIn(kMeetings));

TEST(CurveSearch, FindsToTheBitWhatTheWalkOverAllPiecesFinds) {
  std::mt19937 random(11);
  const auto between = [&](double from, double to) {
    return std::uniform_real_distribution<double>(from, to)(random);
  };
  constexpr double kX = 650000, kY = 6860000;
  Vertices bent, tied;  // turns of all kinds; vertices on a grid, where many places are equally near
  for (int i = 0; i < 60; ++i) {
    bent.push_back({kX + between(0, 50), kY + between(0, 50), i % 3 ? between(-2, 2) : 0.0});
    tied.push_back({kX + i % 8, kY + i / 8.0 - i % 8 / 8.0});
  }
  AcDbDatabase db;
  auto* raised = new AcDb3dPolyline;
  const AcDbObjectId raisedId = addTo(db.modelSpaceId(), raised);
  {
    const AcDbObjectPointer<AcDb3dPolyline> open(raisedId, AcDb::kForWrite);
    for (int i = 0; i < 60; ++i) {
      auto* vertex = new AcDb3dPolylineVertex({kX + between(0, 50), kY + between(0, 50), between(-30, 30)});
      AcDbObjectId id;
      ASSERT_EQ(open->appendVertex(id, vertex), Acad::eOk);
      vertex->close();
    }
  }
  const auto bentCurve = polyline(bent, true);
  const auto tiedCurve = polyline(tied, false);
  AcDbRay ray;
  ray.setBasePoint({kX + 20, kY + 20, 5}), ray.setUnitDir({1, 2, 0.5});
  const AcDbCurve* const curves[] = {bentCurve.get(), tiedCurve.get(), raised, &ray};
  for (const AcDbCurve* curve : curves) {
    AcDbCurveSearch search(*curve);
    int found = 0;
    for (int i = 0; i < 400; ++i) {
      const bool onGrid = i % 2 == 0;
      const AcGePoint3d given(kX + (onGrid ? i % 16 / 2.0 : between(-60, 110)),
                              kY + (onGrid ? i % 9 / 2.0 : between(-60, 110)),
                              i % 5 ? 0.0 : between(-40, 40));
      const double reach = i % 3 ? between(0, 10) : 1e6;
      AcGePoint3d right, nearest;
      ASSERT_EQ(curve->getClosestPointTo(given, right), Acad::eOk);
      if (search.closestWithin(reach, given, nearest)) {
        ++found;
        EXPECT_TRUE(nearest.x == right.x && nearest.y == right.y && nearest.z == right.z) << i;
      } else {
        EXPECT_GT(std::hypot(right.x - given.x, right.y - given.y), reach) << i;
      }
      for (const AcGePoint3d& on : {right, given}) {
        double wanted = -1, param = -1;
        const bool onCurve = curve->getParamAtPoint(on, wanted) == Acad::eOk;
        EXPECT_EQ(search.paramAtPoint(on, param), onCurve) << i;
        EXPECT_EQ(param, wanted) << i;
      }
    }
    EXPECT_GT(found, 130);
  }
  AcGePoint3d nothing;
  EXPECT_FALSE(AcDbCurveSearch(AcDbPolyline()).closestWithin(1e9, {}, nothing));
}

}  // namespace
