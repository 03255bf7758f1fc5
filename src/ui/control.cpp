#include "ui/control.h"

#include "base/text.h"
#include "ui/dialog.h"
#include "ui/fields.h"
#include "ui/observer.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace veltora::ui {

Container::~Container() {
  for (Control* control : m_controls) control->m_parent = nullptr;
}

bool Container::validateFields() {
  for (Control* control : m_controls) {
    if (auto* field = dynamic_cast<NumberField*>(control)) {
      if (field->usable() && !field->readOnly() && !field->validate()) return false;
    } else if (auto* inner = dynamic_cast<Container*>(control)) {
      if (!inner->validateFields()) return false;
    }
  }
  return true;
}

void Container::initAll() {
  onInit();
  // By index: an onInit may add controls.
  for (std::size_t i = 0; i < m_controls.size(); ++i) {
    if (auto* container = dynamic_cast<Container*>(m_controls[i])) container->initAll();
  }
}

Control::Control(Container* parent, std::wstring caption) : m_parent(parent), m_caption(std::move(caption)) {
  if (!parent) throw std::invalid_argument("contrôle sans boîte de dialogue");
  parent->m_controls.push_back(this);
}

Control::~Control() {
  if (!m_parent) return;
  if (Dialog* owner = dialog()) owner->forget(*this);
  std::erase(m_parent->m_controls, this);
}

void Control::touch() {
  ++m_revision;
  Dialog* const owner = dialog();
  if (owner && owner->observer()) owner->observer()->changed(*this);
}

void Control::touchCell(List& list, int row, int column) {
  ++m_revision;
  Dialog* const owner = dialog();
  if (owner && owner->observer()) owner->observer()->cellChanged(list, row, column);
}

void Control::beside(Control& neighbour) {
  m_neighbour = &neighbour;
  touch();
}

void Control::setCaption(const std::wstring& caption) {
  m_caption = caption;
  touch();
}

std::wstring Control::plainCaption() const { return plainText(caption()); }

std::vector<std::wstring> Control::names() const {
  const std::wstring name = readableText(caption());
  return {name.empty() ? kindName() : name};
}

void Control::show(bool visible) {
  m_visible = visible;
  touch();
}

void Control::enable(bool enabled) {
  m_enabled = enabled;
  touch();
}

bool Control::shown() const {
  if (!m_visible) return false;
  const Control* outer = m_parent ? m_parent->asControl() : nullptr;
  return !outer || outer->shown();
}

bool Control::usable() const {
  if (!m_visible || !m_enabled) return false;
  const Control* outer = m_parent ? m_parent->asControl() : nullptr;
  return !outer || outer->usable();
}

Dialog* Control::dialog() const { return m_parent ? m_parent->dialogOf() : nullptr; }

void Control::setFocus() {
  if (Dialog* owner = dialog()) owner->setFocus(this);
}

bool Control::userEnter() {
  if (!usable()) return false;
  Dialog* owner = dialog();
  if (!focusable() || !owner) return true;
  return owner->moveFocus(this) && usable();
}

std::wstring plainText(std::wstring_view caption) {
  std::wstring text;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == L'&' && (++i == caption.size() || caption[i] != L'&')) {
      if (i < caption.size()) text += caption[i];
      continue;
    }
    text += caption[i];
  }
  return base::trim(text, L" \t\r\n");
}

std::wstring readableText(std::wstring_view caption) {
  std::wstring text = plainText(caption);
  if (text.empty() || text.back() != L':') return text;
  text.pop_back();
  return base::trimRight(text);
}

std::wstring comparable(std::wstring_view caption) {
  std::wstring result;
  for (const wchar_t c : readableText(caption)) {
    const bool blank = c == L' ' || c == L'\t' || c == L'\r' || c == L'\n' || c == L'\u00A0';
    if (!blank)
      result += base::toLower(c);
    else if (!result.empty() && result.back() != L' ')
      result += L' ';
  }
  return base::trimRight(result);
}

}  // namespace veltora::ui
