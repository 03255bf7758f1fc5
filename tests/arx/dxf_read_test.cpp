// What drawing files may look like: accepted, mended with a finding, or refused with file and line.
#include "arx/dxf_text.h"
#include "support/case_rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace {

const std::string kHead = "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1032\n0\nENDSEC\n";

std::string withReturns(std::string text) {
  for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 2) text.insert(at, "\r");
  return text;
}

std::string ofReturns(std::string text) {
  std::replace(text.begin(), text.end(), '\n', '\r');
  return text;
}

std::string withPage(const std::string& version, const std::string& page, const std::string& text) {
  return dxfText("SECTION|2 HEADER|9 $ACADVER|1 " + version + "|9 $DWGCODEPAGE|3 " + page +
                 "|9 $HANDSEED|5 500|ENDSEC|SECTION|2 ENTITIES|POINT|5 30|100 AcDbEntity|8 " + text +
                 "|100 AcDbPoint|10 1|20 2|30 3|ENDSEC|EOF");
}

/// The text that a row of the case file describes.
std::string textOf(const std::string& described) {
  const std::size_t blank = described.find(' ');
  const std::string kind = described.substr(0, blank);
  std::string rest = described.substr(blank + 1);
  if (kind == "page") {
    std::istringstream words(rest);
    std::string version, page;
    words >> version >> page >> rest;
    return withPage(version, page, rest);
  }
  if (kind == "entities") return dxfWithEntities(rest);
  if (kind == "head") return kHead + dxfText(rest);
  if (kind == "groups") return dxfText(rest);
  return kind == "text" ? rest : kHead + rest;
}

struct Reading {
  std::string name;
  std::string text;
  std::string message;  // part of the refusal or of a finding; empty for none
  std::string kept;     // part of what is saved
};
void PrintTo(const Reading& row, std::ostream* out) { *out << row.name; }

/// The rows of the case file, and some whose bytes do not go into it.
std::vector<Reading> withRows(const char* table, std::vector<Reading> more) {
  for (const CaseRow& row : caseRows("arx/cases/drawings.txt", table, ';'))
    more.push_back({row[0], textOf(row[1]), row[2], row.cells.size() > 3 ? row[3] : ""});
  return more;
}

class DxfRefusal : public testing::TestWithParam<Reading> {};

TEST_P(DxfRefusal, namesFileAndLineAndLeavesTheDatabaseEmpty) {
  DxfLoaded drawing(GetParam().text);
  EXPECT_NE(drawing.status, Acad::eOk);
  EXPECT_NE(drawing.messageText().find("\"essai.dxf\""), std::string::npos) << drawing.messageText();
  EXPECT_NE(drawing.messageText().find(GetParam().message), std::string::npos) << drawing.messageText();
  EXPECT_TRUE(drawing.database.allObjects().empty());
  EXPECT_TRUE(drawing.database.headers().empty());
}

INSTANTIATE_TEST_SUITE_P(
    All, DxfRefusal,
    testing::ValuesIn(withRows(
        "refused",
        {{"binary drawing", std::string("AC1032\0\0\0\0\1\2", 12), "dessin binaire", ""},
         {"zero byte at the start", std::string("DXF\r\n\x1a\0\0\0SECTION\0", 16), "ligne 2 : octet nul", ""},
         {"zero byte far behind",
          dxfWithEntities("POINT|8 " + std::string(5000, 'x') + "|6 a" + std::string("\0b", 2)),
          "ligne 24 : octet nul", ""},
         {"strange version", dxfWithEntities("", "AC2.22"), "version de dessin \"AC2.22\" inconnue", ""}})));

class DxfReading : public testing::TestWithParam<Reading> {};

TEST_P(DxfReading, isCompletedAndSavesTheSameTextAgain) {
  DxfLoaded drawing(GetParam().text);
  ASSERT_EQ(drawing.status, Acad::eOk) << drawing.messageText();
  const std::string wanted = GetParam().message;
  const bool found =
      std::any_of(drawing.findings.begin(), drawing.findings.end(),
                  [&](const std::string& text) { return text.find(wanted) != std::string::npos; });
  EXPECT_TRUE(wanted.empty() ? drawing.findings.empty() : found) << testing::PrintToString(drawing.findings);
  for (const char* kind :
       {"VPORT", "LTYPE", "LAYER", "STYLE", "VIEW", "UCS", "APPID", "DIMSTYLE", "BLOCK_RECORD"}) {
    EXPECT_TRUE(drawing.database.tableId(kind).isValid()) << kind;
  }
  EXPECT_TRUE(drawing.database.modelSpaceId().isValid());
  EXPECT_TRUE(drawing.database.namedObjectsDictionaryId().isValid());
  const std::string first = drawing.saved();
  EXPECT_NE(first.find(GetParam().kept), std::string::npos) << first;
  DxfLoaded again(first);
  ASSERT_EQ(again.status, Acad::eOk) << again.messageText();
  EXPECT_TRUE(again.findings.empty()) << testing::PrintToString(again.findings);
  EXPECT_EQ(again.saved(), first);
  for (const AcDbObjectId id : again.database.allObjects()) EXPECT_LT(id.handle(), again.database.handseed());
}

const std::string kLine =
    dxfWithEntities("LINE|5 30|100 AcDbEntity|8 0|100 AcDbLine|10 1.5|20 2|30 0|11 3|21 4|31 0");

INSTANTIATE_TEST_SUITE_P(
    All, DxfReading,
    testing::ValuesIn(withRows(
        "read",
        {{"line ends of two characters", withReturns(kLine), "", " 10\n1.5\n"},
         {"line ends of the third kind", ofReturns(kLine), "", " 10\n1.5\n"},
         {"end mark behind the end", kLine + "\x1a", "", " 10\n1.5\n"},
         {"byte order mark", "\xEF\xBB\xBF" + kLine, "", " 10\n1.5\n"},
         {"comments in front", "999\nfait à la main\n" + kLine, "", "999\nfait à la main\n"},
         {"lone return in a text", withPage("AC1032", "ANSI_1252", "a\rb"), "", "  8\na^Mb\n"},
         {"western page", withPage("AC1015", "ANSI_1252", "\xE9t\xE9 \x80"), "", "  8\nété €\n"},
         {"greek page", withPage("AC1018", "ansi_1253", "\xE1"), "", "  8\nα\n"},
         {"version named in a comment",
          "999\nd'après $ACADVER\n999\nAC1032\n" + withPage("AC1018", "ansi_1253", "\xE1"), "", "  8\nα\n"},
         {"unknown page", withPage("AC1015", "KLINGON", "\xE9"), "", "  8\né\n"},
         {"wrong encoding", withPage("AC1032", "ANSI_1252", "\xE9"), "UTF-8", "  8\né\n"}})));

}  // namespace
