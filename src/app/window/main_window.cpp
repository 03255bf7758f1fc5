#include "app/window/main_window.h"

#include "app/session/output.h"
#include "app/window/command_line.h"
#include "app/window/dialogs/window_driver.h"
#include "app/window/drawing_view.h"
#include "app/window/field_files.h"
#include "app/window/layer_panel.h"
#include "app/window/menus.h"
#include "app/window/point_panel.h"
#include "app/window/recovery.h"
#include "app/window/text.h"
#include "arx/ap/acdocman.h"
#include "arx/ap/apsession.h"
#include "arx/db/dbspaceindex.h"
#include "arx/db/dbsymrecords.h"
#include "arx/ed/acutads.h"
#include "arx/ed/edsets.h"
#include "arx/plot/pllayout.h"
#include "base/text.h"
#include "ui/driver.h"

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QDockWidget>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QStatusBar>
#include <QStyle>
#include <QTabBar>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace veltora::app {
namespace {

constexpr int kWidth = 1280;
constexpr int kHeight = 860;
constexpr int kPanelWidth = 360;
constexpr int kCommandsHeight = 150;
constexpr int kShortMessage = 8000;  // ms

QString titleOf(const AcApDocument& document) {
  return shown(document.docTitle()) + (document.isReadOnly() ? " (lecture seule)" : "");
}

/// The unit of the drawing by its variable INSUNITS.
QString unitOf(AcDbDatabase& database) {
  static const char* const units[] = {"sans unité",  "pouces",      "pieds",  "milles",
                                      "millimètres", "centimètres", "mètres", "kilomètres"};
  const double index = database.headerReal("INSUNITS", 0.0);
  return index >= 0 && index < static_cast<double>(std::size(units)) ? units[static_cast<std::size_t>(index)]
                                                                     : "autre unité";
}

}  // namespace

/// Tells the window what happens to documents.
class MainWindow::HostEvents : public AcApDocManagerReactor {
public:
  explicit HostEvents(MainWindow& window) : m_window(window) { acDocManager->addReactor(this); }
  ~HostEvents() override { acDocManager->removeReactor(this); }
  HostEvents(const HostEvents&) = delete;
  HostEvents& operator=(const HostEvents&) = delete;
  void documentBecameCurrent(AcApDocument*) override { m_window.followDocuments(); }
  void documentTitleUpdated(AcApDocument* document) override {
    note(document);
    m_window.followDocuments();
  }
  void documentCreated(AcApDocument* document) override {
    note(document);
    m_window.tellLayouts(*document->database());
  }
  void documentDestroyed(const ACHAR*) override { m_window.followDocuments(); }

private:
  void note(AcApDocument* document) {
    if (document->isNamedDrawing()) m_window.m_preferences.noteRecent(shown(document->fileName()));
  }
  MainWindow& m_window;
};

MainWindow::MainWindow()
    : m_commandLine(new CommandLine),
      m_view(new DrawingView(m_lines)),
      m_tabs(new QTabBar),
      m_layers(new LayerPanel),
      m_points(new PointPanel),
      m_place(new QLabel),
      m_layer(new QLabel),
      m_units(new QLabel) {
  setWindowTitle("Veltora");
  resize(kWidth, kHeight);
  setAcceptDrops(true);
  auto* const middle = new QWidget;
  auto* const rows = new QVBoxLayout(middle);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  m_tabs->setTabsClosable(true);
  m_tabs->setExpanding(false);
  m_tabs->setDocumentMode(true);
  rows->addWidget(m_tabs);
  rows->addWidget(m_view, 1);
  setCentralWidget(middle);
  makePanels();
  makeStatus();
  connectView();
  m_commandLine->accepts = [this] { return m_lines.request() != nullptr; };
  m_commandLine->entered = [this](const QString& line) { m_lines.answer(utf8(line)); };
  m_commandLine->escaped = [this] { escape(); };
  m_commandLine->erased = [this] { eraseChosen(); };
}

