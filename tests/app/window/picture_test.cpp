// What the view shows of a drawing, by its pixels.

#include "app/window/picture.h"
#include "app/window/view_pen.h"
#include "app/window/window_trial.h"
#include "arx/db/dballents.h"
#include "arx/db/dbdict.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbspaceindex.h"

#include <random>
#include <set>

namespace veltora::app {
namespace {

constexpr double kX = 650000.0;
constexpr double kY = 6860000.0;

class Picture : public ::testing::Test {
protected:
  Picture() { startToolkit(); }
  void add(AcDbEntity* made, const wchar_t* layer = L"0", int color = 256) {
    made->setLayer(drawing.recordOf("LAYER", layer));
    made->setColorIndex(color);
    const AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
    ASSERT_EQ(space->appendAcDbEntity(made), Acad::eOk);
    made->close();
  }
  void hide(const wchar_t* layer) {
    const AcDbObjectPointer<AcDbLayerTableRecord> record(drawing.recordOf("LAYER", layer), AcDb::kForWrite);
    record->setIsOff(true);
  }
  QImage show(double unitsPerPixel, bool dark = true) {
    place = {{kX, kY}, unitsPerPixel, QSize(200, 160)};
    return pictureOf(drawing, place, dark);
  }
  /// The box of the pixels that differ from the background.
  static QRect inked(const QImage& image, bool dark = true) {
    QRect box;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x)
        if (image.pixelColor(x, y) != backgroundOf(dark)) box |= QRect(x, y, 1, 1);
    return box;
  }
  AcDbDatabase drawing;
  ViewPlace place;
};

TEST_F(Picture, aCapitalIsAsTallAsItsTextSaysWhicheverWayItRuns) {
  for (const double turn : {0.0, 1.5707963267948966}) {
    auto* const text = new AcDbText({kX, kY, 0}, L"H", AcDbObjectId::kNull, 30, turn);
    add(text);
    const QRect box = inked(show(0.5));
    EXPECT_NEAR(turn == 0.0 ? box.height() : box.width(), 60, 2);
    // An H begins 201 / 1493 of its height behind its base point (the font's table hmtx).
    EXPECT_NEAR(box.left(), turn == 0.0 ? 108 : 40, 2);
    EXPECT_NEAR(box.bottom(), turn == 0.0 ? 79 : 71, 2);
    AcDbObjectPointer<AcDbText>(text->objectId(), AcDb::kForWrite)->erase();
  }
}

TEST_F(Picture, coloursAreThoseOfEntityOrLayerOnEitherBackground) {
  add(new AcDbLine({kX - 50, kY + 20, 0}, {kX + 50, kY + 20, 0}), L"0", 1);
  add(new AcDbLine({kX - 50, kY - 20, 0}, {kX + 50, kY - 20, 0}));
  for (const bool dark : {true, false}) {
    const QImage image = show(1.0, dark);
    EXPECT_EQ(image.pixelColor(100, 60), QColor(255, 0, 0));
    EXPECT_EQ(image.pixelColor(100, 100), QColor(dark ? Qt::white : Qt::black));
    EXPECT_EQ(inked(image, dark).width(), 101);
  }
}

/// A red and a green line that cross 30 to the right of a place, the green one drawn later.
std::pair<AcDbObjectId, AcDbObjectId> addCross(AcDbObjectId owner, double x, double y) {
  const AcDbObjectPointer<AcDbBlockTableRecord> block(owner, AcDb::kForWrite);
  auto* const red = new AcDbLine({x, y, 0}, {x + 60, y, 0});
  auto* const green = new AcDbLine({x + 30, y - 20, 0}, {x + 30, y + 20, 0});
  for (AcDbEntity* const line : {red, green}) {
    line->setColorIndex(line == red ? 1 : 3);
    block->appendAcDbEntity(line);
    line->close();
  }
  return {red->objectId(), green->objectId()};
}

/// The table that has each of two entities drawn in the other one's place.
AcDbObjectId exchangeInOrder(AcDbObjectId owner, std::pair<AcDbObjectId, AcDbObjectId> entities) {
  const AcDbObjectPointer<AcDbBlockTableRecord> block(owner, AcDb::kForWrite);
  block->createExtensionDictionary();
  const AcDbObjectPointer<AcDbDictionary> dictionary(block->extensionDictionary(), AcDb::kForWrite);
  auto* const table = new AcDbOtherObject("SORTENTSTABLE");
  DxfTagText tags;
  tags.append(100, "AcDbSortentsTable");
  tags.appendHandle(330, owner.handle());
  tags.appendHandle(331, entities.first.handle());
  tags.appendHandle(5, entities.second.handle());
  tags.appendHandle(331, entities.second.handle());
  tags.appendHandle(5, entities.first.handle());
  table->setTags(tags);
  AcDbObjectId id;
  dictionary->setAt(L"ACAD_SORTENTS", table, id);
  table->close();
  return id;
}

TEST_F(Picture, whatLiesOverWhatIsSaidByTheTableOfSortingHandles) {
  const AcDbObjectId block = drawing.recordOf("BLOCK_RECORD", L"CROIX");
  add(new AcDbBlockReference({kX, kY - 40, 0}, block));
  const QColor red(255, 0, 0), green(0, 255, 0);
  for (const auto& [owner, y, row] :
       {std::tuple(drawing.modelSpaceId(), kY, 80), std::tuple(block, 0.0, 120)}) {
    const auto cross = addCross(owner, owner == block ? 0.0 : kX, y);
    EXPECT_EQ(show(1.0).pixelColor(130, row), green);
    const AcDbObjectId table = exchangeInOrder(owner, cross);
    EXPECT_EQ(show(1.0).pixelColor(130, row), red);
    AcDbObjectPointer<AcDbObject>(table, AcDb::kForWrite)->erase();
    EXPECT_EQ(show(1.0).pixelColor(130, row), green) << "without the table the later one lies above";
  }
}

TEST_F(Picture, whatIsTooSmallIsADotAndWhatIsHiddenLeavesItsPlace) {
  add(new AcDbCircle({kX + 10, kY, 0}, AcGeVector3d::kZAxis, 0.1), L"CACHE");
  add(new AcDbCircle({kX + 10, kY, 0}, AcGeVector3d::kZAxis, 0.1), L"VU", 3);
  hide(L"CACHE");
  const QImage image = show(1.0);
  EXPECT_EQ(inked(image), QRect(110, 80, 1, 1));
  EXPECT_EQ(image.pixelColor(110, 80), QColor(0, 255, 0));
}

TEST_F(Picture, aChangeIsSeenByTheIndexThatTheViewAsks) {
  auto* const line = new AcDbLine({kX - 50, kY, 0}, {kX + 50, kY, 0});
  add(line);
  EXPECT_EQ(inked(show(1.0)).center().y(), 80);
  const Adesk::UInt64 before = drawing.spaceIndex().touches();
  {
    const AcDbObjectPointer<AcDbLine> moved(line->objectId(), AcDb::kForWrite);
    moved->setStartPoint({kX - 50, kY + 30, 0});
    moved->setEndPoint({kX + 50, kY + 30, 0});
  }
  EXPECT_NE(drawing.spaceIndex().touches(), before);
  EXPECT_EQ(inked(show(1.0)).center().y(), 50);
}

TEST_F(Picture, anOutlineCutsWhatIsDrawnWithinItAlone) {
  QImage image(100, 100, QImage::Format_RGB32);
  image.fill(Qt::white);
  {
    QPainter painter(&image);
    ViewPen pen(painter, image.height());
    const auto at = [](double x, double y) {
      return AcGePoint2d(x * ViewPen::kMmPerPixel, y * ViewPen::kMmPerPixel);
    };
    const std::vector<AcGePoint2d> triangle{at(10, 10), at(90, 10), at(10, 90)};
    const std::vector<AcGePoint2d> level{at(0, 20), at(100, 20)}, above{at(0, 95), at(100, 95)};
    AcPlStroke stroke;
    pen.clip(triangle);
    pen.line(level, stroke);
    pen.clip({});
    pen.line(above, stroke);
  }
  const auto inkedColumns = [&](int y) {
    int count = 0;
    for (int x = 0; x < image.width(); ++x) count += image.pixelColor(x, y) != QColor(Qt::white) ? 1 : 0;
    return count;
  };
  EXPECT_NEAR(inkedColumns(80), 70, 1) << "from the left side to the slope";
  EXPECT_EQ(inkedColumns(5), 100);
}

/// A leaning line gets shades between its colour and the background's, a level one none; both stay in place.
TEST_F(Picture, aSmoothOneHasNoStepsAndKeepsLevelLinesSharp) {
  add(new AcDbLine({kX - 50, kY + 20, 0}, {kX + 50, kY + 20, 0}), L"0", 1);
  add(new AcDbLine({kX - 50, kY - 50, 0}, {kX + 50, kY - 10, 0}), L"0", 1);
  add(new AcDbCircle({kX + 10, kY + 40, 0}, AcGeVector3d::kZAxis, 0.1), L"0", 3);
  const QImage coarse = show(1.0);
  const QImage smooth = pictureOf(drawing, place, true, true);
  EXPECT_EQ(smooth.pixelColor(100, 60), QColor(255, 0, 0));
  EXPECT_EQ(smooth.pixelColor(100, 59), backgroundOf(true));
  EXPECT_EQ(smooth.pixelColor(110, 40), QColor(0, 255, 0)) << "a dot";
  const auto shades = [](const QImage& image) {
    std::set<QRgb> found;
    for (int x = 60; x < 140; ++x)
      for (int y = 85; y < 135; ++y) found.insert(image.pixel(x, y));
    return found.size();
  };
  EXPECT_EQ(shades(coarse), 2U);
  EXPECT_GT(shades(smooth), 5U);
  const QRect before = inked(coarse), after = inked(smooth);
  EXPECT_LE(std::max(std::abs(before.left() - after.left()), std::abs(before.bottom() - after.bottom())), 1);
}

/// By pixels: what changes by hand in a drawing full of lines, circles, texts and symbols of many sizes.
class PictureParts : public Picture, public ::testing::WithParamInterface<bool> {};

TEST_P(PictureParts, areThoseOfTheWholeDrawnAnew) {
  const bool smooth = GetParam();
  std::mt19937 random(7);
  const auto within = [&](double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random);
  };
  std::vector<AcDbObjectId> all;
  const auto addOne = [&] {
    const AcGePoint3d at(kX + within(-110, 110), kY + within(-90, 90), 0);
    const int kind = static_cast<int>(within(0, 3));
    AcDbEntity* made = nullptr;
    if (kind == 0) made = new AcDbLine(at, at + AcGeVector3d(within(-40, 40), within(-40, 40), 0));
    if (kind == 1) made = new AcDbCircle(at, AcGeVector3d::kZAxis, within(0.1, 20));
    if (kind == 2) made = new AcDbText(at, L"Âgé 12j", AcDbObjectId::kNull, within(1, 12), within(0, 6));
    made->setLineWeight(kind == 0 ? 50 : -1);
    add(made, L"0", 1 + static_cast<int>(within(0, 6)));
    all.push_back(made->objectId());
  };
  for (int i = 0; i < 60; ++i) addOne();
  show(1.0);
  QImage kept = pictureOf(drawing, place, true, smooth);
  EXPECT_FALSE(drawing.spaceIndex().takeChange()) << "nothing is known at first";
  int drawn = 0;
  for (int i = 0; i < 60; ++i) {
    const auto which = static_cast<std::size_t>(within(0, static_cast<double>(all.size())));
    if (i % 4 == 0) addOne();
    if (const AcDbObjectPointer<AcDbEntity> entity(all[which], AcDb::kForWrite); entity && i % 4 == 1)
      entity->erase();
    else if (entity && i % 4 == 2)
      entity->transformBy(AcGeMatrix3d::translation({within(-50, 50), within(-50, 50), 0}));
    else if (entity && i % 4 == 3)
      entity->setColorIndex(7);
    const auto change = drawing.spaceIndex().takeChange();
    ASSERT_TRUE(change) << i;
    if (drawChanged(kept, drawing, place, true, *change, smooth))
      ++drawn;
    else
      kept = pictureOf(drawing, place, true, smooth);
    ASSERT_EQ(kept, pictureOf(drawing, place, true, smooth)) << i;
  }
  EXPECT_GT(drawn, 50);
  hide(L"0");
  EXPECT_FALSE(drawing.spaceIndex().takeChange()) << "a layer may be anywhere";
}
INSTANTIATE_TEST_SUITE_P(CoarseAndSmooth, PictureParts, ::testing::Bool());

}  // namespace
}  // namespace veltora::app
