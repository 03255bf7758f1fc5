#pragma once

class QWidget;

namespace veltora::ui {
class Container;
}

namespace veltora::app {

class DialogWindow;

/// Makes the views of what a dialog, a group or a page holds, in its order, and lays them out on a widget. No
/// place is told by the dialog but for `beside`; the rest follows from the kinds:
/// - fields stand below each other with their captions in front, many of them in two columns; check boxes
///   likewise;
/// - buttons that follow each other stand in rows, those at the end of a dialog on its right;
/// - groups that follow each other stand side by side;
/// - lists, text areas and reports take the whole width and the height that is left.
/// @return true when something takes the height that is left
bool layOut(DialogWindow& window, const ui::Container& container, QWidget& host);

}  // namespace veltora::app
