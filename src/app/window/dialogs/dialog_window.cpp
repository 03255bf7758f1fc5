#include "app/window/dialogs/dialog_window.h"

#include "app/window/dialogs/dialog_layout.h"
#include "app/window/dialogs/text.h"
#include "app/window/dialogs/window_driver.h"
#include "ui/script_line.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFocusEvent>
#include <QLayout>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace veltora::app {

namespace {

constexpr double kShareOfScreen = 0.9;
constexpr std::size_t kCellsNoted = 200;  ///< beyond, the list is read again

/// The content itself, or a frame that scrolls it when the screen is too small.
QWidget* scrolled(QWidget& content, QSize room) {
  const QSize least = content.minimumSizeHint();
  if (least.height() <= room.height() && least.width() <= room.width()) return &content;
  auto* const frame = new QScrollArea(content.parentWidget());
  frame->setWidgetResizable(true);
  frame->setFrameShape(QFrame::NoFrame);
  frame->setWidget(&content);
  frame->setMinimumWidth(
      std::min(least.width() + frame->verticalScrollBar()->sizeHint().width(), room.width()));
  return frame;
}

}  // namespace

DialogWindow::DialogWindow(ui::Dialog& dialog, WindowDriver& driver, QWidget* parent)
    : QDialog(parent), m_dialog(&dialog), m_driver(driver) {
  setWindowModality(Qt::ApplicationModal);
  auto* const content = new QWidget(this);
  m_refreshing = true;
  layOut(*this, dialog, *content);
  m_refreshing = false;
  const QSize room = (screen() ? screen()->availableSize() : QSize(1024, 768)) * kShareOfScreen;
  auto* const outer = new QVBoxLayout(this);
  outer->setContentsMargins(0, 0, 0, 0);
  outer->addWidget(scrolled(*content, room));
  if (m_menuBar) outer->setMenuBar(m_menuBar);
  orderTabs();
  dialog.setObserver(this);
  m_titleOrFocus = true;
  catchUp();
  adjustSize();
  resize(size().boundedTo(room));
}

DialogWindow::~DialogWindow() {
  if (m_dialog) m_dialog->setObserver(nullptr);
  onEnd = nullptr;
}

void DialogWindow::leave() {
  if (m_dialog) m_dialog->setObserver(nullptr);
  m_dialog = nullptr;
  hide();
}

ControlView* DialogWindow::view(const ui::Control& control) const {
  const auto found = m_views.find(&control);
  return found == m_views.end() ? nullptr : found->second.get();
}

void DialogWindow::add(std::unique_ptr<ControlView> view) {
  const ui::Control* const control = &view->control();
  view->refresh();  // the layout measures it
  m_views[control] = std::move(view);
}

QMenuBar& DialogWindow::menuBar() {
  if (!m_menuBar) m_menuBar = new QMenuBar(this);
  return *m_menuBar;
}

namespace {

/// Where the Tab key goes, in the order of the declaration.
void addStops(const DialogWindow& window, const ui::Container& container, QList<QWidget*>& stops) {
  for (ui::Control* control : container.controls()) {
    const ControlView* const view = window.view(*control);
    if (view && view->keyboard()->focusPolicy() & Qt::TabFocus) stops << view->keyboard();
    if (const auto* inner = dynamic_cast<ui::Container*>(control)) addStops(window, *inner, stops);
  }
}

}  // namespace

void DialogWindow::orderTabs() {
  QList<QWidget*> stops;
  addStops(*this, *m_dialog, stops);
  for (qsizetype i = 1; i < stops.size(); ++i) setTabOrder(stops[i - 1], stops[i]);
}

void DialogWindow::doGuarded(const std::function<void()>& deed) {
  ++m_acting;
  try {
    deed();
  } catch (...) {
    m_driver.failed(*this, std::current_exception());
  }
  --m_acting;
  catchUp();
}

void DialogWindow::act(ui::Control& control, const std::function<bool()>& deed) {
  if (m_refreshing || !m_dialog) return;
  doGuarded([&] {
    const bool taken = deed();
    m_driver.took(taken);
    if (taken || !m_views.contains(&control)) return;
    m_changed.insert(&control);
    m_titleOrFocus = true;
  });
}

