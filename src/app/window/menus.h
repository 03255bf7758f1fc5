#pragma once

#include <QString>
#include <functional>

class QMenu;
class QMenuBar;

namespace veltora::app {

/// A menu for each subject of the commands that host and modules describe, in their order.
/// @param start  runs a command by its name
void addCommandMenus(QMenuBar& bar, const std::function<void(const QString& name)>& start);
/// The menu of a subject, made when there is none.
QMenu& menuOf(QMenuBar& bar, const QString& subject);

}  // namespace veltora::app
