#pragma once

#include "ui/dialog.h"

/// Dialogs as text, in the forms that a script's lines have.
namespace veltora::ui {

/// The line with the title that stands over a dialog.
std::wstring titleLine(const std::wstring& title);
/// All controls with their values, long lists cut short.
std::wstring dialogText(const Dialog& dialog);
/// The reports that a dialog shows, as text.
std::wstring shownReports(const Container& container);
/// One control, lists and reports in full.
std::wstring controlText(Control& control);
/// One control in one line; of a list its counts only.
std::wstring controlSummary(Control& control);

}  // namespace veltora::ui
