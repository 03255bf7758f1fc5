// What the cursor is pulled to, by hand on a drawing of two crossing lines, a circle and a point.

#include "app/window/snapping.h"
#include "arx/db/dballents.h"
#include "arx/db/dbmain.h"

#include <gtest/gtest.h>

namespace veltora::app {
namespace {

using enum AcEdSnap;

struct Row {
  const char* what;
  std::vector<AcEdSnap> snaps;
  AcGePoint2d cursor;
  std::optional<AcEdSnap> snap;
  AcGePoint2d point{};
};

TEST(Snapping, theNearestPointThatIsMeantIsFound) {
  constexpr double kX = 650000.0, kY = 6860000.0;
  const std::vector<AcEdSnap> usual{kEnd, kMiddle, kNode, kInsertion, kIntersection, kCenter};
  const Row rows[] = {
      {"the end beside the cursor", usual, {39.6, 0.3}, kEnd, {40, 0}},
      {"of points in one place the first kind", usual, {20.3, 0.2}, kMiddle, {20, 0}},
      {"where two lines cross", {kIntersection}, {20.3, 0.2}, kIntersection, {20, 0}},
      {"an end within reach wins over a point farther away", usual, {0.4, 0.4}, kEnd, {0, 0}},
      {"the centre from the arc", usual, {70.2, 0.1}, kCenter, {60, 0}},
      {"the point itself", usual, {80.5, 5.5}, kNode, {80, 5}},
      {"beside a line, away from its ends", usual, {30, 0.5}, std::nullopt},
      {"the foot from the base point", {kPerpendicular, kNearest}, {10.4, 0.2}, kPerpendicular, {10, 0}},
      {"else what passes there", {kPerpendicular, kNearest}, {33, 0.5}, kNearest, {33, 0}},
      {"too far from all", {kEnd, kNearest}, {39, 1.5}, std::nullopt},
      {"no snap in force", {}, {40, 0}, std::nullopt},
  };
  AcDbDatabase drawing;
  const AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
  for (AcDbEntity* const made :
       {static_cast<AcDbEntity*>(new AcDbLine({kX, kY, 0}, {kX + 40, kY, 0})),
        static_cast<AcDbEntity*>(new AcDbLine({kX + 20, kY - 10, 0}, {kX + 20, kY + 10, 0})),
        static_cast<AcDbEntity*>(new AcDbCircle({kX + 60, kY, 0}, AcGeVector3d::kZAxis, 10)),
        static_cast<AcDbEntity*>(new AcDbPoint({kX + 80, kY + 5, 0}))}) {
    ASSERT_EQ(space->appendAcDbEntity(made), Acad::eOk);
    made->close();
  }
  space->close();
  for (const Row& row : rows) {
    const AcGePoint3d cursor(kX + row.cursor.x, kY + row.cursor.y, 0);
    const auto found = snapAt(drawing, row.snaps, cursor, 1.0, {kX + 10, kY + 30, 0});
    ASSERT_EQ(found.has_value(), row.snap.has_value()) << row.what;
    if (!found) continue;
    EXPECT_EQ(found->snap, *row.snap) << row.what;
    EXPECT_NEAR(found->point.x, kX + row.point.x, 1e-6) << row.what;
    EXPECT_NEAR(found->point.y, kY + row.point.y, 1e-6) << row.what;
  }
}

}  // namespace
}  // namespace veltora::app