MainWindow::~MainWindow() = default;

void MainWindow::makePanels() {
  const auto dock = [this](const QString& title, const char* name, QWidget* widget, Qt::DockWidgetArea area) {
    auto* const made = new QDockWidget(title, this);
    made->setObjectName(name);
    made->setWidget(widget);
    addDockWidget(area, made);
    return made;
  };
  QDockWidget* const commands =
      dock("Commandes", "panneau_commandes", m_commandLine, Qt::BottomDockWidgetArea);
  QDockWidget* const layers = dock("Calques", "panneau_calques", m_layers, Qt::RightDockWidgetArea);
  QDockWidget* const points = dock("Points", "panneau_points", m_points, Qt::RightDockWidgetArea);
  tabifyDockWidget(layers, points);
  resizeDocks({layers}, {kPanelWidth}, Qt::Horizontal);
  resizeDocks({commands}, {kCommandsHeight}, Qt::Vertical);
  layers->raise();
  connect(points, &QDockWidget::visibilityChanged, this, [this](bool visible) {
    if (visible && m_events) m_points->refresh();
  });
  m_layers->mayChange = [this] { return m_lines.request() != nullptr; };
  m_layers->changed = [this] {
    if (m_recovery) m_recovery->touched();
    refresh();
  };
  m_points->shownAt = [this](const AcGePoint2d& at) {
    constexpr double kAround = 40.0;  // drawing units: what lies about a point
    m_view->zoomTo(at, std::min(kAround, m_view->place().height()));
  };
}

/// The view shows model space: of a drawing that holds nothing there it would seem empty.
void MainWindow::tellLayouts(AcDbDatabase& database) {
  if (database.spaceIndex().living() > 0) return;
  QStringList names;
  for (const AcPlLayout& layout : acplLayouts(database))
    if (!layout.empty) names.append("« " + shown(layout.name) + " »");
  if (!names.isEmpty())
    tell("L'espace objet est vide ; à voir par TRACER, les présentations : " + names.join(", "));
}

void MainWindow::eraseChosen() {
  if (m_lines.isIdle()) m_lines.start("EFFACER");
}

void MainWindow::makeStatus() {
  statusBar()->addWidget(m_place, 1);
  statusBar()->addPermanentWidget(m_layer);
  statusBar()->addPermanentWidget(m_units);
}

void MainWindow::connectView() {
  m_view->moved = [this] { showCursor(); };
  m_view->typed = [this](QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
      escape();
    else if (event->key() == Qt::Key_Delete)
      eraseChosen();
    else
      m_commandLine->type(event);
  };
  m_view->confirmed = [this] {
    if (!m_lines.isIdle()) m_lines.answer("");
  };
  connect(m_tabs, &QTabBar::tabBarClicked, this, [this](int tab) {
    if (tab < 0 || static_cast<std::size_t>(tab) >= m_documents.size()) return;
    AcApDocument* const document = m_documents[static_cast<std::size_t>(tab)];
    if (document != curDoc()) m_lines.whenIdle([document] { acDocManager->activateDocument(document); });
  });
  connect(m_tabs, &QTabBar::tabCloseRequested, this, [this](int tab) {
    if (tab < 0 || static_cast<std::size_t>(tab) >= m_documents.size()) return;
    AcApDocument* const document = m_documents[static_cast<std::size_t>(tab)];
    m_lines.whenIdle([document] { acDocManager->activateDocument(document); }, "CLOSE");
  });
}

void MainWindow::connectHost() {
  const AcApSession registering;  // the host's own commands
  m_events = std::make_unique<HostEvents>(*this);
  makeMenus();
  makeToolBar();
  restore();
}

void MainWindow::disconnectHost() {
  keep();
  m_recovery.reset();
  m_events.reset();
}

