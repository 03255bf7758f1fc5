#include "app/window/driver_choice.h"

#include "ui/script_driver.h"

namespace veltora::app {

/// Dialogs are worked by the command line.
std::unique_ptr<ui::Driver> makeDriver(base::LineSource& source, base::OutputSink& sink, QWidget&) {
  return std::make_unique<ui::ScriptDriver>(source, sink);
}

}  // namespace veltora::app
