#include "support/choice_trial.h"

#include "ed_support.h"

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

}  // namespace
