#pragma once

#include <QString>
#include <functional>

namespace veltora::app {

class WindowLines;

/// Whether a file is a drawing by its name.
bool isDrawing(const QString& path);

/// Starts the command whose dialog works with a field file, with the file filled in, once no command waits.
/// @return why not, French; empty when it will be done
QString openFieldFile(WindowLines& lines, const QString& path);

}  // namespace veltora::app
