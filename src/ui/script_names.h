#pragma once

#include "ui/dialog.h"

/// How a line of a script names the controls of a dialog.
namespace veltora::ui {

/// Something that a line can name: a control, one state of a push-like check box, a radio button, a menu
/// entry.
struct Target {
  Control* control = nullptr;
  int item = -1;  ///< of radio buttons, or 0/1 for the two captions of a push-like check box
  const Menu::Entry* entry = nullptr;  ///< of a menu
  std::wstring name;                   ///< as a person reads it
  std::vector<std::wstring> scopes;  ///< plain names of what it lies in, outermost first; its neighbour last
  bool byFrame = false;              ///< radio buttons without a caption, named by the group that frames them

  /// With the innermost scope in front: "Station/X".
  [[nodiscard]] std::wstring path() const;
  /// False for what lies hidden, or on a page that is not in front.
  [[nodiscard]] bool inView() const;
};

/// All that a line can name, in order of appearance.
std::vector<Target> targetsOf(const Container& container);

/// True when `text` is the target's name, or its scopes and its name in order, joined by "/"; captions may
/// themselves hold a "/".
bool isNamed(const Target& target, std::wstring_view text);

}  // namespace veltora::ui
