#pragma once

#include "app/window/dialogs/control_view.h"
#include "ui/observer.h"

#include <QDialog>
#include <exception>
#include <functional>
#include <memory>
#include <set>
#include <unordered_map>

class QMenuBar;

namespace veltora::app {

class WindowDriver;

/// A dialog of the module as a window: a view for each of its controls. What the user does reaches a control
/// through `act`, which undoes in the widgets what the control did not take and shows what changed.
class DialogWindow : public QDialog, private ui::Observer {
public:
  DialogWindow(ui::Dialog& dialog, WindowDriver& driver, QWidget* parent);
  ~DialogWindow() override;

  /// Null once the dialog is gone.
  [[nodiscard]] ui::Dialog* dialog() const { return m_dialog; }
  /// Null when the control is none of the dialog's.
  [[nodiscard]] ControlView* view(const ui::Control& control) const;
  void add(std::unique_ptr<ControlView> view);
  [[nodiscard]] QMenuBar& menuBar();

  /// Does what the user did. When it gives false, the control's widget goes back to what the control holds.
  /// What it throws ends here and goes to the driver. Without effect while the widgets are brought up to
  /// date.
  void act(ui::Control& control, const std::function<bool()>& deed);
  /// Does what a line of a script says.
  void work(const std::wstring& line);
  /// What the user did is being done.
  [[nodiscard]] bool isActing() const { return m_acting > 0; }
  /// The widgets change because the controls did.
  [[nodiscard]] bool refreshing() const { return m_refreshing; }
  /// Shows what changed since, and closes when the dialog has ended.
  void catchUp();
  /// The user goes to another control, by the keyboard or the mouse.
  void enter(ui::Control& control);

  /// Hears no more of the dialog and shows nothing any more.
  void leave();

  std::function<void()> onEnd;  ///< the dialog has ended

  void reject() override;

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

private:
  void changed(ui::Control& control) override;
  void cellChanged(ui::List& list, int row, int column) override;
  void changed(ui::Dialog& dialog) override;
  void gone(ui::Control& control) override;
  void gone(ui::Dialog& dialog) override;
  void doGuarded(const std::function<void()>& deed);
  void later();
  void showFocus();
  void orderTabs();

  struct Cell {
    ui::List* list;
    int row;
    int column;
    auto operator<=>(const Cell&) const = default;
  };
  ui::Dialog* m_dialog;
  WindowDriver& m_driver;
  std::unordered_map<const ui::Control*, std::unique_ptr<ControlView>> m_views;
  QMenuBar* m_menuBar = nullptr;
  std::set<ui::Control*> m_changed;
  std::set<Cell> m_cells;
  bool m_titleOrFocus = false;
  bool m_refreshing = false;
  bool m_waiting = false;  ///< `later` is on its way
  int m_acting = 0;
};

}  // namespace veltora::app
