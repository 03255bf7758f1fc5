#include "app/window/dialogs/menu_view.h"

#include "app/window/dialogs/dialog_window.h"
#include "app/window/dialogs/text.h"

#include <QMenu>
#include <QMenuBar>

namespace veltora::app {

MenuView::MenuView(DialogWindow& window, ui::Menu& menu)
    : ControlView(window, menu), m_menu(menu), m_shown(new QMenu(&window)) {
  window.menuBar().addMenu(m_shown);
  place(m_shown, false);
}

void MenuView::refreshContent() {
  m_shown->setTitle(shown(m_menu.caption()));
  m_shown->menuAction()->setEnabled(m_menu.enabled());
  fill(*m_shown, m_menu.entries());
}

void MenuView::refreshVisible(bool visible) { m_shown->menuAction()->setVisible(visible); }

/// Entries are added to and never taken out, so that those that have an action keep it: the one that was
/// pressed may be among them.
void MenuView::fill(QMenu& menu, const std::vector<std::unique_ptr<ui::Menu::Entry>>& entries) {
  for (const auto& entry : entries) {
    QAction*& action = m_actions[entry.get()];
    if (!action) {
      action = entry->separator()          ? menu.addSeparator()
               : !entry->entries().empty() ? menu.addMenu(QString())->menuAction()
                                           : menu.addAction(QString());
      QObject::connect(action, &QAction::triggered, &window(), [this, one = entry.get()] {
        window().act(m_menu, [this, one] { return m_menu.userPress(*one); });
      });
    }
    action->setText(shown(entry->caption()));
    action->setEnabled(entry->enabled());
    if (entry->checked()) action->setCheckable(true);
    action->setChecked(entry->checked());
    if (action->menu()) {
      QMenu* const inner = action->menu();  // the table of actions may move meanwhile
      fill(*inner, entry->entries());
    }
  }
}

}  // namespace veltora::app
