#include "app/window/main_window.h"

#include "app/session/output.h"
#include "app/window/command_line.h"
#include "app/window/text.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QDockWidget>
#include <QTimer>

namespace veltora::app {

MainWindow::MainWindow() : m_commandLine(new CommandLine) {
  setWindowTitle("Veltora");
  resize(1200, 800);
  setCentralWidget(new QWidget);
  auto* const dock = new QDockWidget("Commandes", this);
  dock->setObjectName("commandes");
  dock->setWidget(m_commandLine);
  addDockWidget(Qt::BottomDockWidgetArea, dock);
  m_commandLine->entered = [this](const QString& line) { m_lines.answer(utf8(line)); };
  m_commandLine->escaped = [this] { m_lines.cancel(); };
}

MainWindow::~MainWindow() = default;

void MainWindow::print(const std::string& text) { m_commandLine->print(shown(text)); }

void MainWindow::connectHost() {}
void MainWindow::disconnectHost() {}

bool MainWindow::grabTo(const std::string& file) {
  m_commandLine->flush();
  QApplication::processEvents();
  if (grab().save(shown(file))) return true;
  printError("impossible d'écrire l'image \"" + file + "\"");
  return false;
}

void MainWindow::asked(const base::Request& request) { m_commandLine->ask(&request); }

void MainWindow::answered(const base::Request& request, const std::string* line) {
  print(request.prompt + (line ? *line : std::string()) + "\n");
  m_commandLine->ask(nullptr);
}

void MainWindow::askedAgain(const base::Request& request) { m_commandLine->ask(&request); }

/// The window stays until QUIT has asked for what is not saved.
void MainWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  m_lines.close();
  // Dialogs that wait are cancelled one after the other.
  auto* const timer = new QTimer(this);
  connect(timer, &QTimer::timeout, this, [this, timer] {
    if (!m_lines.isCancelling()) return timer->deleteLater();
    if (auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) dialog->reject();
  });
  timer->start(0);
}

}  // namespace veltora::app
