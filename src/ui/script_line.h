#pragma once

#include "ui/hand.h"
#include "ui/script_names.h"

/// Works a dialog by one line of a script.
namespace veltora::ui {

/// What a line asks of a dialog, apart from doing something.
struct LineResult {
  bool done = true;          ///< false when the control that was left took the focus back
  Control* asked = nullptr;  ///< "Légende ?": the control to print in full
};

/// @param line without outer blanks, not empty, no comment and not "?"  @param hand  does what the line says
/// @throws base::ScriptError when the line fits nothing; no value is changed then
VELTORA_API LineResult applyLine(Dialog& dialog, std::wstring_view line, Hand& hand);

/// The lines that work a dialog as it is: "[Légende]", "Liste: ", "Légende = " and, with each choice behind
/// it, "Légende = choix"; only what is in view and can be used.
std::vector<std::wstring> possibleLines(const Dialog& dialog);

}  // namespace veltora::ui
