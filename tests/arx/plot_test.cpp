#include "arx/plot/pldraw.h"

#include "arx/plot/plcolor.h"
#include "arx/plot/plsvg.h"
#include "ent_support.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cmath>

namespace {

using ent_test::read;

/// Notes what is drawn.
struct NotingPen : AcPlPen {
  struct Line {
    std::string layer;
    std::vector<AcGePoint2d> points;
    AcPlStroke stroke;
  };
  std::string on;
  std::vector<Line> lines;
  std::vector<std::vector<std::vector<AcGePoint2d>>> fills;
  std::vector<AcPlText> texts;
  void layer(const std::string& name) override { on = name; }
  void line(std::span<const AcGePoint2d> points, const AcPlStroke& stroke) override {
    lines.push_back({on, {points.begin(), points.end()}, stroke});
  }
  void fill(std::span<const std::vector<AcGePoint2d>> rings, const AcPlColor&) override {
    fills.emplace_back(rings.begin(), rings.end());
  }
  void text(const AcPlText& text) override { texts.push_back(text); }
  void clip(std::span<const AcGePoint2d>) override {}
  bool finish(std::string&, std::string&) override { return true; }
};

double areaOf(const std::vector<AcGePoint2d>& ring) {
  double twice = 0.0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const AcGePoint2d& a = ring[i];
    const AcGePoint2d& b = ring[(i + 1) % ring.size()];
    twice += a.x * b.y - a.y * b.x;
  }
  return std::fabs(twice) / 2;
}

class PlotTest : public testing::Test {
protected:
  AcDbDatabase db;
  AcPlView view;  // A4 lying, 1 mm a unit, corner at the origin
  NotingPen pen;
  AcPlOmissions omissions;

  AcPlOmissions draw(std::string_view type, std::string_view groups) {
    AcPlDraw drawing(view, pen, 1.0);
    drawing.entity(*read(db, type, groups));
    return drawing.omissions();
  }
};

TEST_F(PlotTest, ColoursOfIndexes) {
  // The full, the half and the pale hues of the usual table.
  const std::pair<int, AcPlColor> rows[] = {
      {1, {255, 0, 0}},     {10, {255, 0, 0}},     {11, {255, 127, 127}}, {30, {255, 127, 0}},
      {43, {165, 145, 82}}, {94, {0, 127, 0}},     {150, {0, 127, 255}},  {178, {0, 0, 38}},
      {250, {51, 51, 51}},  {255, {255, 255, 255}}};
  for (const auto& [index, color] : rows) EXPECT_EQ(acplIndexColor(index), color) << index;
}

TEST_F(PlotTest, LinesEndWhereThePaperEndsAndKeepTheirPattern) {
  // From 1,000 mm left of the paper to as far behind it: cut 5 mm and its width beyond the edges.
  draw("LINE", "8 0|10 -1000|20 100|11 1297|21 100");
  ASSERT_EQ(pen.lines.size(), 1U);
  EXPECT_NEAR(pen.lines[0].points.front().x, -5.25, 1e-9);
  EXPECT_NEAR(pen.lines[0].points.back().x, 302.25, 1e-9);
  draw("LINE", "8 0|10 -1000|20 300|11 1297|21 300");
  draw("XLINE", "8 0|100 AcDbXline|10 100|20 -1e9|30 0|11 0|21 1|31 0");
  ASSERT_EQ(pen.lines.size(), 2U) << "the second line lies above the paper";
  EXPECT_NEAR(pen.lines[1].points.front().y, -5.25, 1e-6);
  EXPECT_NEAR(pen.lines[1].points.back().y, 215.25, 1e-6);

  const AcDbObjectId type = db.recordOf("LTYPE", L"TIRETS");
  {
    const AcDbObjectPointer<AcDbLinetypeTableRecord> record(type, AcDb::kForWrite);
    const std::vector<DxfTag> tags = ent_test::tagsOf(
        "100 AcDbLinetypeTableRecord|2 TIRETS|70 0|3 |72 65|73 3|40 10|49 -2|74 0|49 6|74 0|49 -2|74 0");
    record->dxfIn(tags, db);
  }
  draw("LINE", "8 0|6 TIRETS|48 2|10 -7.5|20 50|11 92|21 50");
  ASSERT_EQ(pen.lines.size(), 3U);
  EXPECT_EQ(pen.lines[2].stroke.dashes, (std::vector<double>{0, 4, 12, 4}));
  EXPECT_NEAR(pen.lines[2].stroke.phase, 2.25, 1e-9);
}

