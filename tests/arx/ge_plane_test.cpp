#include "arx/ge/gearc2d.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr double kPi = 3.141592653589793;
constexpr AcGeVector2d kShifts[] = {{0, 0}, {650000, 6860000}};

// Arcs through a chord: centre, radius and middle, by hand.
TEST(CircArc2d, RunsThroughItsChord) {
  const struct {
    AcGePoint2d start, end;
    double bulge;
    AcGePoint2d center, middle;
    double radius;
  } rows[] = {
      {{0, 0}, {4, 0}, 1, {2, 0}, {2, -2}, 2},
      {{0, 0}, {4, 0}, -1, {2, 0}, {2, 2}, 2},
      {{4, 0}, {0, 4}, std::tan(kPi / 8), {0, 0}, {4 * std::sqrt(0.5), 4 * std::sqrt(0.5)}, 4},
      {{4, 0}, {0, 4}, -std::tan(3 * kPi / 8), {0, 0}, {-4 * std::sqrt(0.5), -4 * std::sqrt(0.5)}, 4},
  };
  for (const AcGeVector2d& shift : kShifts) {
    for (const auto& row : rows) {
      const AcGeCircArc2d arc(row.start + shift, row.end + shift, row.bulge);
      EXPECT_LE(arc.center().distanceTo(row.center + shift), 4e-9);
      EXPECT_NEAR(arc.radius(), row.radius, 4e-9);
      EXPECT_LE(arc.startPoint().distanceTo(row.start + shift), 4e-9);
      EXPECT_LE(arc.endPoint().distanceTo(row.end + shift), 4e-9);
      EXPECT_LE(arc.pointAt(arc.startAng() + arc.sweep() / 2).distanceTo(row.middle + shift), 4e-9);
      EXPECT_EQ(arc.isClockWise(), row.bulge < 0);
      EXPECT_NEAR(arc.paramOf(row.middle + shift), 0.5, 1e-8);
      EXPECT_TRUE(arc.isOn(row.middle + shift, {1e-8, 1e-8}));
      EXPECT_FALSE(arc.isOn(row.center + shift + (row.center - row.middle), {1e-8, 1e-8}));
    }
  }
}

TEST(CircArc2d, WithoutExtentAnswersItsStart) {
  for (const AcGeCircArc2d& arc : {AcGeCircArc2d({3, 4}, {3, 4}, 1), AcGeCircArc2d({3, 4}, {5, 4}, 0),
                                   AcGeCircArc2d({3, 4}, {5, 4}, std::nan("")), AcGeCircArc2d({3, 4}, 0)}) {
    EXPECT_LE(arc.closestPointTo({9, 9}).distanceTo({3, 4}), 1e-12);
    EXPECT_EQ(arc.length(), 0);
  }
}

TEST(CircArc2d, MeetsLinesAndCircles) {
  const struct {
    const char* name;
    AcGeLineSeg2d segment;
    int count;
  } rows[] = {
      {"through both sides", {{-9, 3}, {9, 3}}, 2},
      {"ends inside", {{0, 3}, {9, 3}}, 1},
      {"touches", {{-9, 5}, {9, 5}}, 1},
      {"misses", {{-9, 6}, {9, 6}}, 0},
      {"inside", {{-1, 0}, {1, 0}}, 0},
      {"no length", {{5, 0}, {5, 0}}, 0},
  };
  for (const AcGeVector2d& shift : kShifts) {
    const AcGeTol tol{shift.x > 0 ? 1e-8 : 1e-10, 1e-10};
    const AcGeCircArc2d circle(AcGePoint2d() + shift, -5);
    AcGePoint2d points[2];
    for (const auto& row : rows) {
      const AcGeLineSeg2d moved(row.segment.startPoint() + shift, row.segment.endPoint() + shift);
      const int count = circle.intersectWith(moved, points, tol);
      EXPECT_EQ(count, row.count) << row.name;
      for (int i = 0; i < count; ++i)
        EXPECT_TRUE(circle.isOn(points[i], {1e-7, 0}) && moved.isOn(points[i], {1e-7, 0}));
    }
    const auto meet = [&](double x, double radius) {
      return circle.intersectWith(AcGeCircArc2d(AcGePoint2d(x, 0) + shift, radius), points, tol);
    };
    EXPECT_EQ(meet(6, 5), 2);
    EXPECT_EQ(meet(8, 3), 1);  // from outside
    EXPECT_EQ(meet(2, 3), 1);  // from inside
    EXPECT_EQ(meet(9, 3), 0);
    EXPECT_EQ(meet(1, 3), 0);
    EXPECT_EQ(meet(0, 5), 0);  // the same circle
  }
}

TEST(Line2d, MeetsOnlyWhatIsNotParallel) {
  for (const AcGeVector2d& shift : kShifts) {
    const AcGePoint2d o = AcGePoint2d() + shift;
    const AcGeLine2d line(o, o + AcGeVector2d(4, 4));
    AcGePoint2d found{7, 7};
    EXPECT_FALSE(line.intersectWith(AcGeLine2d(o + AcGeVector2d(1, 0), o + AcGeVector2d(5, 4)), found));
    EXPECT_FALSE(line.intersectWith(AcGeLine2d(o, o), found));
    EXPECT_EQ(found, AcGePoint2d(7, 7));
    ASSERT_TRUE(line.intersectWith(AcGeLine2d(o + AcGeVector2d(10, 0), o + AcGeVector2d(10, 1)), found));
    EXPECT_LE(found.distanceTo(o + AcGeVector2d(10, 10)), 1e-8);
    EXPECT_NEAR(line.distanceTo(o + AcGeVector2d(2, 0)), std::sqrt(2), 1e-8);
    const AcGeLineSeg2d segment(o, o + AcGeVector2d(4, 0));
    EXPECT_FALSE(
        segment.intersectWith(AcGeLineSeg2d(o + AcGeVector2d(5, -1), o + AcGeVector2d(5, 1)), found));
    EXPECT_TRUE(segment.intersectWith(AcGeLineSeg2d(o + AcGeVector2d(4, 0), o + AcGeVector2d(4, 1)), found));
    EXPECT_NEAR(segment.paramOf(o + AcGeVector2d(-2, 3)), -0.5, 1e-9);
    EXPECT_LE(segment.closestPointTo(o + AcGeVector2d(-2, 3)).distanceTo(o), 0);
    EXPECT_GT(segment.side(o + AcGeVector2d(1, 1)), 0);
    EXPECT_EQ(AcGeLineSeg2d(o, o).paramOf(o + AcGeVector2d(1, 1)), 0);
  }
}

}  // namespace
