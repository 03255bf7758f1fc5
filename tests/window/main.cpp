// The terminal program with its dialogs in windows: the lines of its scripts work the widgets. For tests
// alone.
//   VELTORA_IMAGES=FOLDER  each window leaves its picture there
#include "app/arguments.h"
#include "app/session/output.h"
#include "app/session/program.h"
#include "window/robot.h"

#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

namespace {

/// What the toolkit has to complain about, but for what the platform without a screen always says.
void complain(QtMsgType, const QMessageLogContext&, const QString& text) {
  for (const char* usual : {"propagateSizeHints", "XDG_RUNTIME_DIR"})
    if (text.contains(QLatin1String(usual))) return;
  std::fprintf(stderr, "%s\n", text.toUtf8().constData());
}

}  // namespace

int main(int argc, char** argv) {
  using namespace veltora;
  ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
  qInstallMessageHandler(complain);
  int count = 1;
  const QApplication application(count, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  if (const char* folder = std::getenv("VELTORA_IMAGES")) Robot::takePictures(folder);
  app::Program::useDriver(
      [](base::LineSource& source, base::OutputSink& sink) -> std::unique_ptr<ui::Driver> {
        return std::make_unique<Robot>(source, sink);
      });
  try {
    int status = app::kSuccess;
    const app::Run run = app::readArguments(argc, argv, status);
    if (run) status = run();
    return app::outputWritten() ? status : app::kFailure;
  } catch (const std::exception& error) {
    app::printError(std::string("erreur inattendue : ") + error.what());
    return app::kFailure;
  }
}
