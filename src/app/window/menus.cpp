#include "app/window/menus.h"

#include "app/window/text.h"
#include "arx/ed/edhelp.h"

#include <QMenu>
#include <QMenuBar>
#include <map>
#include <string>

namespace veltora::app {
namespace {

const std::map<std::wstring, QKeySequence>& shortcuts() {
  static const std::map<std::wstring, QKeySequence> keys = {
      {L"NOUVEAU", QKeySequence::New},   {L"OUVRIR", QKeySequence::Open},
      {L"SAUVERAP", QKeySequence::Save}, {L"SAUVENOM", QKeySequence("Ctrl+Shift+S")},
      {L"U", QKeySequence::Undo},        {L"RETABLIR", QKeySequence("Ctrl+Y")},
      {L"QUITTER", QKeySequence::Quit},  {L"AIDE", QKeySequence(Qt::Key_F1)}};
  return keys;
}

}  // namespace

QMenu& menuOf(QMenuBar& bar, const QString& subject) {
  for (QAction* const action : bar.actions())
    if (action->menu() && action->menu()->objectName() == subject) return *action->menu();
  QMenu* const menu = bar.addMenu(subject);
  menu->setObjectName(subject);
  menu->setToolTipsVisible(true);
  return *menu;
}

void addCommandMenus(QMenuBar& bar, const std::function<void(const QString& name)>& start) {
  for (const AcEdCommandHelp& help : acedDescriptions()) {
    const std::wstring name = help.names.substr(0, help.names.find(L','));
    QAction* const action = menuOf(bar, shown(help.subject)).addAction(shown(help.line));
    action->setObjectName(shown(name));
    action->setToolTip(shown(help.names));
    action->setStatusTip(shown(help.names));
    if (const auto key = shortcuts().find(name); key != shortcuts().end()) action->setShortcut(key->second);
    QObject::connect(action, &QAction::triggered, action, [start, name] { start(shown(name)); });
  }
}

}  // namespace veltora::app
