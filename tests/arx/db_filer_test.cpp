#include "arx/dxf_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>

namespace {

template <class T>
AcDbObject* made() {
  return new T;
}

/// Groups as a list of "code value" for comparisons; reads its own copy of the text.
std::vector<std::string> listed(const std::string& text) {
  DxfTagText tags;
  tags.assign(text);
  std::vector<std::string> list;
  DxfTagText::Cursor cursor = tags.tags();
  for (DxfTag tag; cursor.next(tag);) list.push_back(std::to_string(tag.code) + ' ' + std::string(tag.value));
  return list;
}

std::string joined(const std::string& text) {
  std::string all;
  for (const std::string& group : listed(text)) all += group + "|";
  return all;
}

std::vector<std::string> sorted(std::vector<std::string> list) {
  std::sort(list.begin(), list.end());
  return list;
}

/// "5:A 330:1F" as file text; "~" stands for a blank inside a value.
std::string fileText(const std::string& brief) {
  std::string text;
  for (std::size_t at = 0; at < brief.size();) {
    const std::size_t end = std::min(brief.find(' ', at), brief.size());
    std::string item = brief.substr(at, end - at);
    std::replace(item.begin(), item.end(), '~', ' ');
    const std::size_t colon = item.find(':');
    text += item.substr(0, colon) + '\n' + item.substr(colon + 1) + '\n';
    at = end + 1;
  }
  return text;
}

std::vector<DxfTag> tagsOf(const std::string& text) {
  std::vector<DxfTag> tags;
  DxfTagText::Cursor cursor{text};
  for (DxfTag tag; cursor.next(tag);) {
    tag.line = static_cast<Adesk::UInt32>(2 * tags.size() + 2);
    tags.push_back(tag);
  }
  return tags;
}

/// A resident object made from the groups behind its type.
template <class T>
T* loaded(AcDbDatabase& db, T* object, const std::string& text, AcDbHandle handle) {
  db.undoLog().setRecording(false);
  const std::vector<DxfTag> tags = tagsOf(text);
  AcDbObjectId id;
  db.addWithHandle(id, object, handle);
  object->dxfIn(tags, db);
  db.undoLog().setRecording(true);
  return object;
}

TEST(DxfRoundTrip, NothingOfAnObjectIsLost) {
  struct Row {
    const char* name;
    std::function<AcDbObject*()> make;
    std::string text;
  };
  const std::string front = "5:A0 102:{ACAD_XDICTIONARY 360:A1 102:} 102:{ACAD_REACTORS 330:A2 330:A3 102:} ";
  const Row rows[] = {
      {"unknown object", [] { return new AcDbOtherObject("MATERIAL"); },
       "5:A0 330:1F 100:AcDbMaterial 1:nom 40:1.50 340:DEAD 100:Encore 290:1 1001:APP 1000:x 1071:70000"},
      {"braces of another program", [] { return new AcDbOtherObject("SUN"); },
       front + "102:{AUTRE 1:garde 102:{DEDANS 70:1 102:} 102:} 330:1F 100:AcDbSun 90:1"},
      {"braces that never close", [] { return new AcDbOtherObject("SUN"); },
       "5:A0 102:{ACAD_REACTORS 330:1F 100:AcDbSun 90:1"},
      {"no marker at all", [] { return new AcDbOtherObject("PLACE"); }, "5:A0 330:1F"},
      {"layer", made<AcDbLayerTableRecord>,
       front + "330:1F 100:AcDbSymbolTableRecord 70:9 100:AcDbLayerTableRecord 2:Voirie 70:4 62:-3 420:255 "
               "6:Continuous 290:0 370:25 390:F 347:99 100:Plus 1:tard 1001:APP 1070:1"},
      {"layer with an embedded object", made<AcDbLayerTableRecord>,
       "5:A0 330:1F 100:AcDbSymbolTableRecord 100:AcDbLayerTableRecord 2:V 70:0 62:7 6:Continuous 370:-3 "
       "348:7 101:Embedded~Object 70:1 62:99 2:autre"},
      {"complex line type", made<AcDbLinetypeTableRecord>,
       "5:A0 330:1F 100:AcDbSymbolTableRecord 100:AcDbLinetypeTableRecord 2:GAZ 70:0 3:Gaz~--- 72:65 73:2 "
       "40:1.5 49:1.0 74:0 49:-0.5 74:2 75:0 340:33 46:0.1 50:0.0 44:-0.1 45:-0.05 9:GAZ"},
      {"text style", made<AcDbTextStyleTableRecord>,
       "5:A0 330:1F 100:AcDbSymbolTableRecord 100:AcDbTextStyleTableRecord 2:S 70:0 40:0.0 41:1.0 50:15.0 "
       "71:0 42:2.5 3:arial.ttf 4: 1001:ACAD 1000:Arial 1071:34"},
      {"dimension style", [] { return new AcDbOtherTableRecord("DIMSTYLE", "AcDbDimStyleTableRecord"); },
       "105:A0 330:1F 100:AcDbSymbolTableRecord 100:AcDbDimStyleTableRecord 2:ISO 70:0 3:. 5:_DOT 41:2.5 "
       "70:1 340:11"},
      {"block record", made<AcDbBlockTableRecord>,
       "5:A0 330:1F 100:AcDbSymbolTableRecord 100:AcDbBlockTableRecord 2:*Model_Space 340:22 70:6 280:1 "
       "281:0 310:FF00"},
      {"viewport", made<AcDbViewportTableRecord>,
       "5:A0 330:1F 100:AcDbSymbolTableRecord 100:AcDbViewportTableRecord 2:*Active 70:0 10:0.0 20:0.0 "
       "12:650000.5 22:6860000.25 40:100.0 41:1.25 348:9F 60:7"},
      {"dictionary with a default", made<AcDbDictionary>,
       "5:A0 330:1F 100:AcDbDictionary 280:1 281:1 3:Normal 350:F 3:Autre 360:E "
       "100:AcDbDictionaryWithDefault 340:F"},
      {"group", made<AcDbGroup>, "5:A0 330:1F 100:AcDbGroup 300:un~groupe 70:1 71:1 340:41 340:42"},
      {"table", made<AcDbSymbolTable>,
       "2:DIMSTYLE 5:A0 330:1F 100:AcDbSymbolTable 70:0 100:AcDbDimStyleTable 71:1 340:27"},
  };
  for (const Row& row : rows) {
    AcDbDatabase db(false);
    db.setHandseed(0x10000);
    ASSERT_FALSE(db.recordOf("LTYPE", L"Continuous").isNull());
    const AcDbObject* const object = loaded(db, row.make(), fileText(row.text), 0xA0);
    // A reference whose object is not in memory is written all the same: the file may hold it in a part kept
    // raw.
    AcDbObjectId xdictionary;
    db.addWithHandle(xdictionary, new AcDbDictionary, 0xA1);
    std::vector<std::string> out = listed(dxfWritten(*object));
    ASSERT_FALSE(out.empty()) << row.name;
    EXPECT_EQ(out.front(), "0 " + std::string(object->dxfName())) << row.name;
    out.erase(out.begin());
    EXPECT_EQ(sorted(out), sorted(listed(fileText(row.text)))) << row.name;
  }
}

TEST(DxfRoundTrip, KeptGroupsStandInTheirSections) {
  AcDbDatabase db(false);
  db.setHandseed(0x1000);
  const auto* layer =
      loaded(db, new AcDbLayerTableRecord,
             fileText("5:A0 330:0 100:AcDbSymbolTableRecord 1:un 100:AcDbLayerTableRecord 2:V 390:F 62:7 "
                      "70:0 6:Continuous 101:Embedded~Object 62:9 100:Plus 1:x"),
             0xA0);
  EXPECT_EQ(joined(dxfWritten(*layer)),
            "0 LAYER|5 A0|330 0|100 AcDbSymbolTableRecord|1 un|100 AcDbLayerTableRecord|2 V|70 0|62 7|6 "
            "Continuous|370 -3|390 F|101 Embedded Object|62 9|100 Plus|1 x|");
}

TEST(DxfRoundTrip, ReferencesToErasedObjectsBecomeZero) {
  AcDbDatabase db(false);
  db.setHandseed(0x1000);
  AcDbObjectId gone;
  auto* victim = new AcDbXrecord;
  db.addAcDbObject(gone, victim);
  const std::string handle = "1000";
  auto* object = loaded(db, new AcDbOtherObject("SUN"),
                        fileText("5:A0 102:{ACAD_REACTORS 330:" + handle + " 102:} 330:" + handle +
                                 " 100:AcDbSun 340:" + handle + " 70:1000 1001:APP 1005:" + handle),
                        0xA0);
  victim->erase();
  victim->close();
  EXPECT_EQ(joined(dxfWritten(*object)), "0 SUN|5 A0|330 0|100 AcDbSun|340 0|70 1000|1001 APP|1005 0|");
}

TEST(DxfReader, OldFilesWithoutMarkersOfferEachGroupToEveryClass) {
  AcDbDatabase db(false);
  const std::string text = fileText("2:VOIE 70:0 62:3 6:CONTINUOUS 999:rien");
  const auto* layer = loaded(db, new AcDbLayerTableRecord, text, 0xA0);
  EXPECT_EQ(layer->name(), L"VOIE");
  EXPECT_EQ(layer->color().colorIndex(), 3);
  const std::vector<std::string> out = listed(dxfWritten(*layer));
  EXPECT_EQ(std::count(out.begin(), out.end(), "999 rien"), 1);
  EXPECT_EQ(std::count(out.begin(), out.end(), "62 3"), 1);
}

TEST(DxfReader, BadValuesNameGroupAndLine) {
  struct Row {
    const char* name;
    std::string text;
    Adesk::UInt32 line;
    const char* message;
  };
  const Row rows[] = {
      {"text for a real", "5:A0 100:AcDbTextStyleTableRecord 2:S 40:abc", 8,
       "valeur « abc » du groupe 40 : nombre attendu"},
      {"comma", "100:AcDbTextStyleTableRecord 41:1,5", 4, "valeur « 1,5 » du groupe 41 : nombre attendu"},
      {"nothing", "100:AcDbTextStyleTableRecord 41:", 4, "valeur «  » du groupe 41 : nombre attendu"},
      {"infinity", "100:AcDbTextStyleTableRecord 41:1e999", 4,
       "valeur « 1e999 » du groupe 41 : nombre attendu"},
      {"fraction for an integer", "100:AcDbTextStyleTableRecord 71:1.5", 4,
       "valeur « 1.5 » du groupe 71 : nombre entier attendu"},
      {"too large", "100:AcDbTextStyleTableRecord 71:5000000000", 4,
       "valeur « 5000000000 » du groupe 71 : nombre entier attendu"},
  };
  for (const Row& row : rows) {
    AcDbDatabase db(false);
    const std::string text = fileText(row.text);
    AcDbTextStyleTableRecord style;
    try {
      style.dxfIn(tagsOf(text), db);
      ADD_FAILURE() << row.name << ": no error";
    } catch (const DxfError& error) {
      EXPECT_EQ(error.line, row.line) << row.name;
      EXPECT_EQ(error.message, row.message) << row.name;
    }
  }
  AcDbDatabase db(false);
  AcDbTextStyleTableRecord style;
  const std::string good = fileText("100:AcDbTextStyleTableRecord 40:~+1.5E0~ 41:1e-999 71:4294967295 42:7");
  EXPECT_NO_THROW(style.dxfIn(tagsOf(good), db));
  EXPECT_EQ(style.textSize(), 1.5);
}

TEST(DxfReader, MissingRecordsAreMadeOnce) {
  AcDbDatabase db(false);
  const std::string text = fileText("8:Voie 8:VOIE 8: 6:TIRETS");
  const std::vector<DxfTag> tags = tagsOf(text);
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
  struct Row {
    const char* name;
    std::string file;
    std::wstring wide;
    bool bothWays;
  };
  const Row rows[] = {
      {"plain", "Borne n°1 é €", L"Borne n°1 é €", true},
      {"line end and tab", "a^Jb^M^Ic", L"a\nb\r\tc", true},
      {"caret", "x^ 2", L"x^2", true},
      {"caret at the end", "x^", L"x^", false},
      {"caret before a small letter", "^a", L"^a", false},
      {"Unicode escape", "\\U+00E9t\\U+00e9", L"été", false},
      {"pair of escapes", "\\U+D83D\\U+DE00", L"\U0001F600", false},
      {"broken escape", "\\U+00G9 \\U+12", L"\\U+00G9 \\U+12", true},
      {"beyond the first plane", "\xF0\x9F\x98\x80", L"\U0001F600", true},
      {"bytes that are no UTF-8",
       "A\xE9"
       "B\xC3",
       std::wstring(L"A") + wchar_t(0xDCE9) + L"B" + wchar_t(0xDCC3), true},
      {"formatting codes stay", "{\\fArial;\\P}%%c", L"{\\fArial;\\P}%%c", true},
      {"empty", "", L"", true},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(dxfToWide(row.file), row.wide) << row.name;
    EXPECT_EQ(dxfFromWide(row.wide) == row.file, row.bothWays) << row.name << ": " << dxfFromWide(row.wide);
    EXPECT_EQ(dxfToWide(dxfFromWide(row.wide)), row.wide) << row.name;
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
  const std::vector<std::string> list = listed(text);
  ASSERT_EQ(list.size(), 100002u);
  EXPECT_EQ(list[99999], "90 99999");
  EXPECT_EQ(list[100000], "1 " + large);
  EXPECT_EQ(list[100001], "1 " + large);
}

TEST(DxfTags, KindsFollowTheRangesOfGroupCodes) {
  const std::pair<int, DxfKind> rows[] = {
      {0, DxfKind::kText},       {5, DxfKind::kHandle},    {9, DxfKind::kText},
      {10, DxfKind::kPoint},     {18, DxfKind::kPoint},    {19, DxfKind::kReal},
      {20, DxfKind::kReal},      {59, DxfKind::kReal},     {60, DxfKind::kInt16},
      {79, DxfKind::kInt16},     {80, DxfKind::kUnknown},  {90, DxfKind::kInt32},
      {102, DxfKind::kText},     {105, DxfKind::kHandle},  {112, DxfKind::kPoint},
      {140, DxfKind::kReal},     {160, DxfKind::kInt64},   {179, DxfKind::kInt16},
      {180, DxfKind::kUnknown},  {210, DxfKind::kPoint},   {230, DxfKind::kReal},
      {289, DxfKind::kInt16},    {290, DxfKind::kBool},    {309, DxfKind::kText},
      {310, DxfKind::kBinary},   {330, DxfKind::kPointer}, {369, DxfKind::kPointer},
      {370, DxfKind::kInt16},    {390, DxfKind::kPointer}, {400, DxfKind::kInt16},
      {410, DxfKind::kText},     {420, DxfKind::kInt32},   {430, DxfKind::kText},
      {450, DxfKind::kInt32},    {460, DxfKind::kReal},    {470, DxfKind::kText},
      {481, DxfKind::kPointer},  {482, DxfKind::kUnknown}, {1004, DxfKind::kBinary},
      {1005, DxfKind::kPointer}, {1011, DxfKind::kPoint},  {1042, DxfKind::kReal},
      {1070, DxfKind::kInt16},   {1071, DxfKind::kInt32},  {1072, DxfKind::kUnknown},
      {-1, DxfKind::kName},      {-99, DxfKind::kUnknown}};
  for (const auto& [code, kind] : rows) EXPECT_EQ(dxfKind(code), kind) << code;
}

TEST(DxfTags, AWalkEndsAtWhatIsNoGroup) {
  const std::pair<const char*, std::size_t> rows[] = {{"", 0},
                                                      {"1\na\n", 1},
                                                      {" 1\r\na\r\n", 1},
                                                      {"1\na", 1},
                                                      {"1\n", 1},
                                                      {"1", 0},
                                                      {"x\na\n1\nb\n", 0},
                                                      {"1\na\n1x\nb\n", 1},
                                                      {"99999999999\na\n", 0}};
  for (const auto& [text, count] : rows) EXPECT_EQ(tagsOf(text).size(), count) << text;
}

}  // namespace
