#include "support/choice_trial.h"

#include "ed_support.h"
#include "ent_support.h"

#include <random>

namespace {

// The edits are those of the fuzz target, a fixed run of them.
TEST(Choosing, FindsWhatAWalkOverAllEntitiesFinds) {
  for (unsigned seed = 1; seed <= 6; ++seed) {
    std::mt19937 random(seed);
    std::string bytes(2000, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random() & 0xFFU);
    EXPECT_EQ(ChoiceTrial(bytes).run(), "") << "seed " << seed;
  }
}

// Seldom met by chance: a block that is erased is shown by nobody, and comes back.
TEST_F(DrawingTest, ABlockFarFromItsPlaceIsFoundAtBothWheneverItIsThere) {
  const AcDbObjectId block = db->recordOf("BLOCK_RECORD", L"LOIN");
  auto* part = new AcDbLine({50, 0, 0}, {60, 0, 0});
  ASSERT_EQ((AcDbObjectPointer<AcDbBlockTableRecord>(block, AcDb::kForWrite)->appendAcDbEntity(part)),
            Acad::eOk);
  part->close();
  const AcDbObjectId reference = append(*db, new AcDbBlockReference({0, 0, 0}, block));
  const AcEdPicker picker(*db);
  const auto isAt = [&](double x) {
    const std::optional<AcEdHit> hit = picker.pick({x, 0, 0}, 1.0);
    return hit && hit->entity == reference;
  };
  for (int round = 0; round < 2; ++round) {
    EXPECT_TRUE(isAt(0) && isAt(55)) << round;
    EXPECT_FALSE(isAt(30)) << round;
    AcDbObjectPointer<AcDbObject>(block, AcDb::kForWrite)->erase();
    EXPECT_TRUE(isAt(0)) << "its place, where nothing is drawn";
    EXPECT_FALSE(isAt(55)) << round;
    AcDbObjectPointer<AcDbObject>(block, AcDb::kForWrite, true)->erase(false);
  }
}

// Kinds without a class are found by the borders that their groups give, behind what has one.
TEST_F(DrawingTest, KeptKindsAreFoundByTheirBorders) {
  const auto kept = [this](const char* type, const std::string& tags) {
    auto* entity = new AcDbOtherEntity(type);
    entity->dxfIn(ent_test::tagsOf("8 0|" + tags), *db);
    return append(*db, entity);
  };
  const AcDbObjectId border = append(*db, new AcDbLine({0, 0, 0}, {10, 0, 0}));
  const std::string head =
      "100 AcDbHatch|10 0|20 0|30 0|210 0|220 0|230 1|2 X|71 0|91 1|92 7|72 0|73 1|93 4|";
  const AcDbObjectId hatch = kept(
      "HATCH", head +
                   "10 0|20 0|10 10|20 0|10 10|20 10|10 0|20 10|97 0|70 0|75 0|76 1|52 0|41 1|77 0|78 1|53 "
                   "90|43 5|44 0|45 -1|46 0|79 0|98 0");
  const AcDbObjectId solid = kept("SOLID", "100 AcDbTrace|10 20|20 0|11 30|21 0|12 20|22 10|13 30|23 10");
  const AcDbObjectId leader = kept("LEADER", "100 AcDbLeader|76 2|10 40|20 0|30 0|10 50|20 10|30 0");
  const AcEdPicker picker(*db);
  const auto at = [&](double x, double y) {
    const std::optional<AcEdHit> hit = picker.pick({x, y, 0}, 0.5);
    return hit ? hit->entity : AcDbObjectId::kNull;
  };
  EXPECT_EQ(at(10, 5), hatch);
  EXPECT_EQ(at(5, 0), border);
  EXPECT_EQ(at(5, -0.4), border);
  EXPECT_EQ(at(30, 5), solid) << "the file crosses the last two corners";
  EXPECT_EQ(at(45, 5), leader);
  EXPECT_TRUE(at(25, 5).isNull());
  EXPECT_EQ(picker.window({-1, -1, 0}, {11, 11, 0}, false), (std::vector{border, hatch}));
  EXPECT_EQ(picker.window({44, 0, 0}, {100, 6, 0}, true), std::vector{leader});
  EXPECT_TRUE(picker.window({44, 0, 0}, {100, 6, 0}, false).empty());
}

}  // namespace
