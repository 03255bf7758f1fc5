#include "arx/ent_support.h"
#include "base/text.h"
#include "support/case_rows.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

namespace {

using namespace ent_test;

// Widths of DejaVu Sans: 0.938 of a capital's height for "A", 0.941 for "B", 0.873 for a digit.
TEST(TextMeasure, TakesTheCharactersThatAreShown) {
  const struct {
    const wchar_t* text;
    double height, factor, width, descent;
  } rows[] = {
      {L"", 2, 1, 0, 0},          {L"A", 2, 1, 1.876, 0},       {L"AB", 2, 1, 3.758, 0},
      {L"AB", 2, 0.5, 1.879, 0},  {L"12.50", 1, 1, 3.928, 0},   {L"g", 2, 1, 1.742, 0.6},
      {L"Num", 1, 1, 3.231, 0},   {L"%%uA%%u", 2, 1, 1.876, 0}, {L"45%%d", 1, 1, 2.432, 0},
      {L"%%065", 1, 1, 0.938, 0}, {L"%%c%%p", 1, 1, 2.229, 0},  {L"%%%", 1, 1, 1.303, 0},
      {L"100%", 1, 1, 3.922, 0},  {L"%%", 1, 1, 2.606, 0},      {L"A", 0, 1, 0, 0},
      {L"A", -1, 1, 0, 0},        {L"A", 2, 0, 1.876, 0},       {L"A", 2, -1, 1.876, 0},
      {L"é", 1, 1, 0.844, 0},     {L"ÿ", 1, 1, 0.812, 0},       {L"~", 1, 1, 1.149, 0},
      {L"œ", 1, 1, 1.403, 0},     {L"日", 1, 1, 1, 0},
  };
  for (const auto& row : rows) {
    const AcDbTextSize size = acdbTextExtents(row.text, row.height, row.factor);
    EXPECT_NEAR(size.width, row.width, 1e-12) << ::testing::PrintToString(row.text);
    EXPECT_NEAR(size.descent, row.descent, 1e-12);
    EXPECT_EQ(size.height, row.width > 0 ? row.height : 0);
  }
  EXPECT_EQ(acdbTextExtents(L"A", std::nan("")).width, 0);
}

TEST(TextMeasure, FallsBackOnTheStyle) {
  AcDbDatabase db;
  AcDbObjectId style = db.textstyle();
  {
    const AcDbObjectPointer<AcDbTextStyleTableRecord> record(style, AcDb::kForWrite);
    record->setTextSize(4);
    record->setXScale(0.5);
  }
  EXPECT_NEAR(acdbTextExtents(L"A", style, 0, 0).width, 1.876, 1e-12);
  EXPECT_NEAR(acdbTextExtents(L"A", style, 2, 0).width, 0.938, 1e-12);
  EXPECT_NEAR(acdbTextExtents(L"A", style, 2, 1).width, 1.876, 1e-12);
}

struct AlignRow {
  const char* name;
  AcDb::TextHorzMode horizontal;
  AcDb::TextVertMode vertical;
  double left, low;  // of the box, from the alignment point; the text "AB" is 3.758 wide and 2 high
};
std::ostream& operator<<(std::ostream& out, const AlignRow& row) { return out << row.name; }

constexpr AlignRow kAlignments[] = {
    {"left", AcDb::kTextLeft, AcDb::kTextBase, 0, 0},
    {"centre", AcDb::kTextCenter, AcDb::kTextBase, -1.879, 0},
    {"right", AcDb::kTextRight, AcDb::kTextBase, -3.758, 0},
    {"middle", AcDb::kTextMid, AcDb::kTextBase, -1.879, -1},
    {"top left", AcDb::kTextLeft, AcDb::kTextTop, 0, -2},
    {"middle right", AcDb::kTextRight, AcDb::kTextVertMid, -3.758, -1},
    {"bottom centre", AcDb::kTextCenter, AcDb::kTextBottom, -1.879, 0},
};

class TextAlignment : public ::testing::TestWithParam<AlignRow> {};

// The box lies as the modes say, at any rotation, and the position follows.
TEST_P(TextAlignment, HangsTheBoxOnItsPoint) {
  const AlignRow& row = GetParam();
  for (const double angle : {0.0, kPi / 2, 2.0}) {
    for (const AcGePoint3d& at : {AcGePoint3d(10, 20, 5), kFar}) {
      AcDbText text(at, L"AB", {}, 2.0, angle);
      text.setHorizontalMode(row.horizontal);
      text.setVerticalMode(row.vertical);
      // A text in the default place minds its position alone.
      ASSERT_EQ(text.setAlignmentPoint(text.isDefaultAlignment() ? AcGePoint3d() : at), Acad::eOk);
      const AcGeMatrix3d unturn = AcGeMatrix3d::rotation(-angle, {0, 0, 1}, at);
      AcDbExtents box;
      text.addExtentsUnder(unturn, box);
      EXPECT_POINT(at + AcGeVector3d(row.left, row.low, 0), box.minPoint(), 4e-9);
      EXPECT_POINT(at + AcGeVector3d(row.left + 3.758, row.low + 2, 0), box.maxPoint(), 4e-9);
      if (!text.isDefaultAlignment()) {
        EXPECT_POINT(box.minPoint(), unturn * text.position(), 4e-9);
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Rows, TextAlignment, ::testing::ValuesIn(kAlignments));

TEST(TextAlignment, KeepsThePlaceWhenItLeavesTheDefault) {
  AcDbText text({3, 4, 0}, L"AB", {}, 2.0);
  EXPECT_EQ(text.adjustAlignment(), Acad::eNotApplicable);
  text.setHorizontalMode(AcDb::kTextRight);
  EXPECT_POINT(AcGePoint3d(3, 4, 0), text.alignmentPoint(), 0);
  EXPECT_EQ(text.setHorizontalMode(static_cast<AcDb::TextHorzMode>(6)), Acad::eInvalidInput);
}

TEST(TextAlignment, FitsBetweenItsPoints) {
  for (const bool fitted : {false, true}) {
    AcDbText text({0, 0, 0}, L"AB", {}, 2.0);
    text.setHorizontalMode(fitted ? AcDb::kTextFit : AcDb::kTextAlign);
    text.setAlignmentPoint({0, 7.516, 0});
    EXPECT_NEAR(text.rotation(), kPi / 2, 1e-12);
    EXPECT_NEAR(text.height(), fitted ? 2 : 4, 1e-12);
    EXPECT_NEAR(text.widthFactor(), fitted ? 2 : 1, 1e-12);
    EXPECT_NEAR(text.measure().width, 7.516, 1e-12);
    EXPECT_EQ(text.setAlignmentPoint({0, 0, 0}), Acad::eOk);  // no room: left as it is
    EXPECT_NEAR(text.measure().width, 7.516, 1e-12);
  }
}

TEST(TextSetters, RefuseWhatCannotBeDrawn) {
  AcDbText text;
  EXPECT_EQ(text.setHeight(0), Acad::eInvalidInput);
  EXPECT_EQ(text.setHeight(std::nan("")), Acad::eInvalidInput);
  EXPECT_EQ(text.setWidthFactor(0), Acad::eInvalidInput);
  EXPECT_EQ(text.setRotation(HUGE_VAL), Acad::eInvalidInput);
  EXPECT_EQ(text.setTextString(static_cast<const ACHAR*>(nullptr)), Acad::eInvalidInput);
  EXPECT_EQ(text.textString(), L"");
  AcDbExtents box;
  EXPECT_EQ(text.getGeomExtents(box), Acad::eOk);  // an empty text is a place
  EXPECT_POINT(box.minPoint(), box.maxPoint(), 0);
}

// Short texts lie in the object, long ones apart; copies and exchanges must not mix them up.
TEST(ShortText, SurvivesChangesOfLength) {
  const std::wstring lengths[] = {L"", L"1234567", L"12345678", L"123456789012345", std::wstring(400, L'x')};
  for (const std::wstring& from : lengths) {
    for (const std::wstring& to : lengths) {
      AcDbShortText<8> a(from);
      AcDbShortText<8> b(a);
      a.assign(to);
      EXPECT_EQ(a.view(), to);
      EXPECT_EQ(std::wstring(b.c_str()), from);
      a.swap(b);
      EXPECT_EQ(a.view(), from);
      b = a;
      b.assign(b.view().substr(0, b.size() / 2));  // from within itself
      EXPECT_EQ(b.view(), from.substr(0, from.size() / 2));
      AcDbShortText<8> c(std::move(a));
      EXPECT_EQ(c.view(), from);
    }
  }
}

TEST(MText, LeavesFormattingOut) {
  for (const CaseRow& row : caseRows("arx/cases/mtext.txt", "formatting", '=')) {
    AcDbMText text;
    text.setContents(veltora::base::fromUtf8(row[0]).c_str());
    EXPECT_EQ(veltora::base::toUtf8(text.text()), row[1]) << row;
  }
}

TEST(MText, WrapsAtItsColumn) {
  AcDbMText text;
  text.setTextHeight(1);
  text.setContents(L"aaa bbb ccc");
  EXPECT_NEAR(text.actualWidth(), 3 * (0.841 + 0.871 + 0.754) + 2 * 0.436, 1e-12);
  EXPECT_NEAR(text.actualHeight(), 1, 1e-12);
  text.setWidth(7);
  EXPECT_NEAR(text.actualWidth(), 3 * (0.841 + 0.871) + 0.436, 1e-12);
  EXPECT_NEAR(text.actualHeight(), 1 + 5.0 / 3, 1e-12);
  text.setWidth(0.5);  // narrower than any word
  EXPECT_NEAR(text.actualHeight(), 1 + 2 * 5.0 / 3, 1e-12);
  for (const wchar_t* odd : {L"", L" ", L"   ", L"a  b", L" a", L"\\P", L"a\\P\\Pb "}) {
    text.setContents(odd);
    EXPECT_TRUE(std::isfinite(text.actualWidth() + text.actualHeight()));
  }
}

TEST(MText, BoxHangsOnItsAttachment) {
  AcDbMText text;
  text.setTextHeight(2);
  text.setContents(L"AB");
  text.setLocation({10, 20, 3});
  for (int place = AcDbMText::kTopLeft; place <= AcDbMText::kBottomRight; ++place) {
    text.setAttachment(static_cast<AcDbMText::AttachmentPoint>(place));
    AcDbExtents box;
    ASSERT_EQ(text.getGeomExtents(box), Acad::eOk);
    EXPECT_NEAR(box.minPoint().x, 10 - 1.879 * ((place - 1) % 3), 1e-12);
    EXPECT_NEAR(box.minPoint().y, 18 + (place - 1) / 3, 1e-12);
    EXPECT_NEAR(box.maxPoint().y - box.minPoint().y, 2, 1e-12);
  }
  text.setAttachment(AcDbMText::kBottomLeft);
  text.setDirection({0, 5, 0});
  EXPECT_NEAR(text.rotation(), kPi / 2, 1e-12);
  AcDbExtents box;
  text.getGeomExtents(box);
  EXPECT_POINT(AcGePoint3d(8, 20, 3), box.minPoint(), 1e-12);
  EXPECT_POINT(AcGePoint3d(10, 23.758, 3), box.maxPoint(), 1e-12);
}

TEST(MText, LongContentsAreWrittenInPieces) {
  AcDbDatabase db;
  AcDbMText text;
  std::wstring contents;
  for (int i = 0; i < 200; ++i) contents += L"né " + std::to_wstring(i);
  text.setContents(contents.c_str());
  const std::string first = written(text);
  EXPECT_NE(first.find("|3 "), std::string::npos);
  const auto again = read(db, "MTEXT", first);
  EXPECT_EQ(AcDbMText::cast(again.get())->contents(), contents);
}

}  // namespace
