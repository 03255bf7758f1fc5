#include "app/window/session.h"

#include "app/session/output.h"
#include "app/session/program.h"
#include "app/window/dialogs/window_driver.h"
#include "app/window/driver_choice.h"
#include "app/window/field_files.h"
#include "app/window/text.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace veltora::app {

/// What is printed goes to the window; while a script is read to standard output too.
class WindowSession::Output : public base::OutputSink {
public:
  Output(MainWindow& window, bool scripted) : m_window(window), m_scripted(scripted) {}
  void print(const std::string& text) override {
    m_window.print(text);
    if (m_scripted) m_standard.print(text);
  }

private:
  MainWindow& m_window;
  bool m_scripted;
  StandardOutput m_standard;
};

WindowSession::WindowSession(base::LineSource* script)
    : m_output(std::make_unique<Output>(m_window, script != nullptr)) {
  base::LineSource& source = script ? *script : m_window.lines();
  m_program = std::make_unique<Program>(source, *m_output, makeDriver(source, *m_output, m_window));
  m_window.lines().dialogIsOpen = [] {
    const auto* const driver = dynamic_cast<const WindowDriver*>(ui::driver());
    return driver && driver->front();
  };
  m_window.dialogRests = [] {
    const auto* const driver = dynamic_cast<const WindowDriver*>(ui::driver());
    return driver && driver->rests();
  };
}

WindowSession::~WindowSession() {
  if (m_loaded) m_window.disconnectHost();
}

bool WindowSession::open(const std::vector<std::string>& drawings) {
  if (!m_program->load()) return false;
  m_loaded = true;
  m_window.connectHost();
  m_window.show();
  QCoreApplication::processEvents();
  bool good = true;
  std::vector<QString> others;
  for (const std::string& file : drawings) {
    if (isDrawing(shown(file)))
      good = m_program->open(file) && good;
    else
      others.push_back(QFileInfo(shown(file)).absoluteFilePath());
  }
  if (good && !curDoc()) good = m_program->open({});
  for (const QString& file : others) m_window.openFile(file);
  return good;
}

int runWindow(const WindowCall& call) {
  const bool scripted = !call.script.empty() || !call.lines.empty();
  const std::unique_ptr<base::LineSource> script = scripted ? sourceOf(call.lines, call.script) : nullptr;
  if (scripted && !script) return kFailure;
  WindowSession session(script.get());
  if (!session.open(call.drawings) && (scripted || !curDoc())) return kFailure;
  Program& program = session.program();
  if (!scripted) session.window().startRecovery();
  const bool ran = program.run();
  if (program.hasQuit()) session.window().endRecovery();
  bool good = ran && (call.output.empty() || program.save(call.output));
  if (!call.image.empty()) good = session.window().grabTo(call.image) && good;
  if (scripted) program.tellUnsaved();
  return good ? kSuccess : kFailure;
}

}  // namespace veltora::app
