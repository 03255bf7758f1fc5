#include "window/robot.h"

#include "app/window/dialogs/dialog_window.h"
#include "app/window/dialogs/text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "ui/file_filter.h"

#include <cxxabi.h>

#include <QAbstractButton>
#include <QBuffer>
#include <QClipboard>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <cstdlib>
#include <memory>
#include <typeinfo>
#include <utility>

using namespace veltora;

namespace {

[[noreturn]] void fail(const std::string& what) { throw base::ScriptError{"fenêtre : " + what}; }

QString& pictures() {
  static QString folder;
  return folder;
}

/// One for each name: the fullest, by the size of its file.
void takePicture(QWidget& window, QString name) {
  if (pictures().isEmpty()) return;
  name = QStringLiteral("%1/%2.png").arg(pictures(), name.replace(QLatin1Char('/'), QLatin1Char('-')));
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  window.grab().save(&buffer, "PNG");
  if (QFileInfo(name).exists() && QFileInfo(name).size() >= bytes.size()) return;
  QFile file(name);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
    fail("l'image « " + app::utf8(name) + " » ne s'écrit pas");
}

/// Title and class, as two dialogs may have one title.
QString nameOf(const ui::Dialog& dialog) {
  const std::unique_ptr<char, decltype(&std::free)> name(
      abi::__cxa_demangle(typeid(dialog).name(), nullptr, nullptr, nullptr), &std::free);
  const QString className = QString::fromUtf8(name.get()).section(QStringLiteral("::"), -1);
  return app::shown(dialog.title()) + QStringLiteral(" (") + className + QLatin1Char(')');
}

}  // namespace

void Robot::takePictures(const std::string& folder) { pictures() = app::shown(folder); }

Robot::Robot(base::LineSource& source, base::OutputSink& sink)
    : ScriptDriver(source, sink), m_screen(*this), m_hand(m_screen) {}

void Robot::runModal(ui::Dialog& dialog) { m_screen.runModal(dialog); }

void Robot::setVisible(ui::Dialog& dialog, bool visible) {
  m_screen.setVisible(dialog, visible);
  ScriptDriver::setVisible(dialog, visible);
}

void Robot::showModeless(ui::Dialog& dialog) {
  ScriptDriver::showModeless(dialog);
  m_screen.showModeless(dialog);
}

void Robot::update(ui::Dialog& dialog) {
  ScriptDriver::update(dialog);
  m_screen.update(dialog);
}

void Robot::closeModeless(ui::Dialog& dialog) {
  ScriptDriver::closeModeless(dialog);
  m_screen.closeModeless(dialog);
}

int Robot::messageBox(const std::wstring& text, const std::wstring& title, ui::Buttons buttons) {
  return m_screen.messageBox(text, title, buttons);
}

void Robot::copyText(const std::wstring& text) {
  m_screen.copyText(text);
  ScriptDriver::copyText(app::wide(QGuiApplication::clipboard()->text()));
}

/// A line that fits nothing is refused as the script driver does; any other is typed into the choice.
std::optional<base::FileAnswer> Robot::acceptFile(const base::FileRequest& request,
                                                  const std::wstring& line) {
  const std::size_t bar = line.rfind(L'|');
  std::wstring typed = base::trim(line.substr(0, bar));
  m_screen.filterIndex = bar == std::wstring::npos ? 1 : base::lireEntier(line.substr(bar + 1));
  const auto filters = static_cast<int>(ui::filtersOf(request.filter).size());
  const bool known =
      bar == std::wstring::npos || (m_screen.filterIndex >= 1 && m_screen.filterIndex <= filters);
  const std::wstring full = ui::completedPath(request, typed, m_screen.filterIndex);
  const bool named = !typed.empty() && !QFileInfo(app::shown(full)).isDir();
  const std::wstring found = request.save ? full : ui::foundFile(request, typed, m_screen.filterIndex);
  if (!known || !named || found.empty()) return ScriptDriver::acceptFile(request, line);
  // Names are typed as they are, but where the choice begins in a folder of its own.
  m_screen.typed =
      request.folder.empty() ? typed : app::wide(QFileInfo(app::shown(found)).absoluteFilePath());
  std::optional<base::FileAnswer> answer = m_screen.chooseFile(request);
  // The toolkit gives whole paths; the scripts' outputs tell what was typed.
  if (answer && QFileInfo(app::shown(typed)).isRelative())
    answer->path = app::wide(QDir::current().relativeFilePath(app::shown(answer->path)));
  return answer;
}

void Robot::Screen::failed(app::DialogWindow&, std::exception_ptr thrown) { m_robot.m_hand.failed(thrown); }

void Robot::Screen::took(bool taken) { m_robot.m_hand.took(taken); }

int Robot::Screen::messageBox(const std::wstring& text, const std::wstring& title, ui::Buttons buttons) {
  m_buttons = buttons;
  return WindowDriver::messageBox(text, title, buttons);
}

void Robot::Screen::attend(app::DialogWindow& window) {
  QCoreApplication::processEvents();
  if (!window.isVisible()) fail("la boîte ne se voit pas");
  const QString name = nameOf(*window.dialog());
  m_robot.ScriptDriver::runModal(*window.dialog());
  window.catchUp();
  takePicture(window, name);
}

int Robot::Screen::attend(QMessageBox& box) {
  box.show();
  QCoreApplication::processEvents();
  takePicture(box, QStringLiteral("message ") + box.windowTitle());
  const std::wstring title = app::wide(box.windowTitle());
  const ui::Buttons buttons = m_buttons;
  const int answer = m_robot.ScriptDriver::messageBox(app::wide(box.text()), title, buttons);
  const std::vector<ui::MessageButton> choices = ui::buttonsOf(buttons);
  for (std::size_t i = 0; i < choices.size(); ++i) {
    if (choices[i].answer != answer) continue;
    for (QAbstractButton* button : box.buttons()) {
      if (button->text() != QString::fromWCharArray(choices[i].caption)) continue;
      button->click();
      if (box.isVisible()) fail("le message reste ouvert");
      return static_cast<int>(i);
    }
  }
  fail("le message n'a pas ce bouton");
}

bool Robot::Screen::attend(QFileDialog& choice) {
  if (!typed) return false;  // asked again: the next line of the script answers
  const QString line = app::shown(*std::exchange(typed, std::nullopt));
  choice.show();
  QCoreApplication::processEvents();
  takePicture(choice, QStringLiteral("fichier ") + choice.windowTitle());
  auto* const name = choice.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  auto* const buttons = choice.findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"));
  if (!name || !buttons) fail("le choix de fichiers a une autre forme");
  const QStringList filters = choice.nameFilters();
  if (filterIndex <= filters.size()) choice.selectNameFilter(filters[filterIndex - 1]);
  name->setText(line);
  QPushButton* const accept = buttons->button(
      choice.acceptMode() == QFileDialog::AcceptSave ? QDialogButtonBox::Save : QDialogButtonBox::Open);
  accept->click();
  if (choice.isVisible()) fail("le choix de fichiers n'accepte pas « " + app::utf8(line) + " »");
  return choice.result() == QDialog::Accepted;
}
