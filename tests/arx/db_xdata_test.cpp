#include "arx/db/dbmain.h"
#include "arx/ed/edports.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using Chain = AcEdRbHolder;

/// A layer open for writing in the working drawing, with the applications A and B registered.
struct XDataTest : testing::Test {
  AcDbDatabase db{false};
  AcDbObjectPointer<AcDbLayerTableRecord> layer;

  void SetUp() override {
    acdbHostApplicationServices()->setWorkingDatabase(&db);
    ASSERT_EQ(acdbRegApp(L"A"), Acad::eOk);
    ASSERT_EQ(acdbRegApp(L"B"), Acad::eOk);
    ASSERT_EQ(acdbRegApp(L"a"), Acad::eOk) << "registered already";
    ASSERT_EQ(layer.open(db.recordOf("LAYER", L"L"), AcDb::kForWrite), Acad::eOk);
  }
  void TearDown() override { layer.close(); }

  template <class... Args>
  Acad::ErrorStatus set(const Args&... args) {
    const Chain chain(acutBuildList(args...));
    EXPECT_NE(chain, nullptr);
    return layer->setXData(chain.get());
  }
  [[nodiscard]] std::string tags() const {
    std::string text = layer->xDataTags().text();
    for (char& c : text) {
      if (c == '\n') c = ' ';
    }
    return text;
  }
};

TEST_F(XDataTest, EachApplicationIsReplacedOnItsOwn) {
  ASSERT_EQ(set(1001, L"A", 1070, 1, 1001, L"B", 1000, L"texte", RTNONE), Acad::eOk);
  EXPECT_EQ(tags(), "1001 A 1070 1 1001 B 1000 texte ");
  ASSERT_EQ(set(1001, L"a", 1070, 2, RTNONE), Acad::eOk);
  EXPECT_EQ(tags(), "1001 a 1070 2 1001 B 1000 texte ") << "in its place";
  EXPECT_TRUE(layer->hasXData(L"A"));
  ASSERT_EQ(set(1001, L"A", RTNONE), Acad::eOk);
  EXPECT_FALSE(layer->hasXData(L"A"));
  EXPECT_EQ(layer->xData(L"A"), nullptr);
  const Chain all(layer->xData());
  ASSERT_NE(all, nullptr);
  EXPECT_EQ(all->restype, 1001);
  EXPECT_STREQ(all->resval.rstring, L"B");
  EXPECT_STREQ(all->rbnext->resval.rstring, L"texte");
}

TEST_F(XDataTest, EveryKindOfItemComesBack) {
  char bytes[] = {'\x01', '\xAB'};
  ASSERT_EQ(set(1001, L"A", 1002, L"{", 1000, L"é", 1003, L"L", 1004, ads_binary{2, bytes}, 1005, L"1F", 1010,
                AcGePoint3d(1, 2, 3), 1013, AcGePoint3d(4, 5, 6), 1040, 0.5, 1041, 1e10, 1042, 2.0, 1070, -7,
                1071, 70000, 1002, L"}", RTNONE),
            Acad::eOk);
  const std::string before = tags();
  EXPECT_NE(before.find("1004 01AB 1005 1F 1010 1.0 1020 2.0 1030 3.0 1013 4.0 1023 5.0 1033 6.0"),
            std::string::npos)
      << before;
  const Chain back(layer->xData(L"A"));
  ASSERT_EQ(layer->setXData(back.get()), Acad::eOk);
  EXPECT_EQ(tags(), before);
}

TEST_F(XDataTest, FaultyChainsChangeNothing) {
  ASSERT_EQ(set(1001, L"A", 1070, 1, RTNONE), Acad::eOk);
  const std::string before = tags();
  const std::wstring large(9000, L'x');
  char many[128] = {};
  EXPECT_EQ(layer->setXData(nullptr), Acad::eInvalidInput);
  EXPECT_EQ(set(1070, 1, RTNONE), Acad::eInvalidInput) << "no application";
  EXPECT_EQ(set(1001, L"", 1070, 1, RTNONE), Acad::eInvalidInput) << "nameless application";
  EXPECT_EQ(set(1001, L"A", 40, 1.0, RTNONE), Acad::eInvalidInput) << "foreign code";
  EXPECT_EQ(set(1001, L"A", 1002, L"{", RTNONE), Acad::eInvalidInput) << "open brace";
  EXPECT_EQ(set(1001, L"A", 1002, L"}", 1002, L"{", RTNONE), Acad::eInvalidInput) << "braces crossed";
  EXPECT_EQ(set(1001, L"A", 1002, L"{", 1001, L"B", 1002, L"}", RTNONE), Acad::eInvalidInput)
      << "brace across";
  EXPECT_EQ(set(1001, L"A", 1004, ads_binary{128, many}, RTNONE), Acad::eInvalidInput) << "long binary";
  EXPECT_EQ(set(1001, L"A", 1000, large, 1000, large, RTNONE), Acad::eInvalidInput) << "too much";
  EXPECT_EQ(set(1001, L"INCONNUE", 1070, 1, RTNONE), Acad::eRegappIdNotFound);
  EXPECT_EQ(tags(), before);
  ASSERT_EQ(set(1001, L"B", 1000, large, RTNONE), Acad::eOk);
  EXPECT_EQ(set(1001, L"A", 1000, large, RTNONE), Acad::eInvalidInput) << "the limit is the object's";
}

}  // namespace