TEST_F(PlotTest, ChordsStayNearTheirArc) {
  view.mmPerUnit = 20;  // a circle of 80 mm
  draw("CIRCLE", "8 0|10 7|20 5|40 4");
  ASSERT_EQ(pen.lines.size(), 1U);
  const std::vector<AcGePoint2d>& points = pen.lines[0].points;
  for (std::size_t i = 0; i + 1 < points.size(); ++i) {
    const AcGePoint2d middle{(points[i].x + points[i + 1].x) / 2, (points[i].y + points[i + 1].y) / 2};
    EXPECT_NEAR(points[i].distanceTo({140, 100}), 80, 1e-9);
    EXPECT_NEAR(middle.distanceTo({140, 100}), 80, 0.0051);
  }
  EXPECT_LT(points.size(), 400U);
}

TEST_F(PlotTest, WidthsFillTheirArea) {
  // An L of two legs of 20 by 2; a taper from 4 to 0 over 30.
  draw("LWPOLYLINE", "8 0|90 3|70 0|43 2|10 10|20 10|10 30|20 10|10 30|20 30");
  ASSERT_EQ(pen.fills.size(), 3U);
  EXPECT_NEAR(areaOf(pen.fills[0][0]), 40, 1e-9);
  EXPECT_NEAR(areaOf(pen.fills[1][0]), 3.1415, 0.03) << "the joint";
  pen.fills.clear();
  draw("LWPOLYLINE", "8 0|90 2|70 0|10 10|20 50|40 4|41 0|10 40|20 50");
  ASSERT_EQ(pen.fills.size(), 1U);
  EXPECT_NEAR(areaOf(pen.fills[0][0]), 60, 1e-9);
  EXPECT_TRUE(pen.lines.empty());
  draw("LWPOLYLINE", "8 0|90 3|70 0|10 10|20 50|40 4|41 0|10 40|20 50|10 90|20 50");
  ASSERT_EQ(pen.lines.size(), 1U) << "a piece without width is a line";
  EXPECT_NEAR(pen.lines[0].points[1].x, 90, 1e-9);
}

TEST_F(PlotTest, HatchesFillBetweenTheirRings) {
  const std::string square = "92 7|72 0|73 1|93 4|10 10|20 10|10 50|20 10|10 50|20 50|10 10|20 50|97 0|";
  const std::string hole =
      "92 1|93 2|72 2|10 30|20 30|40 5|50 0|51 180|73 1|72 2|10 30|20 30|40 5|50 180|51 360|73 1|97 1|330 0|";
  const std::string head = "8 0|100 AcDbHatch|10 0|20 0|30 0|210 0|220 0|230 1|";
  draw("HATCH", head + "2 SOLID|70 1|71 0|91 2|" + square + hole + "75 0|76 1|98 1|10 0|20 0");
  ASSERT_EQ(pen.fills.size(), 1U);
  ASSERT_EQ(pen.fills[0].size(), 2U);
  EXPECT_NEAR(areaOf(pen.fills[0][0]), 1600, 1e-9);
  EXPECT_NEAR(areaOf(pen.fills[0][1]), 78.54, 0.05);
  // Level lines each 2 units: 20 of 40 units, those at 26 to 34 less the chord of the circle.
  draw("HATCH", head + "2 L|70 0|71 0|91 2|" + square + hole +
                    "75 0|76 1|52 0|41 1|77 0|78 1|53 0|43 0|44 1|45 0|46 2|79 0|98 0");
  double length = 0.0;
  for (const NotingPen::Line& line : pen.lines) length += line.points[0].distanceTo(line.points[1]);
  double wanted = 20 * 40.0;
  for (const double y : {-5.0, -3.0, -1.0, 1.0, 3.0, 5.0}) wanted -= 2 * std::sqrt(25 - y * y);
  EXPECT_NEAR(length, wanted, 0.05);
  pen.lines.clear();
  draw("HATCH", head + "2 L|70 0|71 0|91 1|" + square +
                    "75 0|76 1|52 0|41 1|77 0|78 1|53 90|43 0|44 0|45 -10|46 0|79 2|49 3|49 -2|98 0");
  EXPECT_EQ(pen.lines.size(), 32U) << "eight dashes on each of four lines";
  pen.lines.clear();
  draw("HATCH", head + "2 L|70 0|71 0|91 1|" + square +
                    "75 0|76 1|52 0|41 1|77 0|78 1|53 90|43 0|44 0|45 -1e-9|46 0|79 0|98 0");
  EXPECT_TRUE(pen.lines.empty()) << "too many lines";
}