void DialogWindow::work(const std::wstring& line) {
  doGuarded([&] {
    ui::Hand hand;
    if (m_dialog) ui::applyLine(*m_dialog, line, hand);
  });
}

void DialogWindow::catchUp() {
  if (m_refreshing || !m_dialog) return;
  m_refreshing = true;
  for (const auto& [list, row, column] : std::exchange(m_cells, {}))
    if (ControlView* const changedView = view(*list)) changedView->refreshCell(row, column);
  for (ui::Control* control : std::exchange(m_changed, {}))
    if (ControlView* const changedView = view(*control)) changedView->refresh();
  for (const auto& [control, one] : m_views) {
    auto* const button = qobject_cast<QPushButton*>(one->widget());
    const bool isDefault = control == m_dialog->defaultButton();
    if (button && button->isDefault() != isDefault) button->setDefault(isDefault);
  }
  if (std::exchange(m_titleOrFocus, false)) {
    setWindowTitle(shown(m_dialog->title()));
    showFocus();
  }
  m_refreshing = false;
  if (!m_dialog->isOpen() && onEnd) onEnd();
}

/// The keyboard goes where the dialog has it.
void DialogWindow::showFocus() {
  const ui::Control* const focus = m_dialog->focus();
  const ControlView* const target = focus ? view(*focus) : nullptr;
  if (!target) return;
  QWidget* const keyboard = target->keyboard();
  if (keyboard->hasFocus() || target->widget()->isAncestorOf(focusWidget())) return;
  keyboard->setFocus(Qt::OtherFocusReason);
}

void DialogWindow::enter(ui::Control& control) {
  const auto* const button = dynamic_cast<ui::Button*>(&control);
  if (button && button->role() == ui::Button::Role::Cancel) return;  // it leaves no field
  if (!m_dialog || m_dialog->focus() == &control || !m_driver.isFront(*this)) return;
  act(control, [&control] { return control.userEnter(); });
}

bool DialogWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::FocusIn || m_refreshing || !m_dialog) return false;
  const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
  if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
      reason == Qt::MenuBarFocusReason)
    return false;
  for (const auto& [control, one] : m_views) {
    if (watched != one->keyboard() && watched != one->widget() &&
        !one->widget()->isAncestorOf(qobject_cast<QWidget*>(watched)))
      continue;
    if (one->control().focusable() && dynamic_cast<const ui::Container*>(control) == nullptr)
      QMetaObject::invokeMethod(
          this,
          [this, key = control] {
            if (ControlView* const entered = m_views.contains(key) ? m_views[key].get() : nullptr)
              enter(entered->control());
          },
          Qt::QueuedConnection);
  }
  return false;
}

/// The Escape key and the window's cross.
void DialogWindow::reject() {
  if (!m_dialog || !m_driver.isFront(*this)) return;
  doGuarded([this] { m_dialog->onCancel(); });
}

void DialogWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  reject();
}

void DialogWindow::later() {
  if (m_refreshing || m_acting > 0 || std::exchange(m_waiting, true)) return;
  QMetaObject::invokeMethod(
      this,
      [this] {
        m_waiting = false;
        catchUp();
      },
      Qt::QueuedConnection);
}

void DialogWindow::changed(ui::Control& control) {
  m_changed.insert(&control);
  later();
}

void DialogWindow::cellChanged(ui::List& list, int row, int column) {
  if (m_cells.size() < kCellsNoted)
    m_cells.insert({&list, row, column});
  else
    m_changed.insert(&list);
  later();
}

void DialogWindow::changed(ui::Dialog&) {
  m_titleOrFocus = true;
  later();
}

void DialogWindow::gone(ui::Control& control) {
  m_changed.erase(&control);
  std::erase_if(m_cells, [&](const Cell& cell) { return cell.list == &control; });
  const auto found = m_views.find(&control);
  if (found == m_views.end()) return;
  found->second->retire();
  m_views.erase(found);
}

void DialogWindow::gone(ui::Dialog&) {
  m_dialog = nullptr;
  hide();
}

}  // namespace veltora::app
