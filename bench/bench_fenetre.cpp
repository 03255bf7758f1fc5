// The window's view of a drawing of point blocks, each with its symbol and four attributes (six entities):
// reading its file, the first picture, the whole drawn anew, a step of panning and of zooming drawn anew, the
// shifted picture, a pick, one point moved.

#include "app/window/picture.h"
#include "arx/db/dballents.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbspaceindex.h"
#include "arx/ed/edpick.h"
#include "mesure.h"

#include <unistd.h>
#include <QApplication>
#include <QPainter>

#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>

namespace {

using namespace veltora::app;

constexpr int kSteps = 20;
constexpr int kPicks = 1000;
constexpr double kSpacing = 6.5;  // units between points, in the mean

void expect(bool right, const char* what) {
  if (right) return;
  std::fprintf(stderr, "%s failed\n", what);
  std::exit(1);
}

AcDbObjectId makeBlock(AcDbDatabase& drawing) {
  const AcDbObjectId id = drawing.recordOf("BLOCK_RECORD", L"BORNE");
  const AcDbObjectPointer<AcDbBlockTableRecord> block(id, AcDb::kForWrite);
  for (AcDbEntity* part : {static_cast<AcDbEntity*>(new AcDbLine({-0.5, 0, 0}, {0.5, 0, 0})),
                           static_cast<AcDbEntity*>(new AcDbLine({0, -0.5, 0}, {0, 0.5, 0})),
                           static_cast<AcDbEntity*>(new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 0.25))}) {
    expect(block->appendAcDbEntity(part) == Acad::eOk, "block");
    part->close();
  }
  return id;
}

void fill(AcDbDatabase& drawing, int points, double side) {
  const AcDbObjectId definition = makeBlock(drawing);
  const AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
  std::mt19937 random(1);
  std::uniform_real_distribution<double> within(0.0, side);
  for (int i = 0; i < points; ++i) {
    const AcGePoint3d at(650000.0 + within(random), 6860000.0 + within(random), 0.0);
    auto* const reference = new AcDbBlockReference(at, definition);
    expect(space->appendAcDbEntity(reference) == Acad::eOk, "reference");
    for (int row = 0; row < 4; ++row) {
      auto* const attribute = new AcDbAttribute(at + AcGeVector3d(0.75, 2 - 1.5 * row, 0), L"101.25", L"ALT");
      attribute->setHeight(1.0);
      expect(reference->appendAttribute(attribute) == Acad::eOk, "attribute");
      attribute->close();
    }
    reference->close();
  }
}

void measure(Mesure& table, int points) {
  const double side = kSpacing * std::sqrt(static_cast<double>(points));
  const std::wstring file =
      (std::filesystem::temp_directory_path() / ("bench_fenetre_" + std::to_string(::getpid()) + ".dxf"))
          .wstring();
  {
    AcDbDatabase made;
    made.undoLog().setRecording(false);
    fill(made, points, side);
    expect(made.saveAs(file.c_str()) == Acad::eOk, "writing");
  }
  AcDbDatabase drawing(false);
  drawing.undoLog().setRecording(false);
  table("read from its file", 6 * points,
        [&] { expect(drawing.readDwgFile(file.c_str()) == Acad::eOk, "reading"); });
  std::filesystem::remove(file);
  const ViewPlace whole{{650000.0 + side / 2, 6860000.0 + side / 2}, side / 980, QSize(1600, 1000)};
  ViewPlace near = whole;
  QImage picture;
  const int entities = 6 * points;
  table("first picture, all", entities, [&] { picture = pictureOf(drawing, whole, true); });
  table("drawn anew, all", entities, [&] { picture = pictureOf(drawing, whole, true); });
  table("drawn anew without steps, all", entities, [&] { picture = pictureOf(drawing, whole, true, true); });
  for (const double zoom : {5.0, 20.0}) {
    near.unitsPerPixel = whole.unitsPerPixel / zoom;
    const std::string name = "20 steps drawn anew, zoom " + std::to_string(static_cast<int>(zoom));
    table(name, entities, [&] {
      for (int i = 0; i < kSteps; ++i) {
        near.center.x += near.unitsPerPixel * 10;
        picture = pictureOf(drawing, near, true);
      }
    });
    table("one without steps", entities, [&] { picture = pictureOf(drawing, near, true, true); });
  }
  table("20 steps of the shifted picture", entities, [&] {
    QImage shown(whole.size, QImage::Format_RGB32);
    for (int i = 0; i < kSteps; ++i) {
      QPainter painter(&shown);
      painter.fillRect(shown.rect(), backgroundOf(true));
      painter.drawImage(QPointF(10.0 * i, 5.0 * i), picture);
    }
  });
  ViewPlace middle = whole;
  middle.unitsPerPixel /= 5;
  middle.center = {650000.0 + side / 2, 6860000.0 + side / 2};
  const AcEdPicker picker(drawing);
  table("1000 picks", entities, [&] {
    std::size_t found = 0;
    for (int i = 0; i < kPicks; ++i) {
      const double share = static_cast<double>(i) / kPicks;
      found +=
          picker.pick({650000.0 + side * share, 6860000.0 + side * share, 0}, near.unitsPerPixel * 8) ? 1 : 0;
    }
    expect(found > 0, "pick");
  });
  const auto moveOne = [&] {
    const AcDbObjectId first = drawing.spaceIndex().entityAt(0);
    const AcDbObjectPointer<AcDbBlockReference> reference(first, AcDb::kForWrite);
    reference->setPosition(reference->position() + AcGeVector3d(1, 1, 0));
    reference->close();
  };
  table("one point moved, all drawn anew, zoom 5", entities, [&] {
    moveOne();
    picture = pictureOf(drawing, middle, true);
  });
  expect(!drawing.spaceIndex().takeChange(), "the first change");
  table("100 points moved, each drawn alone, zoom 5", entities, [&] {
    for (int i = 0; i < 100; ++i) {
      moveOne();
      const auto change = drawing.spaceIndex().takeChange();
      expect(change && drawChanged(picture, drawing, middle, true, *change), "a change drawn alone");
    }
  });
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  Mesure table;
  for (const int points : {10000, 100000, 170000}) measure(table, points);
}
