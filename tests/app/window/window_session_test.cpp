// A session in the window, by clicks, drags and keys, on a drawing that is read, changed, saved and read
// back.

#include "app/window/french.h"
#include "app/window/layer_panel.h"
#include "app/window/point_panel.h"
#include "app/window/text.h"
#include "app/window/window_trial.h"
#include "arx/ap/acdocman.h"
#include "arx/ed/accmd.h"
#include "arx/ed/eddrag.h"
#include "arx/ed/edgraphics.h"
#include "arx/ed/edhelp.h"
#include "arx/ed/edjig.h"
#include "arx/ed/edpick.h"
#include "base/files.h"
#include "base/suivi.h"
#include "points/projets_topo.h"

#include <sys/resource.h>

#include <QAction>
#include <QHeaderView>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProcess>
#include <QTabBar>
#include <QTableView>
#include <QTreeView>
#include <QWheelEvent>
#include <csignal>

namespace veltora::app {
namespace {

using Lines = std::vector<std::array<double, 4>>;

void wheel(QWidget& widget, const QPoint& at, int notches) {
  QWheelEvent event(at, widget.mapToGlobal(at), {}, {0, 120 * notches}, {}, {}, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&widget, &event);
}

TEST_F(WindowTrial, aDrawingIsOpenedPickedDrawnUndoneSavedAndReadBack) {
  const std::string path = drawing();
  open({path});
  work({
      [&] { type("effacer"); },
      [&] { click(20, 0); },  // on A
      [&] {
        ASSERT_NE(acedSelectionSets().growing, nullptr);
        EXPECT_EQ(lettersOf(acedSelectionSets().growing->entities()), "A");
        QTest::mouseClick(&view(), Qt::RightButton, {}, at(20, 10));
      },
      [&] {
        EXPECT_EQ(linesOf(database()).size(), 2U);
        session->window().findChild<QAction*>("U")->trigger();
      },
      [&] {
        EXPECT_EQ(linesOf(database()).size(), 3U);
        view().pointing().snaps = {AcEdSnap::kEnd};
        session->window().findChild<QAction*>("LIGNE")->trigger();
      },
      // Beside the ends of A and of B: the line begins and ends in them, with all of their digits.
      [&] { QTest::mouseClick(&view(), Qt::LeftButton, {}, at(40, 0) + QPoint(3, -3)); },
      [&] { QTest::mouseClick(&view(), Qt::LeftButton, {}, at(60, 30) + QPoint(-2, 4)); },
      [&] { QTest::keyClick(&session->window().commandLine().edit(), Qt::Key_Return); },
      [&] { QTest::keyClick(&view(), Qt::Key_Escape); },
      [&] { type("QSAVE"); },
  });
  AcDbDatabase read(false);
  ASSERT_EQ(read.readDwgFile(base::fromUtf8(path).c_str()), Acad::eOk);
  const Lines lines = linesOf(read);
  ASSERT_EQ(lines.size(), 4U);
  EXPECT_EQ(lines[0], (std::array{0., 0., 40., 0.}));
  EXPECT_EQ(lines[3], (std::array{40., 0., lines[1][2], lines[1][3]})) << "from end to end, exactly";
}

TEST_F(WindowTrial, theWheelKeepsThePlaceUnderTheCursorAndTheMiddleButtonPullsIt) {
  open({drawing()});
  work({[&] {
    view().zoomExtents();
    const ViewPlace first = view().place();
    EXPECT_GE(first.toWorld({0, 0}).y, kY + 50) << "the whole drawing is shown";
    EXPECT_LE(first.toWorld({0, 0}).x, kX);
    const QPoint cursor = at(60, 30) + QPoint(7, 5);
    const AcGePoint2d under = first.toWorld(cursor);
    wheel(view(), cursor, 3);
    const ViewPlace near = view().place();
    EXPECT_NEAR(near.unitsPerPixel, first.unitsPerPixel / (1.25 * 1.25 * 1.25), 1e-12);
    EXPECT_LT((near.toWorld(cursor) - under).length(), 1e-8);
    EXPECT_NEAR(acedView().height, near.height(), 1e-9) << "the host picks by what is shown";
    drag(Qt::MiddleButton, cursor, cursor + QPoint(-120, 40));
    EXPECT_LT((view().place().toWorld(cursor + QPoint(-120, 40)) - under).length(), 1e-8);
    EXPECT_FALSE(acDocManager->isModified(curDoc())) << "to look about changes nothing";
    view().zoomExtents();
    EXPECT_NEAR(view().place().unitsPerPixel, first.unitsPerPixel, 1e-12);
    view().zoomPrevious();
    EXPECT_NEAR(view().place().unitsPerPixel, near.unitsPerPixel, 1e-12);
    view().pointing().beginZoomWindow();
    drag(Qt::LeftButton, at(55, -5), at(65, 35));
    EXPECT_NEAR(view().place().center.x, kX + 60, near.unitsPerPixel);
    EXPECT_NEAR(view().place().center.y, kY + 15, near.unitsPerPixel);
  }});
}

struct Drag {
  std::array<double, 4> corners;
  const char* chosen;
  const char* line;  ///< of a script that selects the same
};

TEST_F(WindowTrial, draggingSelectsAsTheLinesOfAScriptDo) {
  const Drag rows[] = {
      {{-5, -5, 50, 10}, "A", "F"},    // to the right: A lies within
      {{-5, 10, 50, -5}, "A", "F"},    // downwards too
      {{-5, -5, 65, 25}, "A", "F"},    // B and C stick out
      {{65, 25, -5, -5}, "ABC", "C"},  // to the left: they are touched
      {{30, 10, 20, 5}, "", "C"},      // nothing there
      {{62, 31, 58, 28}, "B", "C"},
  };
  open({drawing()});
  std::vector<Step> steps;
  for (const Drag& row : rows) {
    const auto& [x1, y1, x2, y2] = row.corners;
    const auto selected = [&, row] {
      ASSERT_NE(acedSelectionSets().growing, nullptr);
      EXPECT_EQ(lettersOf(acedSelectionSets().growing->entities()), row.chosen) << row.line << row.corners[0];
      QTest::keyClick(&view(), Qt::Key_Escape);
    };
    const auto number = [](double value) { return QString::number(value, 'f', 3); };
    const std::string line =
        utf8(QString("%1 %2,%3 %4,%5")
                 .arg(row.line, number(kX + x1), number(kY + y1), number(kX + x2), number(kY + y2)));
    steps.insert(steps.end(), {[&] { type("list"); },
                               [&, row] {
                                 drag(Qt::LeftButton, at(row.corners[0], row.corners[1]),
                                      at(row.corners[2], row.corners[3]));
                               },
                               selected, [&] { type("list"); }, [&, line] { type(line.c_str()); }, selected});
  }
  work(steps);
}

TEST_F(WindowTrial, whatIsChosenFirstIsTakenByTheNextCommand) {
  open({drawing()});
  work({[&] { click(20, 0); },
        [&] {
          drag(Qt::LeftButton, at(62, 31), at(58, 28));
          EXPECT_EQ(lettersOf(acedSelectionSets().pickFirst), "AB");
          QTest::mouseClick(&view(), Qt::LeftButton, Qt::ShiftModifier, at(20, 0));
          EXPECT_EQ(lettersOf(acedSelectionSets().pickFirst), "B");
          QTest::keyClick(&view(), Qt::Key_Delete);
        },
        [&] {
          EXPECT_EQ(linesOf(database()), (Lines{{0, 0, 40, 0}, {0, 20, 40, 50}}));
          EXPECT_TRUE(acedSelectionSets().pickFirst.empty());
          // The keys mean the drawing while the line of commands, which has the focus, is empty.
          QLineEdit& line = session->window().commandLine().edit();
          line.setFocus();
          QTest::keyClicks(&line, "ab");
          QTest::keyClick(&line, Qt::Key_Z, Qt::ControlModifier);
          EXPECT_EQ(line.text(), "") << "typed text is taken back first";
          QTest::keyClick(&line, Qt::Key_Z, Qt::ControlModifier);
        },
        [&] {
          EXPECT_EQ(linesOf(database()).size(), 3U);
          drag(Qt::LeftButton, at(62, 31), at(58, 28));
          QTest::keyClick(&session->window().commandLine().edit(), Qt::Key_Delete);
        },
        [&] { EXPECT_EQ(linesOf(database()).size(), 2U); }});
}

TEST_F(WindowTrial, orthoHoldsALineToTheAxes) {
  open({drawing()});
  work({[&] {
          session->window().findChild<QAction*>("ortho")->setChecked(true);
          type("LIGNE");
        },
        [&] { type("650010,6860010"); }, [&] { click(30, 13); }, [&] { click(28, 45); },
        [&] { QTest::keyClick(&view(), Qt::Key_Return); },
        [&] {
          const Lines drawn = linesOf(database());
          ASSERT_EQ(drawn.size(), 5U);
          EXPECT_EQ(drawn[3][3], 10.0) << "level: exactly the first point's Y";
          EXPECT_NEAR(drawn[3][2], 30.0, view().place().unitsPerPixel);
          EXPECT_EQ(drawn[4][2], drawn[4][0]) << "upright";
        }});
}

TEST_F(WindowTrial, aTransparentCommandRunsWithinTheOneThatWaitsAnotherEndsIt) {
  open({drawing()});
  work({[&] { type("LIGNE"); }, [&] { type("650010,6860010"); },
        [&] {
          EXPECT_EQ(prompt().substr(0, 8), "Au point");
          type("'ZOOM");
        },
        [&] {
          EXPECT_EQ(prompt().substr(0, 12), "Premier coin");
          type("650000,6860000");
        },
        [&] { type("650020,6860010"); },
        [&] {
          EXPECT_EQ(prompt().substr(0, 8), "Au point");
          EXPECT_NEAR(view().place().center.x, kX + 10, 1e-6) << "what ZOOM shows is shown";
          type("650030,6860010");
        },
        [&] { session->window().findChild<QAction*>("CERCLE")->trigger(); },
        [&] {
          EXPECT_NE(prompt().find("entre"), std::string::npos) << prompt();
          EXPECT_EQ(linesOf(database()).size(), 4U) << "what LIGNE drew stays";
        }});
}

TEST_F(WindowTrial, anApostropheInATextIsALetter) {
  open({});
  work({[&] { type("TEXTE"); }, [&] { type("0,0"); }, [&] { type("2"); }, [&] { type("0"); },
        [&] { type("'ZOOM"); },
        [&] {
          EXPECT_TRUE(lines().isIdle()) << prompt();
          const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId());
          ASSERT_EQ(space->entities().size(), 1U);
          const AcDbObjectPointer<AcDbText> text(space->entities()[0]);
          ASSERT_TRUE(text);
          EXPECT_EQ(std::wstring(text->textString()), L"'ZOOM");
        }});
}

TEST_F(WindowTrial, whatACommandShapesFollowsTheCursor) {
  open({drawing()});
  const auto dragged = [&] {
    AcDbExtents box;
    EXPECT_TRUE(acedDragged() && acedDragged()->getGeomExtents(box) == Acad::eOk);
    return box;
  };
  work({[&] { type("RECT3PT"); }, [&] { type("650010,6860005"); }, [&] { type("650030,6860005"); },
        [&] {
          // The third point is above the level side: what is shown grows with it before it is answered.
          move(at(20, 15));
          const double low = dragged().maxPoint().y - dragged().minPoint().y;
          move(at(20, 25));
          const double tall = dragged().maxPoint().y - dragged().minPoint().y;
          EXPECT_NEAR(tall - low, 10, 2 * view().place().unitsPerPixel);
          EXPECT_NEAR(dragged().minPoint().x, kX + 10, 1e-6);
          EXPECT_EQ(linesOf(database()).size(), 3U);
          lines().cancel();
        },
        [&] { EXPECT_EQ(acedDragged(), nullptr); }});
}

struct DraggedSet {
  const char* command;
  std::vector<const char*> answers;  ///< in front of the prompt that drags
  double x, y;                       ///< where the cursor goes, from the corner
  std::array<double, 2> middle;      ///< where the middle of line A, at 20, 0, is seen then
};

TEST_F(WindowTrial, whatACommandMovesIsSeenWhereItWouldCome) {
  const DraggedSet rows[] = {{"DEPLACER", {"650000,6860000"}, 10, 20, {30, 20}},
                             {"COPIER", {"650040,6860000"}, 50, 10, {30, 10}},
                             {"COPIER", {"650040,6860000", "650041,6860000"}, 50, 10, {30, 10}},
                             {"ROTATION", {"650000,6860000"}, 0, 15, {0, 20}},
                             {"ROTATION", {"650000,6860000", "Copier"}, 0, 15, {0, 20}},
                             {"MIROIR", {"650050,6860000"}, 50, 30, {80, 0}}};
  open({drawing()});
  std::vector<Step> steps = {[&] { view().zoomTo({kX + 40, kY + 25}, 80); }};
  for (const DraggedSet& row : rows) {
    steps.push_back([&, row] { type(row.command); });
    steps.push_back([&] { click(20, 0); });
    steps.push_back([&] { type(""); });
    for (const char* answer : row.answers) steps.push_back([&, answer] { type(answer); });
    steps.push_back([&, row] {
      const auto lit = [&] {
        const QImage seen = view().grab().toImage();
        const QPoint middle = at(row.middle[0], row.middle[1]);
        for (int dx = -2; dx <= 2; ++dx)
          for (int dy = -2; dy <= 2; ++dy) {
            const QColor color = seen.pixelColor(middle + QPoint(dx, dy));
            if (color.red() > 150 && color.green() < 160 && color.blue() < 60) return true;
          }
        return false;
      };
      EXPECT_FALSE(lit()) << row.command;
      const auto before = linesOf(database());
      move(at(row.x, row.y));
      EXPECT_TRUE(lit()) << row.command << row.answers.size();
      EXPECT_EQ(linesOf(database()), before) << "nothing is moved yet";
      lines().cancel();
    });
    steps.push_back([&] {
      EXPECT_EQ(acedDraggedSet(), nullptr);
      type("U");
    });
  }
  work(steps);
}

TEST_F(WindowTrial, closingEndsTheQuestionsAndAsksForWhatIsNotSaved) {
  const std::string path = drawing();
  open({path});
  bool asked = false;
  work({[&] { type("LIGNE"); }, [&] { type("650010,6860010"); }, [&] { type("650030,6860010"); },
        [&] { session->window().close(); },
        [&] {
          ASSERT_NE(question(), nullptr);
          asked = true;
          press("Annuler");
        },
        [&] {
          EXPECT_TRUE(lines().isIdle()) << "the session goes on";
          EXPECT_EQ(linesOf(database()).size(), 4U);
        }});
  EXPECT_TRUE(asked);
  AcDbDatabase read(false);
  ASSERT_EQ(read.readDwgFile(base::fromUtf8(path).c_str()), Acad::eOk);
  EXPECT_EQ(linesOf(read).size(), 3U) << "answered with no";
}

TEST_F(WindowTrial, undoAndRedoTellWhatTheyWouldTakeAndAreGreyWithoutAny) {
  open({drawing()});
  const auto shows = [&](const char* name) {
    const auto* const action = session->window().findChild<QAction*>(name);
    return (action->isEnabled() ? "" : "gris ") + utf8(action->text());
  };
  work({[&] {
          EXPECT_EQ(shows("U"), "gris Annuler");
          EXPECT_EQ(shows("RETABLIR"), "gris Rétablir");
          type("EFFACER");
        },
        [&] { click(20, 0); }, [&] { type(""); },
        [&] {
          EXPECT_EQ(shows("U"), "Annuler : EFFACER");
          session->window().findChild<QAction*>("U")->trigger();
        },
        [&] {
          EXPECT_EQ(shows("U"), "gris Annuler");
          EXPECT_EQ(shows("RETABLIR"), "Rétablir : EFFACER");
          type("NOUVEAU");
        },
        [&] { EXPECT_EQ(shows("RETABLIR"), "gris Rétablir") << "each drawing has its own"; }});
}

TEST_F(WindowTrial, closingEndsADialogAndAJobThatIsAtWork) {
  open({drawing()});
  static long long s_reached = 0;
  static MainWindow* s_window = nullptr;
  s_window = &session->window();
  acedRegCmds->addCommand(L"ESSAI", L"LONGTRAVAIL", L"LONGTRAVAIL", 0, [] {
    base::Suivi progress(1000);
    for (s_reached = 0; s_reached < 1000 && !progress.arrete(); ++s_reached) {
      if (s_reached == 300) s_window->close();
      progress.avancer();
    }
  });
  work({[&] { session->window().findChild<QAction*>("LEVER")->trigger(); },
        [&] {
          ASSERT_NE(dialog(), nullptr);
          session->window().findChild<QAction*>("NOUVEAU")->trigger();
          EXPECT_EQ(acDocManager->documentCount(), 1);
          dialog()->reject();
        },
        [&] { type("LONGTRAVAIL"); }});
  EXPECT_LT(s_reached, 400);
  EXPECT_GE(s_reached, 300);
  acedRegCmds->removeGroup(L"ESSAI");
}

TEST_F(WindowTrial, closingCancelsTheDialogThatIsOpen) {
  open({drawing()});
  work({[&] { session->window().findChild<QAction*>("CORRPOLFERMEE")->trigger(); },
        [&] {
          ASSERT_NE(dialog(), nullptr);
          session->window().close();
        }});
  EXPECT_TRUE(session->program().hasQuit());
}

TEST_F(WindowTrial, aDiskWithoutRoomLeavesTheFileAndTheChanges) {
  const std::string path = drawing();
  const auto before = base::lireFichier(path);
  open({path});
  rlimit usual{};
  ::getrlimit(RLIMIT_FSIZE, &usual);
  const auto former = std::signal(SIGXFSZ, SIG_IGN);
  work({[&] { type("LIGNE"); }, [&] { type("650010,6860010"); }, [&] { type("650030,6860010"); },
        [&] { type(""); },
        [&] {
          const rlimit small{1000, usual.rlim_max};
          ::setrlimit(RLIMIT_FSIZE, &small);
          type("QSAVE");
        },
        [&] {
          ::setrlimit(RLIMIT_FSIZE, &usual);
          EXPECT_TRUE(session->window().commandLine().printed().contains("Enregistrement impossible"));
          EXPECT_TRUE(curDoc()->isModified());
          EXPECT_EQ(base::lireFichier(path), before);
          EXPECT_EQ(session->window().tabs().tabText(0), "dessin.dxf *");
          type("QSAVE");
        },
        [&] { EXPECT_EQ(session->window().tabs().tabText(0), "dessin.dxf"); }});
  std::signal(SIGXFSZ, former);
}

TEST_F(WindowTrial, layersAreSwitchedInTheirPanelAsStepsOfU) {
  open({drawing()});
  work({[&] { type("LAYER"); }, [&] { type("N"); }, [&] { type("AXE"); }, [&] { type(""); },
        [&] {
          LayerPanel& panel = session->window().layers();
          panel.refresh();
          ASSERT_EQ(panel.rowCount(), 2);
          EXPECT_EQ(panel.item(1, 1)->text(), "AXE");
          emit panel.cellClicked(1, 4);
          emit panel.cellClicked(0, 2);
          emit panel.cellDoubleClicked(1, 1);
          EXPECT_EQ(panel.item(1, 4)->text(), "✓");
          EXPECT_EQ(panel.item(0, 2)->text(), "");
          EXPECT_EQ(panel.item(1, 0)->text(), "✓");
          view().zoomExtents();
          const QImage hidden = view().grab().toImage();
          EXPECT_EQ(hidden.pixelColor(at(20, 0)), backgroundOf(true)) << "layer 0 is off";
          type("U");
        },
        [&] { type("U"); },
        [&] {
          EXPECT_EQ(session->window().layers().item(0, 2)->text(), "✓");
          const QImage seen = view().grab().toImage();
          bool white = false;
          for (int dy = -1; dy <= 1; ++dy)
            white = white || seen.pixelColor(at(20, 0) + QPoint(0, dy)) == Qt::white;
          EXPECT_TRUE(white);
        }});
}

TEST_F(WindowTrial, pointsAreSortedByNumberFilteredAndShown) {
  open({drawing()});
  work({[&] {
    for (const auto& [name, x] : {std::pair(L"100", 10.0), std::pair(L"9", 20.0), std::pair(L"S1", 30.0)})
      tablesPoints->currTable()->CreerPoint({kX + x, kY + 500, 100.0}, 1, name);
    PointPanel& panel = session->window().points();
    panel.refresh();
    QTableView& table = panel.table();
    table.sortByColumn(0, Qt::AscendingOrder);
    const auto cell = [&](int row, int column) {
      return table.model()->index(row, column).data().toString();
    };
    ASSERT_EQ(table.model()->rowCount(), 3);
    EXPECT_EQ(cell(0, 0) + cell(1, 0) + cell(2, 0), "9100S1");
    panel.findChild<QLineEdit*>("filtre")->setText("s");
    ASSERT_EQ(table.model()->rowCount(), 1);
    EXPECT_EQ(cell(0, 1), "650030.000");
    emit table.doubleClicked(table.model()->index(0, 0));
    EXPECT_EQ(view().place().center.x, kX + 30);
    EXPECT_EQ(view().place().center.y, kY + 500);
  }});
}

TEST_F(WindowTrial, eachDrawingHasATabAndItsView) {
  open({drawing("un.dxf"), drawing("deux.dxf")});
  QTabBar& tabs = session->window().tabs();
  work({[&] {
          ASSERT_EQ(tabs.count(), 2);
          EXPECT_EQ(tabs.currentIndex(), 1);
          view().zoomTo({kX + 5, kY + 5}, 10);
          emit tabs.tabBarClicked(0);
        },
        [&] {
          EXPECT_EQ(std::wstring(curDoc()->docTitle()), L"un.dxf");
          EXPECT_NE(view().place().center.x, kX + 5);
          emit tabs.tabBarClicked(1);
        },
        [&] {
          EXPECT_NEAR(view().place().center.x, kX + 5, 1e-9);
          EXPECT_NEAR(view().place().height(), 10, 1e-9);
          emit tabs.tabCloseRequested(0);
        },
        [&] {
          ASSERT_EQ(tabs.count(), 1);
          EXPECT_EQ(std::wstring(curDoc()->docTitle()), L"deux.dxf");
        }});
}

void drop(QWidget& window, const std::vector<std::string>& files) {
  QMimeData data;
  QList<QUrl> urls;
  for (const std::string& file : files) urls << QUrl::fromLocalFile(shown(file));
  data.setUrls(urls);
  QDropEvent event(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, {});
  static_cast<QObject&>(window).event(&event);
}

/// What the fields and lists of a dialog show.
QString contentOf(const QWidget& dialog) {
  QStringList texts;
  for (const QLineEdit* const edit : dialog.findChildren<QLineEdit*>()) texts << edit->text();
  for (const QPlainTextEdit* const edit : dialog.findChildren<QPlainTextEdit*>())
    texts << edit->toPlainText();
  for (const QTreeView* const list : dialog.findChildren<QTreeView*>())
    for (int row = 0; row < list->model()->rowCount(); ++row)
      for (int column = 0; column < list->model()->columnCount(); ++column)
        texts << list->model()->index(row, column).data().toString();
  return texts.join(' ');
}

struct FieldFile {
  const char* file;  ///< of the examples; several are dropped at once, and wait for each other
  const char* title;
  const char* shown;  ///< of its content
};

TEST_F(WindowTrial, fieldFilesStartTheirDialogsFilledIn) {
  const FieldFile rows[] = {{"polygonale_fermee.obs", "Correction de polygonale fermée", "652318.42"},
                            {"polygonale_ouverte.obs", "Correction Polygonale ouverte", "651204.18"},
                            {"reseau_mixte.mc", "Moindres carrés", "651200.000"},
                            {"leve.xyz", "Points en XYZ", "652352.460"},
                            {"carnet.gsi", "Import GSI", "carnet.gsi"}};
  open({drawing()});
  std::vector<std::string> files;
  for (const FieldFile& row : rows) files.push_back(VELTORA_SOURCE_DIR "/examples/" + std::string(row.file));
  const std::string foreign = (folder.chemin / "lettre.obs").string();
  base::remplacerFichier(foreign, "<html><body>Bonjour</body></html>");
  std::vector<Step> steps = {[&] { type("LIGNE"); },
                             [&] {
                               drop(session->window(), {foreign});
                               EXPECT_EQ(prompt().substr(0, 8), "Du point")
                                   << "nothing is given up for nothing";
                               drop(session->window(), files);
                             }};
  for (const FieldFile& row : rows)
    steps.push_back([&, row] {
      ASSERT_NE(dialog(), nullptr) << row.file;
      EXPECT_EQ(utf8(dialog()->windowTitle()), row.title);
      EXPECT_TRUE(contentOf(*dialog()).contains(row.shown)) << row.file << utf8(contentOf(*dialog()));
      drop(session->window(), {drawing("autre.dxf"), files[0]});
      dialog()->reject();
    });
  steps.push_back([&] {
    EXPECT_TRUE(lines().isIdle());
    EXPECT_EQ(acDocManager->documentCount(), 1) << "an open dialog stays";
    const QString told = session->window().commandLine().printed();
    EXPECT_TRUE(told.contains("un rapport HTML")) << utf8(told);
    EXPECT_TRUE(told.contains("fermez d'abord la boîte")) << utf8(told);
    session->window().findChild<QAction*>("CORRPOLFERMEE")->trigger();
  });
  steps.push_back([&] {
    ASSERT_NE(dialog(), nullptr);
    EXPECT_FALSE(contentOf(*dialog()).contains("652318.42")) << "the next one is as ever";
  });
  work(steps);
}

TEST_F(WindowTrial, drawingsAreDroppedAndOpenedAgainFromTheRecentOnes) {
  const std::string path = drawing("un.dxf");
  open({});
  const auto titleOfCurrent = [] { return std::wstring(curDoc()->docTitle()); };
  work({[&] {
          drop(session->window(), {path, "/nulle/part.png"});
        },
        [&] {
          EXPECT_EQ(titleOfCurrent(), L"un.dxf");
          EXPECT_EQ(session->window().tabs().count(), 2);
          type("FERMER");
        },
        [&] {
          EXPECT_NE(titleOfCurrent(), L"un.dxf");
          auto* const recent = session->window().findChild<QMenu*>("recents");
          emit recent->aboutToShow();
          ASSERT_FALSE(recent->actions().isEmpty());
          recent->actions().front()->trigger();
        },
        [&] { EXPECT_EQ(titleOfCurrent(), L"un.dxf"); }});
}

TEST_F(WindowTrial, eachCommandOfAideStandsInAMenu) {
  open({});
  work({[&] {
    int count = 0;
    for (const AcEdCommandHelp& help : acedDescriptions()) {
      const QString name = shown(help.names.substr(0, help.names.find(L',')));
      EXPECT_NE(session->window().findChild<QAction*>(name), nullptr) << utf8(name);
      ++count;
    }
    EXPECT_GT(count, 50);
  }});
}

TEST_F(WindowTrial, theArrowsBringBackWhatWasTyped) {
  open({});
  work({[&] { type("REGEN"); },
        [&] {
          QLineEdit& edit = session->window().commandLine().edit();
          QTest::keyClick(&edit, Qt::Key_Up);
          EXPECT_EQ(edit.text(), "REGEN");
          QTest::keyClick(&edit, Qt::Key_Down);
          EXPECT_EQ(edit.text(), "");
          QTest::keyClicks(&edit, "corrmc");
          QTest::keyClick(&edit, Qt::Key_Tab);
          EXPECT_EQ(edit.text(), "CORRMCARRES");
          edit.clear();
        }});
}

TEST(French, theToolkitsOwnTextsAreTranslated) {
  startToolkit();
  if (!speakFrench()) GTEST_SKIP() << "no translations are installed";
  EXPECT_EQ(QCoreApplication::translate("QFileDialog", "Show &hidden files"),
            "Afficher les fic&hiers cachés");
}

/// The toolkit would end the process by a signal.
TEST(Screen, aMissingOneIsSaidAndGivesAStatus) {
  QProcess program;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) environment.remove(name);
  program.setProcessEnvironment(environment);
  program.start(VELTORA_FENETRE, {});
  ASSERT_TRUE(program.waitForFinished());
  EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(program.exitCode(), 1);
  EXPECT_NE(program.readAllStandardError().indexOf("aucun écran"), -1);
}

}  // namespace
}  // namespace veltora::app
