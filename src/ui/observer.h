#pragma once

#include "base/export.h"

/// What a driver hears of a dialog between two looks at it.
namespace veltora::ui {

class Control;
class Dialog;
class List;

/// Told of each change as it happens, in the midst of whoever makes it: it takes note and redraws later. One
/// at a time hangs on a dialog (`Dialog::setObserver`).
class VELTORA_API Observer {
public:
  virtual ~Observer() = default;
  /// The control's `revision` grew.
  virtual void changed(Control& control) = 0;
  /// It grew by one cell; the rest of the list is what it was.
  virtual void cellChanged(List& list, int row, int column) = 0;
  /// The dialog's own `revision` grew: its title, or where the keyboard is.
  virtual void changed(Dialog& dialog) = 0;
  /// The control comes to its end; nothing of it may be called any more.
  virtual void gone(Control& control) = 0;
  /// The dialog comes to its end, after its controls; the observer hangs on it no longer.
  virtual void gone(Dialog& dialog) = 0;
};

}  // namespace veltora::ui
