#include "base/text.h"

#include <gtest/gtest.h>

namespace veltora::base {
namespace {

TEST(Text, Windows1252BytesSurviveTheRoundTrip) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all.push_back(static_cast<char>(byte));
  EXPECT_EQ(narrow(widen(all)), all);
  EXPECT_EQ(widen("\x80\x9C\xE9"), L"€œé");
  EXPECT_EQ(narrow(L"x\u4E2Dy"), "x?y");
}

TEST(Text, Utf8RefusesWhatIsNotWellFormed) {
  struct Row {
    const char* bytes;
    bool good;
  };
  const Row rows[] = {{"abc é € \xF0\x9F\x93\x90", true},
                      {"\xC3", false},              // cut
                      {"\xC0\xAF", false},          // overlong
                      {"\xED\xA0\x80", false},      // surrogate
                      {"\xF4\x90\x80\x80", false},  // past the last code point
                      {"\xE9t\xE9", false}};        // another code page
  for (const Row& row : rows) {
    EXPECT_EQ(isUtf8(row.bytes), row.good) << row.bytes;
    EXPECT_EQ(toUtf8(fromUtf8(row.bytes)) == row.bytes, row.good) << row.bytes;
  }
  EXPECT_EQ(fromUtf8("a\xE9z"), L"a\uFFFDz");
}

TEST(Text, CaseMappingIsUnicodeWhateverTheLocale) {
  EXPECT_EQ(toUpper(L"élève œuf"), L"ÉLÈVE ŒUF");
  EXPECT_EQ(toLower(L"ÉLÈVE ŒUF"), L"élève œuf");
  EXPECT_EQ(toUpperAnsi("\xE9\xFF"), "\xC9\x9F");  // y with diaeresis has its capital in the high half
  EXPECT_EQ(toUpperAnsi("\xB5"), "\xB5");          // the capital of the micro sign lies outside the page
  EXPECT_EQ(compareNoCase(L"Été", L"éTÉ"), 0);
  EXPECT_LT(compareNoCase(L"ab", L"ABC"), 0);
  EXPECT_GT(compareNoCaseAnsi("b", "A"), 0);
}

TEST(Text, TrimTakesOnlyTheCharactersOfTheSet) {
  EXPECT_EQ(trim(L" \tab \t"), L"ab");
  EXPECT_EQ(trim(L"*. 7 .*", L" *."), L"7");
  EXPECT_EQ(trim(L" *.", L" *."), L"");
  EXPECT_EQ(trimLeft(L"\tab "), L"ab ");
  EXPECT_EQ(trimRight(L"\tab "), L"\tab");
  EXPECT_EQ(trim(std::string_view("\n x"), " "), "\n x");
}

}  // namespace
}  // namespace veltora::base
