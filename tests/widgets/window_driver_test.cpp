// Dialogs as windows, worked by keys and clicks: what no line of a script can do.
#include "app/window/dialogs/window_driver.h"
#include "app/window/dialogs/block_picture.h"
#include "app/window/dialogs/choice_views.h"
#include "app/window/dialogs/dialog_window.h"
#include "app/window/dialogs/field_views.h"
#include "app/window/dialogs/list_view.h"
#include "app/window/dialogs/picture_views.h"
#include "base/files.h"
#include "base/paths.h"
#include "base/suivi.h"
#include "support/dossier_temporaire.h"
#include "ui/progress.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPdfWriter>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <stdexcept>

namespace {
using namespace veltora;
using app::DialogWindow;

/// What the user does once the window waits for him, step by step.
class WindowDriver : public testing::Test {
protected:
  static void SetUpTestSuite() {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    static int count = 1;
    static char name[] = "essai";
    static char* arguments[] = {name, nullptr};
    // Never ended: the order in which statics end is not the toolkit's.
    static const auto* const application = new QApplication(count, arguments);
    ASSERT_NE(application, nullptr);
  }
  void SetUp() override { ui::setDriver(&driver); }
  void TearDown() override { ui::setDriver(nullptr); }

  int run(ui::Dialog& dialog, const std::function<void(DialogWindow&)>& work) {
    QTimer::singleShot(0, [this, work] {
      QCoreApplication::processEvents();
      work(*driver.front());
    });
    // A dialog that nothing closes must not hold the tests up.
    QTimer guard;
    guard.setSingleShot(true);
    QObject::connect(&guard, &QTimer::timeout, [this, &dialog] {
      ADD_FAILURE() << "the dialog stays open";
      dialog.endDialog(-1);
      driver.front()->catchUp();
    });
    guard.start(5000);
    return dialog.doModal();
  }
  template <class View>
  View& view(DialogWindow& window, ui::Control& control) {
    return dynamic_cast<View&>(*window.view(control));
  }
  /// Answers the message box that comes next, and keeps its text.
  void answerNext(const QString& caption) {
    QTimer::singleShot(0, [this, caption] {
      auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      told = box->text();
      for (QAbstractButton* button : box->buttons())
        if (button->text() == caption) button->click();
    });
  }

