#pragma once

#include "app/window/preferences.h"
#include "app/window/window_lines.h"
#include "arx/db/dbid.h"

#include <QMainWindow>
#include <memory>
#include <string>
#include <vector>

class AcApDocument;
class AcDbDatabase;
class AcDbUndoLog;
class QLabel;
class QMenu;
class QTabBar;

namespace veltora::app {

class CommandLine;
class DrawingView;
class LayerPanel;
class PointPanel;
class Recovery;

/// The window: drawings in tabs, menus of all commands, panels, the command line below. What the user does
/// becomes a line for the question that waits, or is done once no command waits.
class MainWindow : public QMainWindow, private WindowLines::Listener {
public:
  MainWindow();
  ~MainWindow() override;

  [[nodiscard]] WindowLines& lines() { return m_lines; }
  [[nodiscard]] CommandLine& commandLine() { return *m_commandLine; }
  [[nodiscard]] DrawingView& view() { return *m_view; }
  [[nodiscard]] PointPanel& points() { return *m_points; }
  [[nodiscard]] LayerPanel& layers() { return *m_layers; }
  [[nodiscard]] QTabBar& tabs() { return *m_tabs; }
  /// Appends to what was printed. @param text UTF-8
  void print(const std::string& text);
  /// To be called once the module is loaded, and before the host ends.
  void connectHost();
  void disconnectHost();
  /// Keeps copies of unsaved drawings from now on, and offers those that a crash left once no command waits.
  void startRecovery();
  /// The session ended as the user wanted.
  void endRecovery();
  [[nodiscard]] Recovery* recovery() { return m_recovery.get(); }
  /// Whether the dialog that is open does nothing but wait for the user.
  std::function<bool()> dialogRests;
  /// Opens a drawing, or starts the dialog that works with a field file, once no command waits; what cannot
  /// be is told.
  void openFile(const QString& path);
  /// Shows what the host changed.
  void refresh();
  /// Writes a picture of the window. @return false with the reason on standard error
  bool grabTo(const std::string& file);

protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

private:
  class HostEvents;
  void asked(const base::Request& request) override;
  void answered(const base::Request& request, const std::string* line) override;
  void askedAgain(const base::Request& request) override;

  void makePanels();
  void tellLayouts(AcDbDatabase& database);
  void eraseChosen();
  void makeStatus();
  void makeMenus();
  void makeViewMenu();
  void makeToolBar();
  void makeSnapMenu();
  void makeRecoveryMenu();
  void connectView();
  void fillRecent();
  void openDrawing(const QString& path);
  void tell(const QString& message);
  void escape();
  void followDocuments();
  void showCursor();
  void showHistory(const AcDbUndoLog* log);
  void restore();
  void keep();

  WindowLines m_lines{*this};
  Preferences m_preferences;
  CommandLine* m_commandLine;
  DrawingView* m_view;
  QTabBar* m_tabs;
  LayerPanel* m_layers;
  PointPanel* m_points;
  QLabel* m_place;
  QLabel* m_layer;
  QLabel* m_units;
  QMenu* m_recent = nullptr;
  QAction* m_ortho = nullptr;
  QAction* m_snaps = nullptr;
  QAction* m_white = nullptr;
  std::vector<QAction*> m_snapKinds;
  std::vector<AcApDocument*> m_documents;  ///< in order of the tabs
  std::vector<AcDbObjectId> m_chosen;      ///< for the command that runs
  bool m_ran = false;                      ///< a command was run since the last question for one
  std::unique_ptr<HostEvents> m_events;
  std::unique_ptr<Recovery> m_recovery;
};

}  // namespace veltora::app