void MainWindow::makeMenus() {
  // What every drawing program has first stands first; the rest as it is described.
  for (const char* const subject : {"Dessins", "Annulation", "Vue", "Dessiner"}) menuOf(*menuBar(), subject);
  addCommandMenus(*menuBar(), [this](const QString& name) { m_lines.start(utf8(name)); });
  QMenu& drawings = menuOf(*menuBar(), "Dessins");
  m_recent = drawings.addMenu("Dessins récents");
  m_recent->setObjectName("recents");
  connect(m_recent, &QMenu::aboutToShow, this, [this] { fillRecent(); });
  makeRecoveryMenu();
  makeViewMenu();
  makeSnapMenu();
}

/// How often copies are kept aside, in minutes.
void MainWindow::makeRecoveryMenu() {
  QMenu& menu = *menuOf(*menuBar(), "Dessins").addMenu("Copie de secours");
  auto* const group = new QActionGroup(&menu);
  for (const int minutes : {2, 5, 10, 20, 0}) {
    QAction* const action =
        menu.addAction(minutes ? QString("Toutes les %1 minutes").arg(minutes) : QString("Jamais"));
    action->setCheckable(true);
    action->setChecked(minutes == m_preferences.recoveryMinutes());
    group->addAction(action);
    connect(action, &QAction::triggered, this, [this, minutes] {
      m_preferences.setRecoveryMinutes(minutes);
      if (m_recovery) m_recovery->setInterval(std::chrono::minutes(minutes));
    });
  }
}

void MainWindow::startRecovery() {
  Recovery::Surroundings around;
  around.atRest = [this] { return m_lines.request() || (dialogRests && dialogRests()); };
  around.idle = [this] { return m_lines.isIdle(); };
  around.print = [this](const std::string& text) { print(text); };
  around.leaveHost = [this] { m_events.reset(); };
  m_recovery = std::make_unique<Recovery>(recoveryFolder(), std::move(around));
  m_recovery->setInterval(std::chrono::minutes(m_preferences.recoveryMinutes()));
  m_lines.before([this] {
    if (m_recovery) m_recovery->offer();
    return std::optional<std::string>();
  });
}

void MainWindow::endRecovery() {
  if (m_recovery) m_recovery->clear();
  m_recovery.reset();
}

void MainWindow::makeViewMenu() {
  QMenu& menu = menuOf(*menuBar(), "Vue");
  menu.addSeparator();
  menu.addAction("Tout le dessin", QKeySequence("Ctrl+0"), m_view, [this] { m_view->zoomExtents(); });
  menu.addAction("Fenêtre à deux coins", QKeySequence("Ctrl+W"), m_view,
                 [this] { m_view->pointing().beginZoomWindow(); });
  menu.addAction("Vue précédente", QKeySequence("Ctrl+P"), m_view, [this] { m_view->zoomPrevious(); });
  m_white = menu.addAction("Fond blanc");
  m_white->setCheckable(true);
  connect(m_white, &QAction::toggled, this, [this](bool white) { m_view->setDark(!white); });
  menu.addSeparator();
  for (QDockWidget* const dock : findChildren<QDockWidget*>()) menu.addAction(dock->toggleViewAction());
}

