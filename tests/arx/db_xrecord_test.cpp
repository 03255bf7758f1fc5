#include "arx/dxf_text.h"
#include "arx/ed/edports.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>

namespace {

using Chain = AcEdRbHolder;

std::string shown(const resbuf* item) {
  const std::string text = std::to_string(item->restype) + ' ';
  const auto& v = item->resval;
  const auto real = [](double value) {
    char buffer[40];
    return std::string(buffer, dxfFormatReal(buffer, value));
  };
  switch (acutRbKind(item->restype)) {
    case RbKind::kText:
      return text + dxfFromWide(v.rstring);
    case RbKind::kShort:
      return text + std::to_string(v.rint);
    case RbKind::kLong:
      return text + std::to_string(v.rlong);
    case RbKind::kInt64:
      return text + std::to_string(v.mnInt64);
    case RbKind::kName:
      return text + std::to_string(v.rlname[1]);
    case RbKind::kBinary:
      return text + std::string(v.rbinary.buf, static_cast<std::size_t>(v.rbinary.clen));
    case RbKind::kReal:
      return text + real(v.rreal);
    case RbKind::kPoint:
      return text + real(v.rpoint[0]) + ',' + real(v.rpoint[1]) + ',' + real(v.rpoint[2]);
    case RbKind::kNone:
      break;
  }
  return text;
}

std::vector<std::string> shownAll(const resbuf* chain) {
  std::vector<std::string> list;
  for (; chain; chain = chain->rbnext) list.push_back(shown(chain));
  return list;
}

/// A drawing with an xrecord open for writing, and a layer to refer to.
struct XrecordTest : testing::Test {
  AcDbDatabase db{false};
  AcDbObjectId layer;
  AcDbObjectId id;
  AcDbObjectPointer<AcDbXrecord> record;

  void SetUp() override {
    layer = db.recordOf("LAYER", L"A");
    auto* made = new AcDbXrecord;
    ASSERT_EQ(db.addAcDbObject(id, made), Acad::eOk);
    made->close();
    ASSERT_EQ(record.open(id, AcDb::kForWrite), Acad::eOk);
  }
  void TearDown() override { record.close(); }  // before the drawing

