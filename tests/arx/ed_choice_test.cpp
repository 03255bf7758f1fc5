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

}  // namespace
