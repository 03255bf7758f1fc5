#pragma once

#include "ui/driver.h"

#include <memory>

class QWidget;

namespace veltora::app {

/// What shows the dialogs of the window program. @param window  that they belong to
std::unique_ptr<ui::Driver> makeDriver(base::LineSource& source, base::OutputSink& sink, QWidget& window);

}  // namespace veltora::app
