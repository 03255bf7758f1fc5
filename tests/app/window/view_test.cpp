// What the view shows when it rests, when it moves, when only a variable changes, and of drawings that no
// surveyor draws.

#include "app/window/window_trial.h"
#include "arx/db/dbblockref.h"
#include "arx/db/dbtext.h"

#include <QWheelEvent>
#include <set>

namespace veltora::app {
namespace {

class ViewTrial : public WindowTrial {
protected:
  /// Whether something is drawn at a pixel or beside it.
  bool inkedAbout(const QPoint& pixel) {
    const QImage image = view().grab().toImage();
    for (int x = -1; x <= 1; ++x)
      for (int y = -1; y <= 1; ++y)
        if (image.pixelColor(pixel + QPoint(x, y)) != backgroundOf(true)) return true;
    return false;
  }
  void wheelUp() {
    const QPoint cursor = at(20, 10);
    QWheelEvent event(cursor, view().mapToGlobal(cursor), {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&view(), &event);
  }
};

/// The colours of what the view shows.
std::size_t shadesOf(QWidget& widget) {
  const QImage image = widget.grab().toImage();
  std::set<QRgb> found;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) found.insert(image.pixel(x, y));
  return found.size();
}

TEST_F(ViewTrial, theViewIsSmoothAtRestAndCoarseWhileItMoves) {
  open({drawing()});
  work({[&] {
    paused = true;
    view().zoomExtents();
    EXPECT_EQ(shadesOf(view()), 2U);
    EXPECT_TRUE(QTest::qWaitFor([&] { return shadesOf(view()) > 5; }, 5000));
    {  // a change is drawn as smooth as the rest
      const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId());
      const AcDbObjectPointer<AcDbLine> line(space->entities()[0], AcDb::kForWrite);
      line->setEndPoint(line->endPoint() + AcGeVector3d(0, 1, 0));
    }
    EXPECT_GT(shadesOf(view()), 5U);
    wheelUp();
    EXPECT_EQ(shadesOf(view()), 2U);
    paused = false;
  }});
}

/// What stands in the header of a drawing, and not in its tables, changes its looks too.
TEST_F(ViewTrial, theScaleOfLineTypesAloneIsSeen) {
  open({drawing()});
  int before = 0;
  const auto inked = [&] {
    const QImage image = view().grab().toImage();
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x) count += image.pixelColor(x, y) != backgroundOf(true) ? 1 : 0;
    return count;
  };
  work({[&] {
          const AcDbObjectId type = database().recordOf("LTYPE", L"TRAIT");
          {
            const AcDbObjectPointer<AcDbLinetypeTableRecord> record(type, AcDb::kForWrite);
            DxfTag tags[] = {{100, 0, "AcDbLinetypeTableRecord"},
                             {2, 0, "TRAIT"},
                             {70, 0, "0"},
                             {3, 0, ""},
                             {72, 0, "65"},
                             {73, 0, "2"},
                             {40, 0, "60"},
                             {49, 0, "1"},
                             {74, 0, "0"},
                             {49, 0, "-59"},
                             {74, 0, "0"}};
            record->dxfIn(tags, database());
          }
          const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId());
          for (const AcDbObjectId& id : space->entities())
            AcDbObjectPointer<AcDbEntity>(id, AcDb::kForWrite)->setLinetype(type);
          view().zoomExtents();
          before = inked();
          EXPECT_LT(before, 200) << "mostly gaps";
        },
        [&] { type("(setvar \"LTSCALE\" 0.00001)"); },
        [&] { EXPECT_GT(inked(), 3 * before) << "so fine that it looks whole"; }});
}

