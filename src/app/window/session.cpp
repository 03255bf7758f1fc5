#include "app/window/session.h"

#include "app/session/output.h"
#include "app/session/program.h"
#include "app/window/driver_choice.h"
#include "app/window/main_window.h"
#include "app/window/text.h"

#include <QCoreApplication>

namespace veltora::app {
namespace {

/// What is printed goes to the window; while a script is read to standard output too.
class WindowOutput : public base::OutputSink {
public:
  WindowOutput(MainWindow& window, bool scripted) : m_window(window), m_scripted(scripted) {}
  void print(const std::string& text) override {
    m_window.print(text);
    if (m_scripted) m_standard.print(text);
  }

private:
  MainWindow& m_window;
  bool m_scripted;
  StandardOutput m_standard;
};

/// @return false, with the reasons told, when one could not be opened
bool openDrawings(Program& program, const WindowCall& call) {
  bool good = true;
  for (const std::string& drawing : call.drawings) good = program.open(drawing) && good;
  return good && (!call.drawings.empty() || program.open({}));
}

}  // namespace

int runWindow(const WindowCall& call) {
  const bool scripted = !call.script.empty() || !call.lines.empty();
  const std::unique_ptr<base::LineSource> script = scripted ? sourceOf(call.lines, call.script) : nullptr;
  if (scripted && !script) return kFailure;
  MainWindow window;
  base::LineSource& source = scripted ? *script : window.lines();
  WindowOutput output(window, scripted);
  window.show();
  QCoreApplication::processEvents();
  Program program(source, output, makeDriver(source, output, window));
  if (!program.load()) return kFailure;
  window.connectHost();
  const bool opened = openDrawings(program, call);
  if (!opened && scripted) return kFailure;
  bool good = program.run() && (call.output.empty() || program.save(call.output));
  if (!call.image.empty()) good = window.grabTo(call.image) && good;
  window.disconnectHost();
  if (scripted) program.tellUnsaved();
  return good ? kSuccess : kFailure;
}

}  // namespace veltora::app
