#include "ui/choices.h"

#include <utility>

namespace veltora::ui {

ComboBox::ComboBox(Container* parent, std::wstring caption, const std::vector<std::wstring>& items)
    : Control(parent, std::move(caption)) {
  for (const std::wstring& text : items) addItem(text);
  if (!items.empty()) setIndex(0);
}

std::wstring ComboBox::item(int index) const {
  return index >= 0 && index < count() ? m_items[static_cast<std::size_t>(index)].text : std::wstring();
}

long long ComboBox::data(int index) const {
  return index >= 0 && index < count() ? m_items[static_cast<std::size_t>(index)].data : 0;
}

int ComboBox::addItem(const std::wstring& text, long long data) {
  m_items.push_back({text, data});
  touch();
  return count() - 1;
}

void ComboBox::clear() {
  m_items.clear();
  setIndex(-1);
}

void ComboBox::setIndex(int index) {
  m_index = index >= 0 && index < count() ? index : -1;
  m_text = item(m_index);
  touch();
}

void ComboBox::setText(const std::wstring& text) {
  const int found = find(text);
  if (found < 0 && !m_editable) return;
  m_index = found;
  m_text = text;
  touch();
}

int ComboBox::find(const std::wstring& text) const {
  for (int i = 0; i < count(); ++i) {
    if (m_items[static_cast<std::size_t>(i)].text == text) return i;
  }
  return -1;
}

void ComboBox::setEditable(bool editable) {
  m_editable = editable;
  touch();
}

bool ComboBox::userChoose(int index) {
  if (index < 0 || index >= count() || !userEnter()) return false;
  setIndex(index);
  call(onChange);
  return true;
}

bool ComboBox::userType(const std::wstring& text) {
  if (!m_editable || !userEnter()) return false;
  setText(text);
  call(onChange);
  return true;
}

CheckBox::CheckBox(Container* parent, std::wstring caption, bool checked)
    : Control(parent, std::move(caption)), m_checked(checked) {}

CheckBox::CheckBox(Container* parent, std::wstring caption, std::wstring pressedCaption, bool checked)
    : Control(parent, std::move(caption)),
      m_checked(checked),
      m_pushLike(true),
      m_pressedCaption(std::move(pressedCaption)) {}

void CheckBox::setChecked(bool checked) {
  m_checked = checked;
  touch();
}

std::wstring CheckBox::caption() const {
  return m_pushLike && m_checked ? m_pressedCaption : Control::caption();
}

std::vector<std::wstring> CheckBox::names() const {
  if (!m_pushLike) return Control::names();
  return {readableText(Control::caption()), readableText(m_pressedCaption)};
}

bool CheckBox::userToggle() {
  if (!userEnter()) return false;
  setChecked(!m_checked);
  call(onChange);
  call(onClick);
  return true;
}

bool CheckBox::userSet(bool checked) { return m_checked == checked ? userEnter() : userToggle(); }

RadioGroup::RadioGroup(Container* parent, std::wstring caption, std::vector<std::wstring> items, int index)
    : Control(parent, std::move(caption)),
      m_items(std::move(items)),
      m_itemEnabled(m_items.size(), true),
      m_index(-1) {
  setIndex(index);
}

void RadioGroup::setIndex(int index) {
  m_index = index >= 0 && index < static_cast<int>(m_items.size()) ? index : -1;
  touch();
}

bool RadioGroup::itemEnabled(int index) const {
  return index >= 0 && index < static_cast<int>(m_items.size()) &&
         m_itemEnabled[static_cast<std::size_t>(index)];
}

void RadioGroup::enableItem(int index, bool enabled) {
  if (index < 0 || index >= static_cast<int>(m_items.size())) return;
  m_itemEnabled[static_cast<std::size_t>(index)] = enabled;
  touch();
}

void RadioGroup::setPictures(std::vector<std::wstring> paths) {
  m_pictures = std::move(paths);
  touch();
}

bool RadioGroup::userChoose(int index) {
  if (!itemEnabled(index) || !userEnter()) return false;
  const bool changed = index != m_index;
  setIndex(index);
  if (changed) call(onChange);
  call(onClick);
  return true;
}

}  // namespace veltora::ui