  app::WindowDriver driver{nullptr};
  QString told;
};

TEST_F(WindowDriver, EnterAndEscapeAreTheButtonsOfTheirRoles) {
  ui::Dialog dialog(L"D");
  ui::TextField code(&dialog, L"Code");
  ui::Button other(&dialog, L"Autre");
  ui::Button ok(&dialog, L"OK", ui::Button::Role::Ok);
  ui::Button cancel(&dialog, L"Annuler", ui::Button::Role::Cancel);
  EXPECT_EQ(run(dialog, [&](DialogWindow& w) { QTest::keyClick(w.focusWidget(), Qt::Key_Return); }), ui::kOk);
  EXPECT_EQ(run(dialog, [&](DialogWindow& w) { QTest::keyClick(w.focusWidget(), Qt::Key_Escape); }),
            ui::kCancel);
  EXPECT_EQ(run(dialog, [&](DialogWindow& w) { w.close(); }), ui::kCancel) << "the window's cross";
}

TEST_F(WindowDriver, KeysAreToldLetterByLetterAndWhatIsNotTakenIsUndone) {
  ui::Dialog dialog(L"D");
  ui::TextField code(&dialog, L"Code");
  ui::RadioGroup mode(&dialog, L"Mode", {L"un", L"deux"});
  ui::CheckBox box(&dialog, L"Case");
  std::vector<std::wstring> heard;
  code.onChange = [&] { heard.push_back(code.text()); };
  code.onLeave = [&] {
    if (code.text() == L"ab") code.setFocus();
  };
  run(dialog, [&](DialogWindow& w) {
    QTest::keyClicks(w.focusWidget(), QStringLiteral("ab"));
    QTest::mouseClick(view<app::RadioView>(w, mode).button(1), Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_TRUE(view<app::RadioView>(w, mode).button(0)->isChecked());
    EXPECT_EQ(mode.index(), 0);
    EXPECT_EQ(w.focusWidget(), &view<app::FieldView>(w, code).edit()) << "the keyboard came back";
    QTest::mouseClick(&view<app::CheckView>(w, box).button(), Qt::LeftButton);
    EXPECT_FALSE(view<app::CheckView>(w, box).button().isChecked());
    w.reject();
  });
  EXPECT_EQ(heard, (std::vector<std::wstring>{L"a", L"ab"}));
}

TEST_F(WindowDriver, ASteppedNumberCountsByArrowsWithinItsRange) {
  ui::Dialog dialog(L"D");
  ui::NumberField number(&dialog, L"Décimales", 7, L"%d", ui::NumberField::kInteger);
  number.setRange(0, 8);
  number.setStepped();
  int heard = 0;
  number.onChange = [&] { ++heard; };
  run(dialog, [&](DialogWindow& w) {
    QLineEdit& edit = view<app::FieldView>(w, number).edit();
    QTest::keyClick(w.focusWidget(), Qt::Key_Up);
    EXPECT_EQ(edit.text(), QStringLiteral("8"));
    QTest::keyClick(w.focusWidget(), Qt::Key_Up);
    EXPECT_EQ(number.intValue(), 8) << "not beyond the range";
    edit.selectAll();
    QTest::keyClicks(w.focusWidget(), QStringLiteral("x"));
    EXPECT_EQ(number.text(), L"x") << "as typed";
    QTest::keyClick(w.focusWidget(), Qt::Key_Up);
    EXPECT_EQ(edit.text(), QStringLiteral("1"));
    QTest::keyClick(w.focusWidget(), Qt::Key_Down);
    QTest::keyClick(w.focusWidget(), Qt::Key_Down);
    EXPECT_EQ(number.intValue(), 0);
    number.setReadOnly();
    w.reject();
  });
  EXPECT_FALSE(number.userStep(1));
  EXPECT_GE(heard, 5);
}

TEST_F(WindowDriver, TheMouseOnCancelLeavesNoField) {
  ui::Dialog dialog(L"D");
  ui::TextField code(&dialog, L"Code");
  ui::TextField name(&dialog, L"Nom");
  ui::Button cancel(&dialog, L"Annuler", ui::Button::Role::Cancel);
  int left = 0;
  name.onLeave = [&] { ++left; };
  run(dialog, [&](DialogWindow& w) {
    QTest::keyClick(w.focusWidget(), Qt::Key_Tab);
    QCoreApplication::processEvents();
    EXPECT_EQ(dialog.focus(), &name) << "the Tab key follows the declaration";
    QTest::mouseClick(&view<app::ButtonView>(w, cancel).button(), Qt::LeftButton);
  });
  EXPECT_EQ(left, 0);
}

TEST_F(WindowDriver, WhatACallbackThrowsIsToldOrThrownAgain) {
  ui::Dialog dialog(L"D");
  ui::Button bad(&dialog, L"Panne", [] { throw std::runtime_error("disque plein"); });
  ui::Button worse(&dialog, L"Fin", [] { throw base::ScriptError{"fini"}; });
  run(dialog, [&](DialogWindow& w) {
    answerNext(QStringLiteral("OK"));
    view<app::ButtonView>(w, bad).button().click();
    EXPECT_TRUE(dialog.isOpen());
    w.reject();
  });
  EXPECT_EQ(told, QStringLiteral("Erreur : disque plein"));
  EXPECT_THROW(run(dialog, [&](DialogWindow& w) { view<app::ButtonView>(w, worse).button().click(); }),
               base::ScriptError);
  EXPECT_FALSE(dialog.isOpen());
}

TEST_F(WindowDriver, APickHidesTheDialogAndThoseBelow) {
  ui::Dialog outer(L"Dessous");
  ui::Dialog inner(L"Dessus");
  ui::Button open(&outer, L"Ouvrir", [&] { inner.doModal(); });
  bool seenOuter = true;
  bool seenInner = true;
  DialogWindow* below = nullptr;
  ui::Button pick(&inner, L"Prélever", [&] {
    const ui::HiddenDialog hidden(inner);
    seenOuter = below->isVisible();
    seenInner = driver.front()->isVisible();
  });
  run(outer, [&](DialogWindow& w) {
    below = &w;
    QTimer::singleShot(0, [&] {
      DialogWindow& top = *driver.front();
      view<app::ButtonView>(top, pick).button().click();
      EXPECT_TRUE(top.isVisible());
      EXPECT_TRUE(below->isVisible());
      top.reject();
    });
    view<app::ButtonView>(w, open).button().click();
    w.reject();
  });
  EXPECT_FALSE(seenOuter);
  EXPECT_FALSE(seenInner);
}

TEST_F(WindowDriver, ChangesOfTheDialogAreSeenAtOnce) {
  ui::Dialog dialog(L"D");
  ui::List list(&dialog, L"Liste");
  list.addColumn(L"A", 50);
  list.addColumn(L"B", 50, ui::Align::Right);
  ui::ComboBox combo(&dialog, L"Choix", {L"un"});
  ui::Label label(&dialog, L"Résultat:");
  ui::TextField secret(&dialog, L"Secret");
  secret.hide();
  ui::Button go(&dialog, L"Va", [&] {
    list.addRow({L"1", L"2"});
    list.select(0);
    combo.addItem(L"deux");
    combo.setIndex(1);
    label.setText(L"12.5");
    secret.show();
    secret.setReadOnly();
    dialog.setTitle(L"Autre");
    go.disable();
  });
  run(dialog, [&](DialogWindow& w) {
    const QTreeView& table = view<app::ListView>(w, list).table();
    view<app::ButtonView>(w, go).button().click();
    EXPECT_EQ(table.model()->index(0, 1).data().toString(), QStringLiteral("2"));
    EXPECT_TRUE(table.selectionModel()->isRowSelected(0));
    EXPECT_EQ(view<app::ComboView>(w, combo).box().currentText(), QStringLiteral("deux"));
    EXPECT_EQ(qobject_cast<QLabel*>(w.view(label)->widget())->text(), QStringLiteral("Résultat: 12.5"));
    EXPECT_TRUE(w.view(secret)->widget()->isVisible() && w.view(secret)->label()->isVisible());
    EXPECT_TRUE(view<app::FieldView>(w, secret).edit().isReadOnly());
    EXPECT_EQ(w.windowTitle(), QStringLiteral("Autre"));
    EXPECT_FALSE(view<app::ButtonView>(w, go).button().isEnabled());
    w.reject();
  });
}

TEST_F(WindowDriver, RowsAreChosenByTheMouseWithItsKeys) {
  ui::Dialog dialog(L"D");
  ui::List list(&dialog, L"Liste");
  list.addColumn(L"A", 100);
  for (int i = 0; i < 5; ++i) list.addRow({std::to_wstring(i)});
  int clicks = 0;
  list.onClick = [&](int, bool) { ++clicks; };
  const auto click = [](QTreeView& table, int row, Qt::KeyboardModifiers keys) {
    const QRect place = table.visualRect(table.model()->index(row, 0));
    QTest::mouseClick(table.viewport(), Qt::LeftButton, keys, place.center());
  };
  run(dialog, [&](DialogWindow& w) {
    QTreeView& table = view<app::ListView>(w, list).table();
    click(table, 1, Qt::NoModifier);
    EXPECT_EQ(list.selection(), std::vector<int>{1});
    click(table, 3, Qt::ShiftModifier);
    EXPECT_EQ(list.selection(), (std::vector<int>{1, 2, 3}));
    click(table, 2, Qt::ControlModifier);
    EXPECT_EQ(list.selection(), (std::vector<int>{1, 3}));
    click(table, 4, Qt::NoModifier);
    clicks = 0;
    click(table, 4, Qt::NoModifier);
    EXPECT_EQ(clicks, 1) << "a click on the row that is chosen already";
    w.reject();
  });
}

TEST_F(WindowDriver, ADialogTallerThanTheScreenIsScrolled) {
  ui::Dialog dialog(L"D");
  std::vector<std::unique_ptr<ui::Label>> labels;
  for (int i = 0; i < 90; ++i) labels.push_back(std::make_unique<ui::Label>(&dialog, L"Ligne"));
  ui::TextField last(&dialog, L"Dernier");
  run(dialog, [&](DialogWindow& w) {
    EXPECT_LE(w.height(), w.screen()->availableSize().height());
    auto* const frame = w.findChild<QScrollArea*>();
    ASSERT_NE(frame, nullptr);
    frame->ensureWidgetVisible(w.view(last)->widget());
    EXPECT_FALSE(w.view(last)->widget()->visibleRegion().isEmpty());
    w.reject();
  });
}

TEST_F(WindowDriver, ManyCellsAreReadAgainTogether) {
  ui::Dialog dialog(L"D");
  ui::List list(&dialog, L"Liste");
  list.addColumn(L"A", 100);
  for (int i = 0; i < 5000; ++i) list.addRow({L"0"});
  ui::Button go(&dialog, L"Va", [&] {
    for (int i = 0; i < 5000; ++i) list.setCell(i, 0, L"1");
  });
  run(dialog, [&](DialogWindow& w) {
    const QTreeView& table = view<app::ListView>(w, list).table();
    QSignalSpy news(table.model(), &QAbstractItemModel::dataChanged);
    view<app::ButtonView>(w, go).button().click();
    EXPECT_LT(news.size(), 300);
    EXPECT_EQ(news.last().at(1).toModelIndex().row(), 4999) << "or cell by cell";
    w.reject();
  });
}

TEST_F(WindowDriver, EscapeAnswersAMessageByItsLastButton) {
  const std::pair<ui::Buttons, int> rows[] = {{ui::Buttons::Ok, ui::kOk},
                                              {ui::Buttons::OkCancel, ui::kCancel},
                                              {ui::Buttons::YesNo, ui::kNo},
                                              {ui::Buttons::YesNoCancel, ui::kCancel}};
  for (const auto& [buttons, answer] : rows) {
    QTimer::singleShot(0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    EXPECT_EQ(ui::messageBox(L"Enregistrer ?", L"", buttons), answer);
    QTimer::singleShot(0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
    EXPECT_EQ(ui::messageBox(L"Enregistrer ?", L"", buttons), ui::buttonsOf(buttons).front().answer);
  }
}

TEST_F(WindowDriver, AMessageLongerThanTheScreenScrolls) {
  std::wstring text;
  for (int i = 0; i < 400; ++i) text += L"ligne " + std::to_wstring(i) + L"\n";
  const auto heightOf = [&](const std::wstring& message) {
    int height = 0;
    QTimer::singleShot(0, [&] {
      QCoreApplication::processEvents();
      auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      height = box->height();
      told = box->text();
      QTest::keyClick(box, Qt::Key_Escape);
    });
    ui::messageBox(message);
    return height;
  };
  EXPECT_LT(heightOf(L"court"), 200);
  const int tall = heightOf(text);
  EXPECT_LT(tall, QApplication::primaryScreen()->availableSize().height());
  EXPECT_GT(tall, 200);
  EXPECT_TRUE(told.endsWith("ligne 399"));
}

TEST_F(WindowDriver, AReportIsPutOntoPaper) {
  const DossierTemporaire folder;
  const std::filesystem::path html = folder.chemin / "r.html";
  const std::string paper = (folder.chemin / "r.pdf").string();
  base::remplacerFichier(html, "<html><body><p>Fermeture angulaire</p></body></html>");
  ui::Dialog dialog(L"D");
  ui::WebView report(&dialog);
  ui::Button close(&dialog, L"Fermer", ui::Button::Role::Cancel);
  run(dialog, [&](DialogWindow& w) {
    const auto offers = [&] {
      int offered = 0;
      for (const QPushButton* button : w.findChildren<QPushButton*>())
        if (button->text() != QStringLiteral("Fermer") && button->isEnabled()) ++offered;
      return offered;
    };
    EXPECT_EQ(offers(), 0) << "there is nothing to print";
    report.setPath(base::texteDuChemin(html));
    w.catchUp();
    EXPECT_EQ(offers(), 2);
    QPdfWriter writer(QString::fromStdString(paper));
    view<app::ReportView>(w, report).print(writer);
    w.reject();
  });
  QProcess reader;
  reader.start("pdftotext", {QString::fromStdString(paper), "-"});
  ASSERT_TRUE(reader.waitForFinished());
  EXPECT_TRUE(reader.readAllStandardOutput().contains("Fermeture angulaire"));
}

TEST_F(WindowDriver, AChosenFilterCompletesTheName) {
  const DossierTemporaire folder;
  base::FileRequest request;
  request.save = true;
  request.extension = L"xyz";
  request.filter = L"Liste (*.xyz)|*.xyz|Tableau|*.csv";
  request.folder = base::texteDuChemin(folder.chemin);
  const auto choose = [&](int filter) {
    QTimer::singleShot(0, [filter] {
      auto* const choice = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(choice, nullptr);
      EXPECT_EQ(choice->nameFilters(),
                (QStringList{QStringLiteral("Liste (*.xyz)"), QStringLiteral("Tableau (*.csv)")}));
      choice->selectNameFilter(choice->nameFilters()[filter]);
      choice->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(QStringLiteral("leve"));
      choice->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->click();
    });
    return ui::chooseFile(request).value_or(base::FileAnswer{L"?", 0});
  };
  EXPECT_EQ(choose(0).path, request.folder + L"/leve.xyz");
  const base::FileAnswer second = choose(1);
  EXPECT_EQ(second.path, request.folder + L"/leve.csv");
  EXPECT_EQ(second.filterIndex, 2);
}

TEST_F(WindowDriver, ADrawingIsPicturedUpright) {
  const DossierTemporaire folder;
  const auto file = folder.chemin / "equerre.dxf";
  ASSERT_TRUE(base::remplacerFichier(
      file,
      "0\nSECTION\n2\nENTITIES\n0\nLINE\n8\n0\n10\n0\n20\n10\n11\n10\n21\n10\n0\nLINE\n8\n0\n10\n0\n20\n"
      "0\n11\n0\n21\n10\n0\nENDSEC\n0\nEOF\n"));
  QString reason;
  const QImage picture = app::pictureOf(base::texteDuChemin(file), {100, 100}, reason).toImage();
  ASSERT_FALSE(picture.isNull()) << reason.toStdString();
  const auto ink = [&](const QRect& where) {
    int dark = 0;
    for (int y = where.top(); y <= where.bottom(); ++y)
      for (int x = where.left(); x <= where.right(); ++x) dark += picture.pixelColor(x, y).lightness() < 128;
    return dark;
  };
  EXPECT_GT(ink({50, 0, 50, 30}), 30) << "the line above, to the right";
  EXPECT_GT(ink({0, 50, 30, 50}), 30) << "the line at the left, downwards";
  EXPECT_EQ(ink({50, 50, 50, 50}), 0);
  EXPECT_TRUE(app::pictureOf(L"", {100, 100}, reason).isNull());
  EXPECT_EQ(reason, QStringLiteral("aucun dessin"));
}

TEST_F(WindowDriver, ALongJobIsStoppedByItsButton) {
  int steps = 0;
  {
    base::Suivi job(1000);
    for (; steps < 1000 && !job.arrete(); ++steps) {
      if (steps == 300) {
        for (QWidget* window : QApplication::topLevelWidgets())
          for (QPushButton* button : window->findChildren<QPushButton*>())
            if (button->text() == QStringLiteral("Interrompre le travail") && button->isVisible())
              QTimer::singleShot(0, button, [button] { button->click(); });
      }
      job.avancer();
    }
  }
  EXPECT_GT(steps, 300);
  EXPECT_LT(steps, 320);
}

TEST_F(WindowDriver, ADialogMayEndWithItsControlsWhileItsWindowStands) {
  auto dialog = std::make_unique<ui::CMyProgressDlg>();
  dialog->setRange(0, 10);
  QCoreApplication::processEvents();
  dialog.reset();
  QCoreApplication::processEvents();
  EXPECT_EQ(driver.front(), nullptr);
}

TEST(Report, IsReadFromWindows1252WithoutTheMarksInItsStyle) {
  const QString text = app::readableReport(
      "<html><style><!-- td {color:red} --></style><!-- vu --><p>Calcul\xe9 \x80</p></html>");
  EXPECT_EQ(text, QStringLiteral("<html><style> td {color:red} </style><!-- vu --><p>Calculé €</p></html>"));
}

}  // namespace
