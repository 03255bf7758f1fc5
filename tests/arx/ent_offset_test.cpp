#include "arx/db/dboffset.h"
#include "arx/ed/edsnap.h"
#include "arx/ed_support.h"
#include "arx/ent_support.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace ent_test;

// The side of a place, in front of segments and of corners, sharp ones too: there neither segment alone tells
// it.
TEST(SideOf, CountsBothSegmentsAtACorner) {
  const struct {
    const char* name;
    Vertices vertices;
    AcGePoint3d place;
    int side;
  } rows[] = {
      {"left of a line", {{0, 0, 0}, {10, 0, 0}}, {5, 1, 50}, 1},
      {"right of it", {{0, 0, 0}, {10, 0, 0}}, {5, -1, 0}, -1},
      {"on it", {{0, 0, 0}, {10, 0, 0}}, {5, 0, 0}, 0},
      {"outside a right angle", {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}}, {12, -1, 0}, -1},
      {"beyond a spike, above its first side", {{0, 0, 0}, {10, 0, 0}, {0, 1, 0}}, {13, 0.1, 0}, -1},
      {"beyond a spike, below it", {{0, 0, 0}, {10, 0, 0}, {0, 1, 0}}, {13, -0.4, 0}, -1},
      {"within a spike", {{0, 0, 0}, {10, 0, 0}, {0, 1, 0}}, {3, 0.3, 0}, 1},
      {"within an arc", {{0, 0, 1}, {10, 0, 0}}, {5, -3, 0}, 1},
      {"outside an arc", {{0, 0, 1}, {10, 0, 0}}, {5, -6, 0}, -1},
  };
  for (const auto& row : rows) {
    for (const AcGeVector3d& far : {AcGeVector3d(), kFar.asVector()}) {
      const std::unique_ptr<AcDbPolyline> curve = polyline(row.vertices);
      curve->transformBy(AcGeMatrix3d::translation(far));
      EXPECT_EQ(acdbSideOf(*curve, row.place + far), row.side) << row.name;
    }
  }
}

// The parallel lies on the side of the place and as far as told, whichever way the plane of the curve looks.
TEST(OffsetTowards, LiesOnTheSideOfThePlace) {
  for (const double up : {1.0, -1.0}) {
    for (const double y : {4.0, -4.0}) {
      const std::unique_ptr<AcDbPolyline> curve = polyline({{0, 0, 0}, {-10, 0, 0}, {-20, 0, 0}});
      curve->setNormal({0, 0, up});
      const double x = -5 * up;
      std::vector<std::unique_ptr<AcDbCurve>> made;
      ASSERT_EQ(acdbOffsetTowards(*curve, 1.5, {x, y, 0}, made), Acad::eOk);
      ASSERT_EQ(made.size(), 1U);
      AcGePoint3d near;
      made[0]->getClosestPointTo({x, 0, 0}, near);
      EXPECT_POINT(AcGePoint3d(x, std::copysign(1.5, y), 0), near, 1e-9);
    }
  }
  // Inside a small circle nothing is left, outside there is.
  const AcDbCircle circle({0, 0, 0}, AcGeVector3d::kZAxis, 2);
  std::vector<std::unique_ptr<AcDbCurve>> made;
  EXPECT_EQ(acdbOffsetTowards(circle, 3, {1, 0, 0}, made), Acad::eInvalidInput);
  EXPECT_EQ(acdbOffsetTowards(circle, 3, {9, 0, 0}, made), Acad::eOk);
  EXPECT_EQ(acdbOffsetTowards(circle, 3, {2, 0, 0}, made), Acad::eInvalidInput) << "on the curve";
}

TEST(SnapWords, AreReadInBothLanguages) {
  using Snaps = std::vector<AcEdSnap>;
  const struct {
    const wchar_t* line;
    Snaps snaps;
  } rows[] = {{L"_end", {AcEdSnap::kEnd}},
              {L" _ENDP ", {AcEdSnap::kEnd}},
              {L"ext", {AcEdSnap::kEnd}},
              {L"mid,_int", {AcEdSnap::kMiddle, AcEdSnap::kIntersection}},
              {L"milieu", {AcEdSnap::kMiddle}},
              {L"_nea", {AcEdSnap::kNearest}},
              {L"PRO", {AcEdSnap::kNearest}},
              {L"_ext", {}},  // of the international words another snap
              {L"_en", {}},   // too short
              {L"endx", {}},
              {L"5,5", {}},
              {L"_end,", {}},
              {L"", {}},
              {L"_end 5,5", {}}};
  for (const auto& row : rows) EXPECT_EQ(acedReadSnaps(row.line).value_or(Snaps()), row.snaps) << row.line;
}

// A person is told that nothing is there; the words before it do not hold for the next answer.
TEST_F(DrawingTest, ASnapThatFindsNothingIsForgotten) {
  line(0, 0, 10, 0);
  answer({"_end", "500,500", "9,0"}, true);
  ads_point given;
  ASSERT_EQ(acedGetPoint(nullptr, L"Point : ", given), RTNORM);
  EXPECT_EQ(given[0], 9);
  EXPECT_TRUE(transcript.has("Pas de point d'accrochage"));
  answer({"_end", "9.99,0"}, true);
  ASSERT_EQ(acedGetPoint(nullptr, L"Point : ", given), RTNORM);
  EXPECT_EQ(given[0], 10);
}

// What a block shows is snapped to where it shows it: turned, mirrored, within another block, at its height.
TEST_F(DrawingTest, SnapsReachIntoBlocks) {
  const AcDbObjectId inner = block(*db, L"INNER");
  addTo(inner, new AcDbLine({0, 0, 0}, {2, 0, 0}));
  addTo(inner, new AcDbCircle({10, 0, 0}, AcGeVector3d::kZAxis, 1));
  const AcDbObjectId outer = block(*db, L"OUTER");
  auto* turned = new AcDbBlockReference({0, 5, 0}, inner);
  turned->setRotation(kPi / 2);
  addTo(outer, turned);
  auto* shown = new AcDbBlockReference({650000, 6860000, 7}, outer);
  shown->setScaleFactors({-2, 2, 2});
  append(*db, shown);
  const auto snap = [&](AcEdSnap kind, double x, double y) {
    return acedSnap(*db, {kind}, {650000 + x, 6860000 + y, 0}, 0.5, {});
  };
  const std::optional<AcGePoint3d> end = snap(AcEdSnap::kEnd, 0.1, 13.6);
  ASSERT_TRUE(end);
  EXPECT_POINT(AcGePoint3d(650000, 6860014, 7), *end, 1e-8);
  const std::optional<AcGePoint3d> center = snap(AcEdSnap::kCenter, -2.1, 30);
  ASSERT_TRUE(center);
  EXPECT_POINT(AcGePoint3d(650000, 6860030, 7), *center, 1e-8);
  EXPECT_FALSE(snap(AcEdSnap::kCenter, 0, 30)) << "the circle itself is picked";
  EXPECT_FALSE(snap(AcEdSnap::kNode, 0.1, 13.6));
}

}  // namespace
