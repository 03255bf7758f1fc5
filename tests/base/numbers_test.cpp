#include "base/numbers.h"
#include "base/format.h"
#include "base/free_number.h"
#include "base/growable_array.h"
#include "support/case_rows.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
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

TEST(Numbers, FixedDecimalsAreThoseOfPrintf) {
  const auto expectSame = [](double value) {
    for (const int decimals : {0, 1, 3, 4, 5, 9}) {
      char printed[400];
      std::snprintf(printed, sizeof printed, "%.*f", decimals, value);
      std::replace(std::begin(printed), std::end(printed), ',', '.');  // of the process' locale
      std::string text = "x";
      ajouterFixe(text, value, decimals);
      EXPECT_EQ(text, std::string("x") + printed);
    }
  };
  constexpr double inf = std::numeric_limits<double>::infinity();
  for (const double value :
       {0.0,        -0.0,     0.5,       1.5,         2.5,     0.0005,        1.0005,         1.00005,
        123.456785, 0.000005, 0.9999999, 99.99999999, -12.345, 6860000.12345, 123456789012.5, 1e15,
        1e38,       1e300,    5e-324,    inf,         -inf})
    expectSame(value);
  std::uint64_t seed = 42;
  for (int i = 0; i < 3000; ++i) {
    seed = seed * 6364136223846793005ULL + 1442695040888963407ULL;
    const auto units = static_cast<double>(seed >> 24);
    // Exact halves of the last digit, and their neighbours, are the hard ones.
    const double value = units / (i % 2 ? 1e6 : 1048576.0) / (i % 3 ? 1.0 : 1e4);
    for (const double near : {value, std::nextafter(value, 0.0), std::nextafter(value, 1e38)})
      expectSame(near);
  }
}

TEST(Numbers, ReadingAsTheCLibraryTakesEveryFormOfANumber) {
  EXPECT_EQ(lireReelC(" +12.5e1x"), 125.0);
  EXPECT_EQ(lireReelC("0x1F"), 31.0);
  EXPECT_EQ(lireReelC("INFINITY"), std::numeric_limits<double>::infinity());
  EXPECT_TRUE(std::isnan(lireReelC("NANA")));
  EXPECT_EQ(lireReelC("abc"), 0.0);
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
