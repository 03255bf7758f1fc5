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

void Menu::Entry::setCaption(const std::wstring& caption) {
  m_caption = caption;
  m_menu.touch();
}

void Menu::Entry::enable(bool enabled) {
  m_enabled = enabled;
  m_menu.touch();
}

void Menu::Entry::setChecked(bool checked) {
  m_checked = checked;
  m_menu.touch();
}

Menu::Entry& Menu::Entry::add(const std::wstring& caption, std::function<void()> action) {
  Entry& entry = *m_entries.emplace_back(std::make_unique<Entry>(m_menu));
  entry.m_caption = caption;
  entry.onClick = std::move(action);
  m_menu.touch();
  return entry;
}

Menu::Entry& Menu::Entry::addSubmenu(const std::wstring& caption) { return add(caption, {}); }

void Menu::Entry::addSeparator() { add({}, {}).m_separator = true; }

Menu::Menu(Container* parent, const std::wstring& caption) : Control(parent, caption) {}

bool Menu::userPress(const Entry& entry) {
  if (!usable() || !entry.enabled() || entry.separator() || !entry.entries().empty()) return false;
  call(entry.onClick);
  return true;
}

}  // namespace veltora::ui
