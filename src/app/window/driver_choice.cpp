#include "app/window/driver_choice.h"

#include "app/window/dialogs/window_driver.h"
#include "ui/script_driver.h"

namespace veltora::app {

/// Lines work the dialogs of a script, the user those of the window.
std::unique_ptr<ui::Driver> makeDriver(base::LineSource& source, base::OutputSink& sink, QWidget& window) {
  if (source.interactive()) return std::make_unique<WindowDriver>(&window);
  return std::make_unique<ui::ScriptDriver>(source, sink);
}

}  // namespace veltora::app
