#pragma once

#include "app/window/dialogs/control_view.h"

#include <QHash>

class QAction;
class QMenu;

namespace veltora::app {

/// A drop-down menu of the dialog's menu bar.
class MenuView : public ControlView {
public:
  MenuView(DialogWindow& window, ui::Menu& menu);
  /// Null for what has no action of its own.
  [[nodiscard]] QAction* action(const ui::Menu::Entry& entry) const { return m_actions.value(&entry); }

protected:
  void refreshContent() override;
  void refreshVisible(bool visible) override;

private:
  void fill(QMenu& menu, const std::vector<std::unique_ptr<ui::Menu::Entry>>& entries);
  ui::Menu& m_menu;
  QMenu* m_shown;
  QHash<const ui::Menu::Entry*, QAction*> m_actions;
};

}  // namespace veltora::app
