#include "base/box_index.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

namespace veltora::base {
namespace {

using Numbers = std::vector<std::size_t>;

/// What the index must find, by looking at every box.
Numbers search(const std::vector<PlaneBox>& boxes, const std::vector<bool>& there, const PlaneBox& q) {
  Numbers found;
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    const PlaneBox& b = boxes[i];
    const bool apart =
        std::max(b.x0, b.x1) < std::min(q.x0, q.x1) || std::min(b.x0, b.x1) > std::max(q.x0, q.x1) ||
        std::max(b.y0, b.y1) < std::min(q.y0, q.y1) || std::min(b.y0, b.y1) > std::max(q.y0, q.y1);
    if (there[i] && !apart) found.push_back(i);
  }
  return found;
}

TEST(BoxIndex, FindsWhatTouchesWhileBoxesMove) {
  std::mt19937 random(7);
  // Places on whole numbers touch each other at their sides.
  std::uniform_int_distribution<int> place(0, 40);
  std::uniform_int_distribution<int> side(-3, 3);
  const auto box = [&] {
    const double x = 650000 + place(random);
    const double y = 6860000 + place(random);
    return PlaneBox{x, y, x + side(random), y + side(random)};
  };
  std::vector<PlaneBox> boxes(300);
  std::generate(boxes.begin(), boxes.end(), box);
  std::vector<bool> there(boxes.size(), true);
  BoxIndex index(boxes);
  for (int round = 0; round < 600; ++round) {
    const std::size_t i = random() % boxes.size();
    if (there[i]) index.remove(i, boxes[i]);
    if (round % 3 == 0) {
      there[i] = false;
    } else {
      boxes[i] = box();
      there[i] = true;
      index.add(i, boxes[i]);
    }
    const PlaneBox asked = box();
    ASSERT_EQ(index.touching(asked), search(boxes, there, asked)) << round;
  }
  EXPECT_EQ(index.size(), static_cast<std::size_t>(std::count(there.begin(), there.end(), true)));
}

TEST(BoxIndex, BoxesWithoutAPlaceAreEverywhere) {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  constexpr double inf = std::numeric_limits<double>::infinity();
  BoxIndex index({{0, 0, 1, 1}, {nan, 0, 1, 1}, {5, 5, 6, 6}, {0, 0, inf, 1}});
  index.add(4, {-1e300, 0, 1e300, 1});
  EXPECT_EQ(index.touching({0.5, 0.5, 2, 2}), (Numbers{0, 1, 3, 4}));
  EXPECT_EQ(index.touching({nan, 0, 1, 1}), (Numbers{0, 1, 2, 3, 4}));
  index.remove(1, {nan, 0, 1, 1});
  EXPECT_EQ(index.touching({8, 8, 9, 9}), (Numbers{3, 4}));
  EXPECT_EQ(index.size(), 4U);
  BoxIndex none;
  EXPECT_EQ(none.touching({0, 0, 1, 1}), Numbers{});
}

}  // namespace
}  // namespace veltora::base
