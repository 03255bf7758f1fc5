#include "ui/buttons.h"

#include "ui/dialog.h"

#include <utility>

namespace veltora::ui {

Button::Button(Container* parent, std::wstring caption, Role role)
    : Control(parent, std::move(caption)), m_role(role) {}

Button::Button(Container* parent, std::wstring caption, std::function<void()> action)
    : Control(parent, std::move(caption)), onClick(std::move(action)), m_role(Role::Normal) {}

bool Button::userPress() {
  if (m_role == Role::Cancel ? !usable() : !userEnter()) return false;
  if (onClick)
    onClick();
  else if (m_role == Role::Ok && dialog())
    dialog()->onOk();
  else if (m_role == Role::Cancel && dialog())
    dialog()->onCancel();
  return true;
}

Menu::Entry& Menu::Entry::add(const std::wstring& entryCaption, std::function<void()> action) {
  entries.push_back(std::make_unique<Entry>());
  entries.back()->caption = entryCaption;
  entries.back()->onClick = std::move(action);
  return *entries.back();
}

Menu::Entry& Menu::Entry::addSubmenu(const std::wstring& entryCaption) { return add(entryCaption, {}); }

void Menu::Entry::addSeparator() { add({}, {}).separator = true; }

Menu::Menu(Container* parent, const std::wstring& caption) : Control(parent, caption) {}

bool Menu::userPress(const Entry& entry) {
  if (!usable() || !entry.enabled || entry.separator || !entry.entries.empty()) return false;
  call(entry.onClick);
  return true;
}

}  // namespace veltora::ui
