#pragma once

#include "app/session/program.h"
#include "app/window/command_line.h"
#include "app/window/dialogs/dialog_window.h"
#include "app/window/drawing_view.h"
#include "app/window/session.h"
#include "arx/db/dballents.h"
#include "arx/db/dbmain.h"
#include "arx/ed/edsets.h"
#include "base/text.h"
#include "support/dossier_temporaire.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>

namespace veltora::app {

/// The application of all tests, offscreen.
inline void startToolkit() {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  static int count = 1;
  static char name[] = "essai";
  static char* arguments[] = {name, nullptr};
  static const auto* const application = new QApplication(count, arguments);
  (void)application;
}

/// A whole session in a window: steps that run one after the other, each when a question waits.
class WindowTrial : public ::testing::Test {
protected:
  /// At the size of national coordinates.
  static constexpr double kX = 650000.0;
  static constexpr double kY = 6860000.0;
  using Step = std::function<void()>;

  WindowTrial() {
    startToolkit();
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.chemin.c_str());
    session = std::make_unique<WindowSession>();
  }

  /// A drawing of three lines: A lies level, B stands, C leans.
  std::string drawing(const char* file = "dessin.dxf") {
    AcDbDatabase made;
    const AcDbObjectPointer<AcDbBlockTableRecord> space(made.modelSpaceId(), AcDb::kForWrite);
    for (const auto& [x1, y1, x2, y2] :
         {std::array{0., 0., 40., 0.}, {60., 0., 60.0123456789, 30.0123456789}, {0., 20., 40., 50.}}) {
      auto* const line = new AcDbLine({kX + x1, kY + y1, 0}, {kX + x2, kY + y2, 0});
      space->appendAcDbEntity(line);
      line->close();
    }
    space->close();
    const std::string path = (folder.chemin / file).string();
    EXPECT_EQ(made.saveAs(base::fromUtf8(path).c_str()), Acad::eOk);
    return path;
  }

  void open(const std::vector<std::string>& drawings) { ASSERT_TRUE(session->open(drawings)); }
  /// Runs the steps, then closes the window without saving.
  void work(std::vector<Step> steps) {
    std::size_t next = 0;
    QObject alive;
    // A step may run a loop of its own, in which the steps go on.
    std::function<void()> tick = [&] {
      QTimer::singleShot(0, &alive, tick);
      if (paused || (!lines().request() && !question() && !dialog())) return;
      if (next < steps.size())
        steps[next++]();
      else if (question())
        press("Non");
      else if (dialog())
        dialog()->reject();
      else
        session->window().close();
    };
    tick();
    QTimer stuck;  // a question that nobody answers
    QObject::connect(&stuck, &QTimer::timeout, &stuck, [] { std::abort(); });
    stuck.start(60000);
    EXPECT_TRUE(session->program().run());
    EXPECT_EQ(next, steps.size());
  }

  WindowLines& lines() { return session->window().lines(); }
  DrawingView& view() { return session->window().view(); }
  AcDbDatabase& database() { return *acdbHostApplicationServices()->workingDatabase(); }
  QPoint at(double x, double y) { return view().place().toPixel({kX + x, kY + y}).toPoint(); }
  void click(double x, double y) { QTest::mouseClick(&view(), Qt::LeftButton, {}, at(x, y)); }
  /// Sent as it is: the toolkit's own would move the cursor of the screen, and let other events through.
  void move(const QPoint& to, Qt::MouseButton held = Qt::NoButton) {
    QMouseEvent event(QEvent::MouseMove, to, view().mapToGlobal(to), Qt::NoButton, held, {});
    QApplication::sendEvent(&view(), &event);
  }
  void drag(Qt::MouseButton button, const QPoint& from, const QPoint& to) {
    QTest::mousePress(&view(), button, {}, from);
    move((from + to) / 2, button);
    move(to, button);
    QTest::mouseRelease(&view(), button, {}, to);
  }
  void type(const char* text) {
    QTest::keyClicks(&session->window().commandLine().edit(), text);
    QTest::keyClick(&session->window().commandLine().edit(), Qt::Key_Return);
  }
  std::string prompt() { return lines().request() ? lines().request()->prompt : std::string(); }

  /// The message box that waits; null for none.
  static QMessageBox* question() { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); }
  /// The dialog of the module that waits; null for none.
  static DialogWindow* dialog() { return dynamic_cast<DialogWindow*>(QApplication::activeModalWidget()); }
  static void press(const char* caption) {
    for (QAbstractButton* const button : question()->buttons())
      if (button->text() == caption) return QTest::mouseClick(button, Qt::LeftButton);
    FAIL() << caption;
  }

  /// The lines that are not erased, by their ends from the corner of the drawing.
  std::vector<std::array<double, 4>> linesOf(AcDbDatabase& of) {
    std::vector<std::array<double, 4>> found;
    const AcDbObjectPointer<AcDbBlockTableRecord> space(of.modelSpaceId());
    for (const AcDbObjectId& id : space->entities()) {
      const AcDbObjectPointer<AcDbLine> line(id);
      if (!line) continue;
      const AcGePoint3d a = line->startPoint(), b = line->endPoint();
      found.push_back({a.x - kX, a.y - kY, b.x - kX, b.y - kY});
    }
    return found;
  }
  /// Places of these entities among all, as letters in order: A, B, C.
  std::string lettersOf(const std::vector<AcDbObjectId>& chosen) {
    std::string letters;
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId());
    for (const AcDbObjectId id : chosen) {
      char letter = 'A';
      for (const AcDbObjectId& each : space->entities()) {
        if (each == id) letters += letter;
        ++letter;
      }
    }
    std::sort(letters.begin(), letters.end());
    return letters;
  }

  DossierTemporaire folder;
  std::unique_ptr<WindowSession> session;
  bool paused = false;  ///< a step lets events through that must not begin the next one
};

}  // namespace veltora::app