void MainWindow::makeSnapMenu() {
  QMenu& menu = menuOf(*menuBar(), "Accrochage");
  const auto apply = [this] {
    std::vector<AcEdSnap> snaps;
    for (std::size_t i = 0; m_snaps->isChecked() && i < m_snapKinds.size(); ++i)
      if (m_snapKinds[i]->isChecked()) snaps.push_back(snapNames()[i].snap);
    m_view->pointing().snaps = std::move(snaps);
  };
  m_snaps = menu.addAction("Accrochage aux objets");
  m_snaps->setShortcut(QKeySequence(Qt::Key_F3));
  m_ortho = menu.addAction("Ortho : le long des axes");
  m_ortho->setShortcut(QKeySequence(Qt::Key_F8));
  m_ortho->setObjectName("ortho");
  for (QAction* const action : {m_snaps, m_ortho}) action->setCheckable(true);
  menu.addSeparator();
  for (const SnapName& name : snapNames()) {
    QAction* const action = menu.addAction(name.word);
    action->setCheckable(true);
    // A point of a curve that lies next to the cursor would be found everywhere.
    action->setChecked(name.snap != AcEdSnap::kNearest && name.snap != AcEdSnap::kPerpendicular);
    connect(action, &QAction::toggled, this, apply);
    m_snapKinds.push_back(action);
  }
  connect(m_snaps, &QAction::toggled, this, apply);
  connect(m_ortho, &QAction::toggled, this, [this](bool on) { m_view->pointing().ortho = on; });
}

void MainWindow::makeToolBar() {
  QToolBar* const bar = addToolBar("Outils");
  bar->setObjectName("outils");
  const auto icon = [this](QStyle::StandardPixmap which) { return style()->standardIcon(which); };
  const auto command = [this, bar](const char* text, const char* name, const QIcon& image = {}) {
    QAction* const action = bar->addAction(image, text);
    action->setToolTip(QString("%1 (%2)").arg(text, name));
    connect(action, &QAction::triggered, this, [this, name] { m_lines.start(name); });
  };
  command("Nouveau", "NOUVEAU", icon(QStyle::SP_FileIcon));
  command("Ouvrir", "OUVRIR", icon(QStyle::SP_DialogOpenButton));
  command("Enregistrer", "SAUVERAP", icon(QStyle::SP_DialogSaveButton));
  bar->addSeparator();
  for (const auto& [name, text, image] :
       {std::tuple("U", "Annuler", QStyle::SP_ArrowBack), {"RETABLIR", "Rétablir", QStyle::SP_ArrowForward}})
    if (auto* const action = findChild<QAction*>(name)) {
      action->setIcon(icon(image));
      action->setIconText(text);
      bar->addAction(action);
    }
  bar->addSeparator();
  bar->addAction("Tout", m_view, [this] { m_view->zoomExtents(); })->setToolTip("Tout le dessin (Ctrl+0)");
  bar->addAction("Fenêtre", m_view, [this] { m_view->pointing().beginZoomWindow(); })
      ->setToolTip("Fenêtre à deux coins (Ctrl+W)");
  bar->addAction("Précédente", m_view, [this] { m_view->zoomPrevious(); })
      ->setToolTip("Vue précédente (Ctrl+P)");
  bar->addSeparator();
  for (const auto& [text, name] :
       {std::pair("Ligne", "LIGNE"), std::pair("Polyligne", "POLYLIGN"), std::pair("Cercle", "CERCLE"),
        std::pair("Texte", "TEXTE"), std::pair("Effacer", "EFFACER"), std::pair("Déplacer", "DEPLACER"),
        std::pair("Copier", "COPIER"), std::pair("Liste", "LISTE")})
    command(text, name);
  bar->addSeparator();
  bar->addAction(m_snaps);
  bar->addAction(m_ortho);
  m_snaps->setIconText("Accrochage");
  m_ortho->setIconText("Ortho");
}

void MainWindow::fillRecent() {
  m_recent->clear();
  for (const QString& path : m_preferences.recent())
    m_recent->addAction(path, this, [this, path] { openDrawing(path); });
  m_recent->setToolTipsVisible(true);
}

void MainWindow::openDrawing(const QString& path) {
  const bool taken = m_lines.whenIdle([this, path] {
    std::wstring message;
    if (acDocManager->appContextOpenDocument(wide(path).c_str(), &message) != Acad::eOk)
      tell("Ouverture impossible : " + shown(message));
  });
  if (!taken) tell(QFileInfo(path).fileName() + " : fermez d'abord la boîte de dialogue.");
}