TEST_F(PlotTest, WhatCannotBeDrawnIsTold) {
  EXPECT_EQ(draw("TOLERANCE", "8 0|100 AcDbFcf|10 5|20 5").kinds.at("TOLERANCE"), 1);
  EXPECT_EQ(draw("TEXT", "8 0|10 5|20 5|40 1e6|1 grand").texts, 1);
  view.corner = {1e308, 0};
  view.mmPerUnit = 1e10;
  EXPECT_EQ(draw("LINE", "8 0|10 -1e308|20 0|11 0|21 0").places, 1);
  EXPECT_TRUE(pen.lines.empty() && pen.texts.empty());
}

TEST(SvgPen, WhatIsDrawnLaterLiesOverWhatWasDrawnBefore) {
  // A line, a mask on another layer over it, a line over the mask, on the first layer again.
  AcPlSvgPen svg(AcPlPaper{});
  AcPlStroke red, green;
  red.color = {255, 0, 0};
  green.color = {0, 255, 0};
  const std::vector<AcGePoint2d> across{{0, 50}, {100, 50}}, up{{50, 0}, {50, 100}};
  const std::vector<std::vector<AcGePoint2d>> mask{{{20, 20}, {80, 20}, {80, 80}, {20, 80}}};
  svg.layer("A");
  svg.line(across, red);
  svg.layer("B");
  svg.fill(mask, {0, 0, 255});
  svg.layer("A");
  svg.line(up, green);
  std::string file, reason;
  ASSERT_TRUE(svg.finish(file, reason));
  const std::size_t first = file.find("#ff0000"), second = file.find("#0000ff"), third = file.find("#00ff00");
  EXPECT_TRUE(first < second && second < third && third != std::string::npos) << file;
  EXPECT_NE(file.rfind("data-calque=\"A\"", third), file.rfind("data-calque=\"A\"", first)) << file;
}

TEST_F(PlotTest, TextsStandOnTheirBaseLine) {
  draw("TEXT", "8 0|10 20|20 30|40 5|1 45%%d|50 90|41 0.5|51 0");
  ASSERT_EQ(pen.texts.size(), 1U);
  EXPECT_EQ(pen.texts[0].text, "45°");
  EXPECT_NEAR(pen.texts[0].along.y, 2.5, 1e-12);
  EXPECT_NEAR(pen.texts[0].up.x, -5, 1e-12);
  // Two lines, hung on the middle of their lower edge: the last one stands on it.
  draw("MTEXT", "8 0|10 100|20 50|40 3|41 0|71 8|1 un\\Pdeux");
  ASSERT_EQ(pen.texts.size(), 3U);
  EXPECT_NEAR(pen.texts[2].base.y, 50, 1e-9);
  EXPECT_NEAR(pen.texts[1].base.y, 55, 1e-9) << "5/3 of the height higher";
  EXPECT_NEAR(pen.texts[1].base.x, 100 - acdbTextExtents(L"un", 3).width / 2, 1e-9);
}

TEST_F(PlotTest, PointsAndLayersThatOnlyScreensShow) {
  // PDMODE, then what is drawn of a point with PDSIZE 2 at 3 mm a unit: count of lines, width and height of
  // all.
  const double kRows[][4] = {{0, 1, 0, 0}, {1, 0, -1, -1}, {2, 2, 12, 12},  {3, 2, 12, 12},
                             {4, 1, 0, 3}, {33, 1, 6, 6},  {66, 3, 12, 12}, {97, 2, 6, 6}};
  view.mmPerUnit = 3.0;
  const auto setHeader = [&](const char* name, int code, double value) {
    DxfTagText text;
    text.appendReal(code, value);
    db.setHeader(name, text);
  };
  setHeader("PDSIZE", 40, 2.0);
  AcDbEntity* const point = ent_test::place(db, read(db, "POINT", "8 0|10 20|20 20"));
  for (const auto& [mode, lines, width, height] : kRows) {
    pen = {};
    setHeader("PDMODE", 70, mode);
    AcPlDraw drawing(view, pen, 1.0);
    drawing.entity(*point);
    AcPlBox box;
    for (const NotingPen::Line& line : pen.lines)
      for (const AcGePoint2d& p : line.points) box.add(p);
    EXPECT_EQ(pen.lines.size(), static_cast<std::size_t>(lines)) << mode;
    if (lines > 0) {
      EXPECT_NEAR(box.right - box.left, width, 1e-9) << mode;
      EXPECT_NEAR(box.top - box.bottom, height, 1e-9) << mode;
    }
  }
  for (const bool printed : {false, true}) {
    pen = {};
    view.printed = printed;
    draw("LINE", "8 DEFPOINTS|10 0|20 0|11 9|21 0");
    EXPECT_EQ(pen.lines.size(), printed ? 0U : 1U);
  }
}

