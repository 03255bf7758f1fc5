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
  EXPECT_EQ(compareNoCase(L"Été", L"éTÉ"), 0);
  EXPECT_LT(compareNoCase(L"ab", L"ABC"), 0);
  EXPECT_GT(compareNoCaseAnsi("b", "A"), 0);
}

/// The letters of the page in both cases, as its definition pairs them.
constexpr std::string_view kLower =
    "abcdefghijklmnopqrstuvwxyz\x9A\x9C\x9E\xFF\xE0\xE1\xE2\xE3\xE4\xE5\xE6\xE7\xE8\xE9\xEA\xEB\xEC\xED\xEE"
    "\xEF"
    "\xF0\xF1\xF2\xF3\xF4\xF5\xF6\xF8\xF9\xFA\xFB\xFC\xFD\xFE";
constexpr std::string_view kUpper =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZ\x8A\x8C\x8E\x9F\xC0\xC1\xC2\xC3\xC4\xC5\xC6\xC7\xC8\xC9\xCA\xCB\xCC\xCD\xCE"
    "\xCF"
    "\xD0\xD1\xD2\xD3\xD4\xD5\xD6\xD8\xD9\xDA\xDB\xDC\xDD\xDE";

TEST(Text, TheCaseOfEachByteStaysInTheCodePage) {
  ASSERT_EQ(kLower.size(), kUpper.size());
  for (int i = 0; i < 256; ++i) {
    const std::string byte(1, static_cast<char>(i));
    const std::size_t small = kLower.find(byte);
    const std::size_t capital = kUpper.find(byte);
    const std::string upper(1, small == std::string_view::npos ? byte[0] : kUpper[small]);
    const std::string lower(1, capital == std::string_view::npos ? byte[0] : kLower[capital]);
    EXPECT_EQ(narrow(toUpper(widen(byte))), upper) << i;
    EXPECT_EQ(narrow(toLower(widen(byte))), lower) << i;
    EXPECT_EQ(toUpperAnsi(byte), upper) << i;
    EXPECT_EQ(toLowerAnsi(byte), lower) << i;
  }
  EXPECT_EQ(toUpper(L"ıſ"), L"ıſ") << "letters of no name that a point could bear stay apart from I and S";
  EXPECT_EQ(toLower(L"\u0130\u212A"), L"\u0130\u212A");
  EXPECT_EQ(toUpper(L"жαš"), L"ЖΑŠ");
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