/// A drawing, or a field file, which starts its dialog.
void MainWindow::openFile(const QString& path) {
  if (isDrawing(path)) return openDrawing(path);
  const QString refusal = openFieldFile(m_lines, path);
  if (!refusal.isEmpty()) tell(QFileInfo(path).fileName() + " : " + refusal);
}

void MainWindow::tell(const QString& message) {
  print("\n" + utf8(message) + "\n");
  m_commandLine->flush();
  statusBar()->showMessage(message, kShortMessage);
}

/// Gives up what was begun with the mouse, else the question, else what is chosen.
void MainWindow::escape() {
  if (m_view->pointing().escape()) return m_view->update();
  if (!m_lines.isIdle()) return m_lines.cancel();
  acedSelectionSets().pickFirst.clear();
  m_view->update();
}

void MainWindow::print(const std::string& text) { m_commandLine->print(shown(text)); }

/// The tabs are the open documents, the current one in front.
void MainWindow::followDocuments() {
  std::vector<AcApDocument*> open;
  const std::unique_ptr<AcApDocumentIterator> documents(acDocManager->newAcApDocumentIterator());
  for (; !documents->done(); documents->step()) open.push_back(documents->document());
  m_documents = std::move(open);
  while (m_tabs->count() > static_cast<int>(m_documents.size())) m_tabs->removeTab(m_tabs->count() - 1);
  while (m_tabs->count() < static_cast<int>(m_documents.size())) m_tabs->addTab({});
  for (std::size_t i = 0; i < m_documents.size(); ++i) {
    const int tab = static_cast<int>(i);
    const QString mark = acDocManager->isModified(m_documents[i]) ? " *" : "";
    m_tabs->setTabText(tab, titleOf(*m_documents[i]) + mark);
    m_tabs->setTabToolTip(tab, shown(m_documents[i]->fileName()));
    if (m_documents[i] == curDoc()) m_tabs->setCurrentIndex(tab);
  }
  m_view->hostChanged();
}

void MainWindow::refresh() {
  followDocuments();
  m_layers->refresh();
  if (m_points->isVisible()) m_points->refresh();
  AcApDocument* const document = curDoc();
  setWindowTitle(document ? titleOf(*document) + " — Veltora" : QString("Veltora"));
  showHistory(document ? &document->database()->undoLog() : nullptr);
  if (!document) return;
  const AcDbObjectPointer<AcDbLayerTableRecord> layer(document->database()->clayer());
  m_layer->setText("Calque : " + (layer ? shown(layer->name()) : QString()));
  m_units->setText("Unités : " + unitOf(*document->database()));
}

/// What U and REDO would take, greyed when there is nothing.
void MainWindow::showHistory(const AcDbUndoLog* log) {
  const auto show = [this](const char* action, const QString& text, bool can, const AcString& step) {
    auto* const shownAs = findChild<QAction*>(action);
    if (!shownAs) return;
    const AcEdCommand* const command = acedRegCmds->lookupCmd(step.c_str());
    const QString name = shown(command ? std::wstring(command->localName()) : std::wstring(step));
    shownAs->setEnabled(can);
    shownAs->setText(can && !name.isEmpty() ? text + " : " + name : text);
    shownAs->setToolTip(QString("%1 (%2)").arg(shownAs->text(), action));
  };
  show("U", "Annuler", log && log->canUndo(), log ? log->undoName() : AcString());
  show("RETABLIR", "Rétablir", log && log->canRedo(), log ? log->redoName() : AcString());
}

void MainWindow::showCursor() {
  constexpr int kMostDecimals = 6;
  const AcGePoint3d& at = m_view->pointing().cursor();
  const int decimals = std::clamp(static_cast<int>(std::ceil(-std::log10(m_view->place().unitsPerPixel))) + 1,
                                  0, kMostDecimals);
  QString text = QString("%1, %2").arg(at.x, 0, 'f', decimals).arg(at.y, 0, 'f', decimals);
  if (const auto& snapped = m_view->pointing().snapped()) {
    text += QString(", %1").arg(snapped->point.z, 0, 'f', decimals);
    const auto named = std::ranges::find(snapNames(), snapped->snap, &SnapName::snap);
    if (named != snapNames().end()) text += QString("  [%1]").arg(named->word);
  }
  m_place->setText(text);
}

