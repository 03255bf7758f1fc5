// Entry of every unit test program: takes over the locale of the environment, as a program with a window
// would, so that a decimal comma or another collation shows.
#include <gtest/gtest.h>

#include <clocale>

int main(int argc, char** argv) {
  std::setlocale(LC_ALL, "");
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
