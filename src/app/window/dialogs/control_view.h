#pragma once

#include "ui/dialog.h"

#include <QLabel>
#include <memory>

namespace veltora::app {

class DialogWindow;

/// The widget that shows one control. What the user does with it goes to the control by `DialogWindow::act`;
/// `refresh` brings it back to what the control holds. The widgets belong to the window.
class ControlView {
public:
  ControlView(const ControlView&) = delete;
  ControlView& operator=(const ControlView&) = delete;
  virtual ~ControlView() = default;

  [[nodiscard]] ui::Control& control() const { return m_control; }
  [[nodiscard]] QWidget* widget() const { return m_widget; }
  /// The caption in front of it; null where the widget bears its caption itself.
  [[nodiscard]] QLabel* label() const { return m_label; }
  /// Where the keyboard goes.
  [[nodiscard]] virtual QWidget* keyboard() const { return m_widget; }
  /// It takes what height is left.
  [[nodiscard]] virtual bool grows() const { return false; }

  /// All of it: caption, visible, enabled, content.
  void refresh();
  /// One cell of a list.
  virtual void refreshCell(int row, int column);
  /// The control comes to its end: nothing is shown of it any more.
  void retire();

protected:
  ControlView(DialogWindow& window, ui::Control& control) : m_window(window), m_control(control) {}
  /// @param labelled  the caption stands in front, not on the widget
  void place(QWidget* widget, bool labelled);
  virtual void refreshContent() = 0;
  virtual void refreshVisible(bool visible);
  [[nodiscard]] DialogWindow& window() const { return m_window; }

private:
  DialogWindow& m_window;
  ui::Control& m_control;
  QWidget* m_widget = nullptr;
  QLabel* m_label = nullptr;
};

/// The view of a control that holds none; null for those that do (groups, pages) and for menus.
std::unique_ptr<ControlView> makeView(DialogWindow& window, ui::Control& control);

}  // namespace veltora::app
