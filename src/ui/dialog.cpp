#include "ui/dialog.h"

#include "ui/driver.h"
#include "ui/observer.h"

#include <utility>

namespace veltora::ui {
namespace {

/// The first control in order that the keyboard can go to; of pages, those of the page in front.
Control* firstFocusable(const Container& container) {
  for (Control* control : container.controls()) {
    if (!control->usable()) continue;
    if (const auto* pages = dynamic_cast<Pages*>(control)) {
      const Page* front = pages->page(pages->index());
      if (Control* found = front ? firstFocusable(*front) : nullptr) return found;
    } else if (const auto* inner = dynamic_cast<Container*>(control)) {
      if (Control* found = firstFocusable(*inner)) return found;
    } else if (control->focusable()) {
      return control;
    }
  }
  return nullptr;
}

Button* okButton(const Container& container) {
  for (Control* control : container.controls()) {
    if (auto* button = dynamic_cast<Button*>(control); button && button->role() == Button::Role::Ok) {
      if (button->usable()) return button;
    } else if (const auto* inner = dynamic_cast<Container*>(control)) {
      if (Button* found = okButton(*inner)) return found;
    }
  }
  return nullptr;
}

}  // namespace

/// The dialog is open for the scope, and closed however the scope is left.
class Dialog::OpenScope : private Uncopyable {
public:
  explicit OpenScope(Dialog& dialog) : m_dialog(dialog) {
    dialog.m_open = true;
    dialog.m_hidden = false;
    dialog.m_result = 0;
    dialog.m_focus = nullptr;
  }
  ~OpenScope() {
    m_dialog.m_open = false;
    m_dialog.m_hidden = false;
    m_dialog.m_focus = nullptr;
  }

private:
  Dialog& m_dialog;
};

Dialog::Dialog(std::wstring title) : m_title(std::move(title)) {}

Dialog::~Dialog() {
  if (m_observer) m_observer->gone(*this);
}

void Dialog::touch() {
  ++m_revision;
  if (m_observer) m_observer->changed(*this);
}

void Dialog::setTitle(const std::wstring& title) {
  m_title = title;
  touch();
}

void Dialog::setFocus(Control* control) {
  m_focus = control;
  touch();
}

int Dialog::doModal() {
  Driver* shown = driver();
  if (!shown) throw NoDriver(m_title);
  if (m_open) throw std::logic_error("cette boîte de dialogue est déjà ouverte");
  const OpenScope scope(*this);
  initAll();
  if (m_open) {
    if (!m_focus) m_focus = firstFocusable(*this);
    shown->runModal(*this);
  }
  return m_open ? kCancel : m_result;
}

void Dialog::endDialog(int result) {
  if (!m_open) return;
  m_result = result;
  if (m_modeless) closeModeless();
  m_open = false;
}

void Dialog::hide() {
  if (!m_open || m_hidden) return;
  m_hidden = true;
  if (driver()) driver()->setVisible(*this, false);
}

void Dialog::show() {
  if (!m_open || !m_hidden) return;
  m_hidden = false;
  if (driver()) driver()->setVisible(*this, true);
}

void Dialog::openModeless() {
  if (m_open || !driver()) return;
  m_open = true;
  m_modeless = true;
  m_result = 0;
  initAll();
  driver()->showModeless(*this);
}

void Dialog::closeModeless() {
  if (!m_modeless) return;
  m_modeless = false;
  m_open = false;
  if (driver()) driver()->closeModeless(*this);
}

Button* Dialog::defaultButton() const { return okButton(*this); }

void Dialog::onOk() {
  if (validateFields()) endDialog(kOk);
}

void Dialog::onCancel() { endDialog(kCancel); }

bool Dialog::moveFocus(Control* control) {
  if (m_focus == control) return true;
  const bool wasOpen = m_open;
  Control* left = std::exchange(m_focus, control);
  touch();
  if (left && left->onLeave) left->onLeave();
  return m_focus == control && m_open == wasOpen;
}

void Dialog::forget(Control& control) {
  if (m_observer) m_observer->gone(control);
  if (m_focus == &control) m_focus = nullptr;
}

HiddenDialog::~HiddenDialog() {
  try {
    m_dialog.show();
  } catch (...) {  // NOLINT(bugprone-empty-catch): the scope may be left by another exception already
  }
}

}  // namespace veltora::ui