/// Far, endless, huge and circular things among what is near: all of it is opened, shown, moved through,
/// picked.
TEST_F(ViewTrial, aDrawingOfExtremesIsWorkedInAsAnother) {
  const std::string path = (folder.chemin / "extremes.dxf").string();
  {
    AcDbDatabase made;
    const AcDbObjectId one = made.recordOf("BLOCK_RECORD", L"UN"),
                       two = made.recordOf("BLOCK_RECORD", L"DEUX");
    const auto put = [](AcDbObjectId where, AcDbEntity* entity) {
      const AcDbObjectPointer<AcDbBlockTableRecord> space(where, AcDb::kForWrite);
      ASSERT_EQ(space->appendAcDbEntity(entity), Acad::eOk);
      entity->close();
    };
    put(one, new AcDbBlockReference({1, 0, 0}, two));
    put(two, new AcDbBlockReference({0, 1, 0}, one));
    put(two, new AcDbLine({0, 0, 0}, {3, 0, 0}));
    const AcDbObjectId space = made.modelSpaceId();
    put(space, new AcDbLine({kX, kY, 0}, {kX + 40, kY, 0}));
    put(space, new AcDbLine({1e15, -1e15, 0}, {kX, 1e15, 0}));
    put(space, new AcDbCircle({kX, kY, 0}, AcGeVector3d::kZAxis, 1e15));
    put(space, new AcDbBlockReference({kX + 10, kY + 10, 0}, one));
    const std::wstring letters(100000, L'a');
    put(space, new AcDbText({kX, kY + 20, 0}, letters.c_str(), AcDbObjectId::kNull, 2));
    ASSERT_EQ(made.saveAs(base::fromUtf8(path).c_str()), Acad::eOk);
  }
  open({path});
  work({[&] {
          paused = true;
          view().zoomExtents();
          EXPECT_GT(view().place().height(), 1e15);
          view().grab();
          view().zoomTo({kX + 20, kY + 10}, 60);
          for (int i = 0; i < 3; ++i) {
            view().grab();
            wheelUp();
          }
          drag(Qt::MiddleButton, {200, 150}, {260, 190});
          EXPECT_TRUE(QTest::qWaitFor([&] { return inkedAbout(at(20, 0)); }, 2000)) << "the near line";
          paused = false;
          type("effacer");
        },
        [&] { click(20, 0); },
        [&] {
          ASSERT_NE(acedSelectionSets().growing, nullptr);
          EXPECT_EQ(lettersOf(acedSelectionSets().growing->entities()), "A");
          QTest::keyClick(&view(), Qt::Key_Escape);
        }});
}

}  // namespace
// Coordinates of a country lie far from what an empty drawing shows.
TEST_F(WindowTrial, whatComesFirstIntoAnEmptyDrawingIsShown) {
  open({});
  const auto isSeen = [&](double x, double y) { return view().rect().contains(at(x, y)); };
  work({[&] { type("POINT"); }, [&] { type("650000,6860000"); },
        [&] {
          EXPECT_TRUE(isSeen(0, 0));
          type("CERCLE");
        },
        [&] { type("650500,6860500"); }, [&] { type("3"); },
        [&] {
          EXPECT_FALSE(isSeen(500, 500)) << "later the view is the user's";
          EXPECT_TRUE(isSeen(0, 0));
          const QString told = session->window().commandLine().printed();
          EXPECT_TRUE(told.contains("\nCommande : CERCLE\n")) << told.toStdString();
        }});
}

TEST_F(WindowTrial, aDrawingThatShowsOnPaperOnlySaysSo) {
  const std::string path = (folder.chemin / "papier.dxf").string();
  {
    AcDbDatabase made;
    const AcDbObjectPointer<AcDbBlockTableRecord> paper(made.paperSpaceId(), AcDb::kForWrite);
    auto* const line = new AcDbLine({0, 0, 0}, {40, 20, 0});
    ASSERT_EQ(paper->appendAcDbEntity(line), Acad::eOk);
    line->close();
    paper->close();
    ASSERT_EQ(made.saveAs(base::fromUtf8(path).c_str()), Acad::eOk);
  }
  open({drawing(), path});
  work({[&] {
    const QString told = session->window().commandLine().printed();
    EXPECT_EQ(told.count("L'espace objet est vide"), 1) << told.toStdString();
  }});
}

}  // namespace veltora::app
