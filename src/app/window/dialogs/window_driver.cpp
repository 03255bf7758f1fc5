#include "app/window/dialogs/window_driver.h"

#include "app/window/dialogs/dialog_window.h"
#include "app/window/dialogs/file_choice.h"
#include "app/window/dialogs/text.h"
#include "base/text.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QEventLoop>
#include <QFileDialog>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <algorithm>
#include <utility>

namespace veltora::app {
namespace {

constexpr const char* kPlace = "place";  ///< of a message's button among its choices

QMessageBox::ButtonRole roleOf(int answer) {
  switch (answer) {
    case ui::kYes:
      return QMessageBox::YesRole;
    case ui::kNo:
      return QMessageBox::NoRole;
    case ui::kCancel:
      return QMessageBox::RejectRole;
    default:
      return QMessageBox::AcceptRole;
  }
}

/// A text that the screen has no room for is scrolled.
void scrollTall(QMessageBox& box) {
  constexpr double kMost = 0.6;  // of the screen
  auto* const text = box.findChild<QLabel*>("qt_msgbox_label");
  if (!text || !box.layout() || !box.screen()) return;
  const QSize room = box.screen()->availableSize() * kMost;
  const QSize whole = text->sizeHint();
  if (whole.height() <= room.height()) return;
  auto* const frame = new QScrollArea(&box);
  delete box.layout()->replaceWidget(text, frame);
  frame->setFrameShape(QFrame::NoFrame);
  frame->setWidgetResizable(true);
  frame->setWidget(text);
  const int bar = frame->verticalScrollBar()->sizeHint().width();
  frame->setMinimumSize(std::min(whole.width() + bar, room.width()), room.height());
}

}  // namespace

/// A modal dialog is open for the scope.
class WindowDriver::Running : private Uncopyable {
public:
  Running(WindowDriver& driver, ui::Dialog& dialog) : m_driver(driver) {
    driver.catchUpAll();
    m_open.window = std::make_unique<DialogWindow>(dialog, driver, driver.parent());
    driver.m_open.push_back(&m_open);
    driver.arrange();
  }
  ~Running() {
    std::erase(m_driver.m_open, &m_open);
    m_open.window->hide();
    m_open.window.reset();
    m_driver.arrange();
  }
  Open& open() { return m_open; }

private:
  WindowDriver& m_driver;
  Open m_open;
};

WindowDriver::WindowDriver(QWidget* window) : m_window(window) {}

WindowDriver::~WindowDriver() = default;

QWidget* WindowDriver::parent() const {
  DialogWindow* const top = front();
  return top && top->isVisible() ? top : m_window;
}

DialogWindow* WindowDriver::front() const { return m_open.empty() ? nullptr : m_open.back()->window.get(); }

bool WindowDriver::rests() const { return front() && !front()->isActing() && m_modeless.empty(); }

bool WindowDriver::isFront(const DialogWindow& window) const {
  if (!m_modeless.empty()) return m_modeless.back().get() == &window;
  return front() == &window;
}

/// What is hidden for a pick hides what lies below it; what was opened upon it is seen.
void WindowDriver::arrange() {
  bool hidden = false;
  for (auto open = m_open.rbegin(); open != m_open.rend(); ++open) {
    DialogWindow& window = *(*open)->window;
    hidden = hidden || !window.dialog() || window.dialog()->hidden();
    if (window.isVisible() != !hidden) window.setVisible(!hidden);
  }
}

void WindowDriver::catchUpAll() {
  for (Open* open : m_open) open->window->catchUp();
}

void WindowDriver::runModal(ui::Dialog& dialog) {
  Running running(*this, dialog);
  workPrepared(*running.open().window);
  attend(*running.open().window);
  if (dialog.isOpen()) dialog.endDialog(ui::kCancel);  // the program ends
  if (running.open().thrown) std::rethrow_exception(running.open().thrown);
}

void WindowDriver::workPrepared(DialogWindow& window) {
  if (!m_prepared) return;
  const Prepared prepared = *std::exchange(m_prepared, std::nullopt);
  m_nextFile = prepared.file;
  window.work(prepared.line);
  m_nextFile.reset();
}

void WindowDriver::attend(DialogWindow& window) {
  QEventLoop loop;
  window.onEnd = [&loop] { loop.quit(); };
  if (window.dialog() && window.dialog()->isOpen()) loop.exec();
  window.onEnd = nullptr;
}

void WindowDriver::failed(DialogWindow& window, std::exception_ptr thrown) {
  try {
    std::rethrow_exception(thrown);
  } catch (const std::exception& error) {
    messageBox(L"Erreur : " + base::fromUtf8(error.what()), L"", ui::Buttons::Ok);
  } catch (...) {
    for (Open* open : m_open)
      if (open->window.get() == &window) open->thrown = thrown;
    if (window.dialog()) window.dialog()->endDialog(ui::kCancel);
  }
}

void WindowDriver::setVisible(ui::Dialog&, bool) {
  catchUpAll();
  arrange();
}

void WindowDriver::showModeless(ui::Dialog& dialog) {
  catchUpAll();
  auto window = std::make_unique<DialogWindow>(dialog, *this, parent());
  auto* stop = new QPushButton(QStringLiteral("Interrompre le travail"), window.get());
  stop->setAutoDefault(false);
  QObject::connect(stop, &QPushButton::clicked, window.get(), [this, stop] {
    stop->setEnabled(false);
    requestStop();
  });
  window->layout()->addWidget(stop);
  window->show();
  m_modeless.push_back(std::move(window));
  update(dialog);
}

void WindowDriver::update(ui::Dialog& dialog) {
  for (const auto& window : m_modeless)
    if (window->dialog() == &dialog) window->catchUp();
  QCoreApplication::processEvents();
}

void WindowDriver::closeModeless(ui::Dialog& dialog) {
  const auto found = std::find_if(m_modeless.begin(), m_modeless.end(),
                                  [&](const auto& window) { return window->dialog() == &dialog; });
  if (found == m_modeless.end()) return;
  // Its own button may be what closes it.
  DialogWindow* const window = found->release();
  m_modeless.erase(found);
  window->leave();
  window->deleteLater();
}

int WindowDriver::messageBox(const std::wstring& text, const std::wstring& title, ui::Buttons buttons) {
  catchUpAll();
  const std::vector<ui::MessageButton> choices = ui::buttonsOf(buttons);
  QMessageBox box(parent());
  box.setWindowTitle(title.empty() ? QStringLiteral("Message") : shown(title));
  box.setTextFormat(Qt::PlainText);
  box.setText(shown(base::trim(text, L"\r\n")));
  box.setWindowModality(Qt::ApplicationModal);
  for (const ui::MessageButton& choice : choices) {
    QPushButton* const button = box.addButton(QString::fromWCharArray(choice.caption), roleOf(choice.answer));
    button->setProperty(kPlace, static_cast<int>(&choice - choices.data()));
    if (&choice == &choices.front()) box.setDefaultButton(button);
    if (&choice == &choices.back()) box.setEscapeButton(button);
  }
  scrollTall(box);
  return choices[static_cast<std::size_t>(attend(box))].answer;
}

/// The box lists its buttons by their roles, not in the order in which they were added.
int WindowDriver::attend(QMessageBox& box) {
  box.exec();
  if (const QAbstractButton* const clicked = box.clickedButton()) return clicked->property(kPlace).toInt();
  return static_cast<int>(box.buttons().size()) - 1;
}

std::optional<base::FileAnswer> WindowDriver::chooseFile(const base::FileRequest& request) {
  catchUpAll();
  if (m_nextFile && !request.save) return base::FileAnswer{*std::exchange(m_nextFile, std::nullopt)};
  FileChoice choice(request, parent());
  while (attend(choice.dialog())) {
    if (std::optional<base::FileAnswer> answer = choice.answer()) {
      const std::wstring replaced = request.save ? ui::replacedFile(request, answer->path) : std::wstring();
      if (replaced.empty() ||
          messageBox(ui::overwriteQuestion(replaced), L"Enregistrer sous", ui::Buttons::YesNo) == ui::kYes)
        return answer;
    } else {
      messageBox(choice.fault(), L"Ouvrir", ui::Buttons::Ok);
    }
  }
  return std::nullopt;
}

bool WindowDriver::attend(QFileDialog& choice) { return choice.exec() == QDialog::Accepted; }

void WindowDriver::copyText(const std::wstring& text) { QApplication::clipboard()->setText(shown(text)); }

}  // namespace veltora::app
