#include "arx/ent_support.h"
#include "support/case_rows.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <memory>
#include <set>
#include <sstream>

namespace {

using ent_test::tagsOf;
using ent_test::written;

template <class T>
AcDbObject* made(std::istream&) {
  return new T;
}

/// An object as the case file names it.
AcDbObject* objectOf(const std::string& named) {
  static const std::map<std::string, AcDbObject* (*)(std::istream&)> kMakers = {
      {"AcDbLayerTableRecord", made<AcDbLayerTableRecord>},
      {"AcDbLinetypeTableRecord", made<AcDbLinetypeTableRecord>},
      {"AcDbTextStyleTableRecord", made<AcDbTextStyleTableRecord>},
      {"AcDbBlockTableRecord", made<AcDbBlockTableRecord>},
      {"AcDbViewportTableRecord", made<AcDbViewportTableRecord>},
      {"AcDbDictionary", made<AcDbDictionary>},
      {"AcDbGroup", made<AcDbGroup>},
      {"AcDbSymbolTable", made<AcDbSymbolTable>}};
  std::istringstream words(named);
  std::string name, type, subclass;
  words >> name >> type >> subclass;
  if (name == "AcDbOtherObject") return new AcDbOtherObject(type);
  if (name == "AcDbOtherTableRecord") return new AcDbOtherTableRecord(type, subclass);
  return kMakers.at(name)(words);
}

/// The groups of a brief text in an order of their own, for comparisons.
std::multiset<std::string> groupsOf(const std::string& brief) {
  std::istringstream in(brief);
  std::multiset<std::string> groups;
  for (std::string group; std::getline(in, group, '|');) groups.insert(group);
  return groups;
}

/// A resident object made from the groups behind its type.
template <class T>
T* loaded(AcDbDatabase& db, T* object, const std::string& brief, AcDbHandle handle = 0xA0) {
  db.undoLog().setRecording(false);
  AcDbObjectId id;
  db.addWithHandle(id, object, handle);
  object->dxfIn(tagsOf(brief), db);
  db.undoLog().setRecording(true);
  return object;
}

TEST(DxfRoundTrip, NothingOfAnObjectIsLost) {
  for (const CaseRow& row : caseRows("arx/cases/objects.txt", "nothing of an object is lost", ';')) {
    AcDbDatabase db(false);
    db.setHandseed(0x10000);
    ASSERT_FALSE(db.recordOf("LTYPE", L"Continuous").isNull());
    const AcDbObject* const object = loaded(db, objectOf(row[1]), row[2]);
    // A reference whose object is not in memory is written all the same: the file may hold it in a part kept
    // raw.
    AcDbObjectId xdictionary;
    db.addWithHandle(xdictionary, new AcDbDictionary, 0xA1);
    EXPECT_EQ(dxfWritten(*object).find("  0\n" + std::string(object->dxfName()) + "\n"), 0U) << row;
    EXPECT_EQ(groupsOf(written(*object)), groupsOf(row[2])) << row;
  }
}

TEST(DxfRoundTrip, KeptGroupsStandInTheirSections) {
  AcDbDatabase db(false);
  db.setHandseed(0x1000);
  const auto* layer = loaded(db, new AcDbLayerTableRecord,
                             "5 A0|330 0|100 AcDbSymbolTableRecord|1 un|100 AcDbLayerTableRecord|2 V|390 "
                             "F|62 7|70 0|6 Continuous|101 Embedded Object|62 9|100 Plus|1 x");
  EXPECT_EQ(written(*layer),
            "5 A0|330 0|100 AcDbSymbolTableRecord|1 un|100 AcDbLayerTableRecord|2 V|70 0|62 7|6 "
            "Continuous|370 -3|390 F|101 Embedded Object|62 9|100 Plus|1 x");
}

TEST(DxfRoundTrip, ReferencesToErasedObjectsBecomeZero) {
  AcDbDatabase db(false);
  db.setHandseed(0x1000);
  AcDbObjectId gone;
  auto* victim = new AcDbXrecord;
  db.addAcDbObject(gone, victim);
  const auto* object = loaded(db, new AcDbOtherObject("SUN"),
                              "5 A0|102 {ACAD_REACTORS|330 1000|102 }|330 1000|100 AcDbSun|340 1000|70 1000|"
                              "1001 APP|1005 1000");
  victim->erase();
  victim->close();
  EXPECT_EQ(written(*object), "5 A0|330 0|100 AcDbSun|340 0|70 1000|1001 APP|1005 0");
}

TEST(DxfReader, OldFilesWithoutMarkersOfferEachGroupToEveryClass) {
  AcDbDatabase db(false);
  const auto* layer = loaded(db, new AcDbLayerTableRecord, "2 VOIE|70 0|62 3|6 CONTINUOUS|999 rien");
  EXPECT_EQ(layer->name(), L"VOIE");
  EXPECT_EQ(layer->color().colorIndex(), 3);
  const std::multiset<std::string> out = groupsOf(written(*layer));
  EXPECT_EQ(out.count("999 rien"), 1U);
  EXPECT_EQ(out.count("62 3"), 1U);
}

TEST(DxfReader, BadValuesNameGroupAndLine) {
  for (const CaseRow& row : caseRows("arx/cases/objects.txt", "bad values of a text style", ';')) {
    AcDbDatabase db(false);
    AcDbTextStyleTableRecord style;
    try {
      style.dxfIn(tagsOf(row[1]), db);
      ADD_FAILURE() << row << ": no error";
    } catch (const DxfError& error) {
      EXPECT_EQ(std::to_string(error.line), row[2]) << row;
      EXPECT_EQ(error.message, row[3]) << row;
    }
  }
  AcDbDatabase db(false);
  AcDbTextStyleTableRecord style;
  EXPECT_NO_THROW(
      style.dxfIn(tagsOf("100 AcDbTextStyleTableRecord|40  +1.5E0 |41 1e-999|71 4294967295|42 7"), db));
  EXPECT_EQ(style.textSize(), 1.5);
}

TEST(DxfReader, MissingRecordsAreMadeOnce) {
  AcDbDatabase db(false);
  const std::vector<DxfTag> tags = tagsOf("8 Voie|8 VOIE|8 |6 TIRETS");
  AcDbDxfReader in(tags, db);
  ASSERT_TRUE(in.enter("X"));
  in.next();
  const AcDbObjectId layer = in.layer();
  in.next();
  EXPECT_EQ(in.layer(), layer);
  in.next();
  EXPECT_TRUE(in.layer().isNull());
  in.next();
  EXPECT_TRUE(in.linetype().isLive());
  EXPECT_FALSE(in.next());
}

TEST(DxfText, FileFormsOfTextGoBothWays) {
  const std::tuple<std::string, std::wstring, bool> rows[] = {
      {"Borne n°1 é €", L"Borne n°1 é €", true},
      {"a^Jb^M^Ic", L"a\nb\r\tc", true},
      {"x^ 2", L"x^2", true},
      {"x^", L"x^", false},
      {"^a", L"^a", false},  // not a capital
      {"\\U+00E9t\\U+00e9", L"été", false},
      {"\\U+D83D\\U+DE00", L"\U0001F600", false},
      {"\\U+00G9 \\U+12", L"\\U+00G9 \\U+12", true},
      {"\xF0\x9F\x98\x80", L"\U0001F600", true},
      {std::string("A\xE9") + "B\xC3", std::wstring(L"A") + wchar_t(0xDCE9) + L"B" + wchar_t(0xDCC3), true},
      {"{\\fArial;\\P}%%c", L"{\\fArial;\\P}%%c", true},
      {"", L"", true},
  };
  for (const auto& [file, wide, bothWays] : rows) {
    EXPECT_EQ(dxfToWide(file), wide) << file;
    EXPECT_EQ(dxfFromWide(wide) == file, bothWays) << file << ": " << dxfFromWide(wide);
    EXPECT_EQ(dxfToWide(dxfFromWide(wide)), wide) << file;
  }
}

TEST(DxfWriter, NumbersReadBackAsTheyWere) {
  const std::pair<double, const char*> reals[] = {
      {0, "0.0"},           {-0.0, "-0.0"},
      {1, "1.0"},           {650000.123, "650000.123"},
      {1e38, "1e+38"},      {0.1, "0.1"},
      {1e-7, "1e-07"},      {6860000.1234567892, "6860000.123456789"},
      {1e22, "1e+22"},      {std::numeric_limits<double>::infinity(), "0.0"},
      {std::nan(""), "0.0"}};
  std::string text;
  AcDbDxfWriter out([&](std::string_view piece) { text += piece; });
  std::string expected;
  for (const auto& [value, digits] : reals) {
    out.real(40, value);
    expected += std::string(" 40\n") + digits + '\n';
  }
  out.integer(1071, std::numeric_limits<Adesk::Int64>::min());
  out.handle(5, 0xABCDEF);
  out.text(1, "a\nb");
  out.normal({0, 0, 1});
  out.flush();
  EXPECT_EQ(text, expected + "1071\n-9223372036854775808\n  5\nABCDEF\n  1\na^Jb\n");
}

TEST(DxfWriter, LargeOutputComesInPiecesAndWhole) {
  std::string text;
  std::size_t pieces = 0;
  const std::string large(700000, 'x');
  {
    AcDbDxfWriter out([&](std::string_view piece) { text += piece, ++pieces; });
    for (int i = 0; i < 100000; ++i) out.integer(90, i);
    out.raw(" 1\n" + large + '\n');
    out.text(1, large);
  }
  EXPECT_GT(pieces, 3u);
  std::string expected;
  for (int i = 0; i < 100000; ++i) expected += " 90\n" + std::to_string(i) + "\n";
  EXPECT_TRUE(text == expected + " 1\n" + large + "\n  1\n" + large + '\n');
}

TEST(DxfTags, KindsFollowTheRangesOfGroupCodes) {
  using enum DxfKind;
  const std::pair<DxfKind, std::vector<int>> rows[] = {
      {kText, {0, 9, 102, 309, 410, 430, 470}},
      {kHandle, {5, 105}},
      {kPoint, {10, 18, 112, 210, 1011}},
      {kReal, {19, 20, 59, 140, 230, 460, 1042}},
      {kInt16, {60, 79, 179, 289, 370, 400, 1070}},
      {kInt32, {90, 420, 450, 1071}},
      {kInt64, {160}},
      {kBool, {290}},
      {kBinary, {310, 1004}},
      {kPointer, {330, 369, 390, 399, 481, 1005}},
      {kName, {-1}},
      {kUnknown, {80, 180, 482, 1072, -99}},
  };
  for (const auto& [kind, codes] : rows)
    for (const int code : codes) EXPECT_EQ(dxfKind(code), kind) << code;
}

TEST(DxfTags, AWalkEndsAtWhatIsNoGroup) {
  const std::pair<const char*, int> rows[] = {{"", 0},
                                              {"1\na\n", 1},
                                              {" 1\r\na\r\n", 1},
                                              {"1\na", 1},
                                              {"1\n", 1},
                                              {"1", 0},
                                              {"x\na\n1\nb\n", 0},
                                              {"1\na\n1x\nb\n", 1},
                                              {"99999999999\na\n", 0}};
  for (const auto& [text, count] : rows) {
    DxfTagText::Cursor cursor{text};
    DxfTag tag;
    int walked = 0;
    while (cursor.next(tag)) ++walked;
    EXPECT_EQ(walked, count) << text;
  }
}

}  // namespace