bool MainWindow::grabTo(const std::string& file) {
  refresh();
  m_commandLine->flush();
  QApplication::processEvents();
  if (grab().save(shown(file))) return true;
  printError("impossible d'écrire l'image \"" + file + "\"");
  return false;
}

void MainWindow::asked(const base::Request& request) {
  if (m_lines.isIdle()) {
    // What was chosen for the command has been taken by it, or was not wanted.
    std::vector<AcDbObjectId>& first = acedSelectionSets().pickFirst;
    if (m_ran && first == m_chosen) first.clear();
    m_ran = false;
    // A command that showed no dialog leaves none to be filled in.
    if (auto* const driver = dynamic_cast<WindowDriver*>(ui::driver())) driver->prepare(std::nullopt);
  }
  refresh();
  if (m_lines.isIdle()) m_view->commandAwaited();
  m_commandLine->ask(&request);
  m_view->asked();
}

void MainWindow::answered(const base::Request& request, const std::string* line) {
  m_commandLine->printLine(shown(request.prompt + (line ? *line : std::string())));
  if (m_recovery) m_recovery->touched();
  if (request.kind == base::Request::Kind::kCommand) {
    m_ran = line != nullptr;
    m_chosen = acedSelectionSets().pickFirst;
  }
  m_commandLine->ask(nullptr);
}

void MainWindow::askedAgain(const base::Request& request) { asked(request); }

/// The window stays until QUIT has asked for what is not saved.
void MainWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (!m_lines.request() && ui::driver()) ui::driver()->requestStop();  // a job at work
  m_lines.close();
  // Dialogs that wait are cancelled one after the other.
  auto* const timer = new QTimer(this);
  connect(timer, &QTimer::timeout, this, [this, timer] {
    if (!m_lines.isCancelling()) return timer->deleteLater();
    if (auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) dialog->reject();
  });
  timer->start(0);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  const QList<QUrl> urls = event->mimeData()->urls();
  if (std::ranges::any_of(urls, [](const QUrl& url) { return url.isLocalFile(); }))
    event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  for (const QUrl& url : event->mimeData()->urls())
    if (url.isLocalFile()) openFile(url.toLocalFile());
  event->acceptProposedAction();
}

void MainWindow::restore() {
  QSettings& kept = m_preferences.settings();
  restoreGeometry(kept.value("geometrie").toByteArray());
  restoreState(kept.value("panneaux").toByteArray());
  m_commandLine->setHistory(kept.value("lignes").toStringList());
  m_white->setChecked(kept.value("fond_blanc", false).toBool());
  m_ortho->setChecked(kept.value("ortho", false).toBool());
  for (std::size_t i = 0; i < m_snapKinds.size(); ++i) {
    const QVariant value = kept.value("accrochage/" + m_snapKinds[i]->text());
    if (value.isValid()) m_snapKinds[i]->setChecked(value.toBool());
  }
  m_snaps->setChecked(kept.value("accrochages", true).toBool());
}

void MainWindow::keep() {
  QSettings& kept = m_preferences.settings();
  kept.setValue("geometrie", saveGeometry());
  kept.setValue("panneaux", saveState());
  kept.setValue("lignes", m_commandLine->history());
  kept.setValue("fond_blanc", m_white->isChecked());
  kept.setValue("ortho", m_ortho->isChecked());
  for (const QAction* const action : m_snapKinds)
    kept.setValue("accrochage/" + action->text(), action->isChecked());
  kept.setValue("accrochages", m_snaps->isChecked());
}

}  // namespace veltora::app