std::string shown(const NotingPen& pen) {
  std::string result;
  const auto number = [](double v) { return fmt::format("{:.3f} ", std::round(v * 1000) / 1000 + 0.0); };
  for (const AcPlText& text : pen.texts) {
    result += text.text + " " + number(text.base.x) + number(text.base.y) + number(text.along.length()) +
              number(text.up.x) + number(text.up.y);
    result += fmt::format("{:02x}{:02x}{:02x}; ", text.color.red, text.color.green, text.color.blue);
  }
  for (const NotingPen::Line& line : pen.lines) {
    for (const AcGePoint2d& p : line.points) result += number(p.x) + number(p.y);
    result += fmt::format("{:02x}{:02x}{:02x}; ", line.stroke.color.red, line.stroke.color.green,
                          line.stroke.color.blue);
  }
  return result;
}

TEST_F(PlotTest, FormattedTextsStandWhereTheirCodesPutThem) {
  // Each stretch: text, base, width factor, upward vector, colour; then the lines. Widths in heights: a
  // 0.841, b 0.871, c 0.754, X 0.940, blank 0.436, digits 0.873.
  struct Row {
    const char* type;
    const char* groups;
    const char* wanted;
  };
  const Row rows[] = {
      {"MTEXT", "40 3|71 7|1 a{\\H2x;b}c",
       "a 100.000 50.000 3.000 0.000 3.000 000000; b 102.523 50.000 6.000 0.000 6.000 000000; "
       "c 107.749 50.000 3.000 0.000 3.000 000000; "},
      {"MTEXT", "40 3|71 7|1 {\\C1;a}\\c65280;b",
       "a 100.000 50.000 3.000 0.000 3.000 ff0000; b 102.523 50.000 3.000 0.000 3.000 00ff00; "},
      {"MTEXT", "40 3|71 7|62 5|1 \\C1;{\\C256;a}\\LX\\l",
       "a 100.000 50.000 3.000 0.000 3.000 0000ff; X 102.523 50.000 3.000 0.000 3.000 ff0000; "
       "102.523 49.400 105.343 49.400 ff0000; "},
      {"MTEXT", "40 3|71 7|1 \\A1;\\S1/2;a",
       "2 100.000 48.050 3.000 0.000 3.000 000000; 1 100.000 51.950 3.000 0.000 3.000 000000; "
       "a 102.619 50.000 3.000 0.000 3.000 000000; 100.000 51.500 102.619 51.500 000000; "},
      {"MTEXT", "40 3|71 7|1 \\S+1^ -2;",  // one above the other: 1.149 and 0.495 before the digit
       "-2 100.981 50.000 3.000 0.000 3.000 000000; +1 100.000 53.900 3.000 0.000 3.000 000000; "},
      {"MTEXT", "40 3|41 20|71 1|1 \\pxqr;ab\\P\\pql;c",
       "ab 114.864 47.000 3.000 0.000 3.000 000000; c 100.000 42.000 3.000 0.000 3.000 000000; "},
      {"MTEXT", "40 3|41 17|71 1|1 aa {\\H2x;bb} cc",
       "aa  100.000 44.000 3.000 0.000 3.000 000000; bb 106.354 44.000 6.000 0.000 6.000 000000; "
       "cc 100.000 39.000 3.000 0.000 3.000 000000; "},
      {"MTEXT", "40 3|41 5|71 1|1 a\\~a",  // a blank that does not break
       "a\u00A0a 100.000 47.000 3.000 0.000 3.000 000000; "},
      {"MTEXT", "40 3|71 7|1 \\W0.5;a\\Q45;b\\{\\U+00E9",
       "a 100.000 50.000 1.500 0.000 3.000 000000; b{é 101.262 50.000 1.500 3.000 3.000 000000; "},
      {"TEXT", "40 2|1 %%uab%%u c%%O%%d",
       "ab c\u00B0 100.000 50.000 2.000 0.000 2.000 000000; 100.000 49.600 103.424 49.600 000000; "
       "105.804 52.400 107.176 52.400 000000; "},
  };
  for (const Row& row : rows) {
    pen = {};
    draw(row.type, std::string("8 0|10 100|20 50|") + row.groups);
    EXPECT_EQ(shown(pen), row.wanted) << row.groups;
  }
}

}  // namespace
