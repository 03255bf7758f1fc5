#include "base/numbers.h"
#include "base/format.h"
#include "base/free_number.h"
#include "base/growable_array.h"
#include "support/case_rows.h"

#include <gtest/gtest.h>
#include <cmath>
#include <limits>

namespace veltora::base {
namespace {

TEST(Numbers, LenientReadingTakesTheLongestPrefix) {
  constexpr double inf = std::numeric_limits<double>::infinity();
  for (const CaseRow& row : caseRows("base/cases/numbers.txt", "lenient"))
    EXPECT_EQ(lireReel(row[0]), row.number(1)) << row;
  EXPECT_EQ(lireReel("1e400"), inf);
  EXPECT_EQ(lireReel("-1e400"), -inf);
  EXPECT_EQ(lireReel("\xE9 1"), 0.0);
  EXPECT_EQ(lireReel(L"12,5"), 12.0);
  EXPECT_EQ(lireReel(L"1\u20AC2"), 1.0);
  EXPECT_EQ(lireReel(std::string(400, '9')), inf);
  EXPECT_EQ(lireReel("0." + std::string(400, '0') + "1"), 0.0);
}

TEST(Numbers, IntegersSaturate) {
  EXPECT_EQ(lireEntier("12A"), 12);
  EXPECT_EQ(lireEntier(" -7"), -7);
  EXPECT_EQ(lireEntier("B3"), 0);
  EXPECT_EQ(lireEntier("99999999999999999999999"), std::numeric_limits<int>::max());
  EXPECT_EQ(lireEntier(L"-2147483648"), std::numeric_limits<int>::min());
}

TEST(Numbers, ExactReadingRefusesAnythingElse) {
  double value = 7;
  for (const char* bad : {"", " 1", "1 ", "1a", "inf", "+", "+-1"}) {
    EXPECT_FALSE(lireReelExact(bad, value)) << bad;
    EXPECT_EQ(value, 7) << bad;
  }
  EXPECT_TRUE(lireReelExact("+1.5e3", value));
  EXPECT_EQ(value, 1500);
}

TEST(Numbers, PrintedNumbersReadBackAsTheSame) {
  for (const double value : {0.1, 1.0 / 3.0, 6860000.123456789, 1e38, -5e-324, 1e22}) {
    double back = 0;
    EXPECT_TRUE(lireReelExact(ecrireReel(value), back));
    EXPECT_EQ(back, value);
  }
  EXPECT_EQ(ecrireReel(2), "2.0");
}

TEST(Numbers, AFreeNumberFollowsATakenOneAndCostsAFewQuestions) {
  for (const int last : {0, 1, 2, 3, 7, 8, 1000, 123456}) {
    int asked = 0;
    EXPECT_EQ(freeNumber([&](int number) { return ++asked, number <= last; }), last + 1);
    EXPECT_LE(asked, 40) << last;
  }
  const auto taken = [](int number) { return number <= 5 || (number >= 8 && number <= 20); };
  const int found = freeNumber(taken);
  EXPECT_TRUE(!taken(found) && taken(found - 1)) << found;
}

TEST(Format, FollowsPrintf) {
  EXPECT_EQ(formater("%4f|%.5f|%10s|%-4d|%%|%c", 1.5, 2.0, "abc", 7, 'x'),
            "1.500000|2.00000|       abc|7   |%|x");
  EXPECT_EQ(formater(std::wstring(L"%.2f %ls"), 1.005, std::wstring(L"é")), L"1.00 é");
}

TEST(GrowableArray, AnIndexOutsideRaises) {
  CArray<int> array(10000);
  EXPECT_THROW(array[0], std::invalid_argument);
  for (int i = 0; i < 30; ++i) array.Add(i);
  EXPECT_EQ(array.GetAt(29), 29);
  EXPECT_THROW(array.GetAt(-1), std::invalid_argument);
  EXPECT_THROW(array.GetAt(30), std::invalid_argument);
  array.RemoveAt(0);
  EXPECT_EQ(array[0], 1);
  EXPECT_THROW(array.RemoveAt(29), std::invalid_argument);
}

}  // namespace
}  // namespace veltora::base