  Chain chain() const {
    resbuf* items = nullptr;
    EXPECT_EQ(record->rbChain(&items), Acad::eOk);
    return Chain(items);
  }
};

TEST_F(XrecordTest, EveryKindOfValueComesBack) {
  ads_name name;
  acdbGetAdsName(name, layer);
  char bytes[] = {'\0', '\x7F', '\xFF', 'A'};
  const ads_binary binary{4, bytes};
  const Chain given(acutBuildList(
      90, -9999999, 91, 7, 300, L"LEVÉ ^\n1", 92, 10, 310, binary, 40, 650000.123456789, 70, -32768, 280, 255,
      290, 1, 160, Adesk::Int64{1} << 60, 10, AcGePoint3d(1.5, -2, 1e38), 11, AcGePoint3d(0, 0, 0), 20, 4.0,
      330, static_cast<const Adesk::Int64*>(name), 360, static_cast<const Adesk::Int64*>(name), 1, L"", 102,
      L"{X", 310, ads_binary{0, nullptr}, RTNONE));
  ASSERT_NE(given, nullptr);
  ASSERT_EQ(record->setFromRbChain(*given), Acad::eOk);
  EXPECT_EQ(shownAll(chain().get()), shownAll(given.get()));

  // The same through the text of a file.
  const std::string text = dxfWritten(*record);
  DxfTagText tags;
  tags.assign(text);
  std::vector<DxfTag> read;
  DxfTagText::Cursor cursor = tags.tags();
  for (DxfTag tag; cursor.next(tag);) read.push_back(tag);
  AcDbXrecord copy;
  copy.dxfIn(std::span<const DxfTag>(read).subspan(1), db);
  resbuf* items = nullptr;
  copy.rbChain(&items, &db);
  EXPECT_EQ(shownAll(Chain(items).get()), shownAll(given.get()));
}

TEST_F(XrecordTest, ReferencesToWhatIsGoneAreNull) {
  ads_name name;
  acdbGetAdsName(name, layer);
  const Chain given(acutBuildList(330, static_cast<const Adesk::Int64*>(name), RTNONE));
  ASSERT_EQ(record->setFromRbChain(*given), Acad::eOk);
  AcDbObjectPointer<AcDbObject>(layer, AcDb::kForWrite)->erase();
  EXPECT_EQ(shownAll(chain().get()), std::vector<std::string>{"330 0"});
  EXPECT_NE(dxfWritten(*record).find("330\n0\n"), std::string::npos);
  AcDbObjectPointer<AcDbObject>(layer, AcDb::kForWrite, true)->erase(false);
  EXPECT_EQ(shownAll(chain().get()), shownAll(given.get()));

  DxfTagText tags;
  tags.append(330, "DEAD");
  tags.append(340, "pas un identifiant");
  tags.append(330, "0");
  record->setTags(tags);
  EXPECT_EQ(shownAll(chain().get()), (std::vector<std::string>{"330 0", "340 0", "330 0"}));
}

TEST_F(XrecordTest, CodesThatAFileWouldMisreadAreRefused) {
  const Chain kept(acutBuildList(90, 1, RTNONE));
  record->setFromRbChain(*kept);
  for (const int code : {0, 5, 100, 101, 105, 999, 1000, 1070, -4, RTSTR, RTLONG, 80}) {
    Chain bad(acutNewRb(90));
    bad->rbnext = acutNewRb(code);
    EXPECT_EQ(record->setFromRbChain(*bad), Acad::eInvalidInput) << code;
    EXPECT_EQ(shownAll(chain().get()), shownAll(kept.get())) << code;
  }
  EXPECT_EQ(record->setEmpty(), Acad::eOk);
  EXPECT_EQ(chain(), nullptr);
}

TEST_F(XrecordTest, DamagedValuesOfAFileReadAsZero) {
  DxfTagText tags;
  for (const auto& [code, value] : std::initializer_list<std::pair<int, const char*>>{{90, "abc"},
                                                                                      {40, "x"},
                                                                                      {310, "4G42"},
                                                                                      {310, "414"},
                                                                                      {70, "99999"},
                                                                                      {90, "4294967295"},
                                                                                      {10, "1"},
                                                                                      {40, "2"}}) {
    tags.append(code, value);
  }
  record->setTags(tags);
  EXPECT_EQ(shownAll(chain().get()), (std::vector<std::string>{"90 0", "40 0.0", "310 ", "310 A", "70 32767",
                                                               "90 -1", "10 1.0,0.0,0.0", "40 2.0"}));
}

TEST_F(XrecordTest, AProjectOfAHundredThousandPointsPassesWhole) {
  resbuf* head = nullptr;
  resbuf** link = &head;
  char point[10] = "P12345678";
  for (int i = 0; i < 100000; ++i) {
    *link = acutBuildList(92, 10, 310, ads_binary{10, point}, 90, i, 40, 650000.0 + i, 40, 6860000.25, 40,
                          1e38, 90, -9999999, 300, L"TABLE", 70, 1, 280, 2, 91, 3, RTNONE);
    while (*link) link = &(*link)->rbnext;
  }
  const Chain given(head);
  ASSERT_EQ(record->setFromRbChain(*given), Acad::eOk);
  const Chain back = chain();
  std::size_t count = 0;
  const resbuf* b = back.get();
  for (const resbuf* a = given.get(); a && b; a = a->rbnext, b = b->rbnext) {
    if (++count % 9973 == 0) {
      ASSERT_EQ(shown(a), shown(b)) << count;
    }
  }
  EXPECT_EQ(count, 1100000u);
  EXPECT_EQ(b, nullptr);
}

TEST(Resbuf, ListsAreBuiltOrRefused) {
  const ads_real pair[3] = {1, 2, 3};
  const Chain list(acutBuildList(RTLB, RTSTR, std::wstring(L"texte"), RTSHORT, 5, RTLONG, 70000, RTREAL, 2,
                                 RTANG, 0.5, RTDOTE, RTPOINT, static_cast<const ads_real*>(pair), RTNIL, RTT,
                                 RTLE, RTNONE));
  const std::vector<std::string> expected = {"5016 ",    "5005 texte", "5003 5", "5010 70000",
                                             "5001 2.0", "5004 0.5",   "5018 ",  "5002 1.0,2.0,3.0",
                                             "5019 ",    "5021 ",      "5017 "};
  EXPECT_EQ(shownAll(list.get()), expected);
  EXPECT_EQ(shownAll(Chain(acutBuildList(RTSHORT, 1)).get()), std::vector<std::string>{"5003 1"})
      << "no end needed";

  EXPECT_EQ(acutBuildList(RTNONE), nullptr);
  EXPECT_EQ(acutBuildList(RTSTR), nullptr) << "value missing";
  EXPECT_EQ(acutBuildList(RTSTR, 5, RTNONE), nullptr) << "integer for a text";
  EXPECT_EQ(acutBuildList(RTSTR, L"x", RTSHORT, 40000, RTNONE), nullptr) << "no 16-bit number";
  EXPECT_EQ(acutBuildList(RTSTR, L"x", RTREAL, L"1.5", RTNONE), nullptr) << "text for a real";
  EXPECT_EQ(acutBuildList(RTSTR, L"x", L"y", RTNONE), nullptr) << "text for a type";
  EXPECT_EQ(acutBuildList(80, 1, RTNONE), nullptr) << "a code without a kind";
}

TEST(Resbuf, CopiesOwnTheirTextsAndBytes) {
  char bytes[] = {1, 2, 3};
  Chain list(acutBuildList(1, L"un", 310, ads_binary{1, bytes}, 10, AcGePoint3d(1, 2, 3), RTNIL, RTNONE));
  const std::vector<std::string> before = shownAll(list.get());
  const Chain one(acutCopyRb(list->rbnext));
  const Chain all(acutCopyRbChain(list.get()));
  list.reset();
  EXPECT_EQ(shownAll(all.get()), before);
  EXPECT_EQ(shownAll(one.get()), std::vector<std::string>{before[1]});
  EXPECT_EQ(acutCopyRb(nullptr), nullptr);
  EXPECT_EQ(acutRelRb(nullptr), RTNORM);
}

}  // namespace
