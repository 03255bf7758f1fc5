#pragma once

#include "arx/adesk.h"

#include <string>

namespace aclisp {

/// A failure, an interruption or a call of `exit`. Not derived from std::exception: it never leaves the
/// interpreter.
struct ARX_API LispError {
  enum Kind { kError, kCancelled, kQuit } kind = kError;
  std::wstring message;     ///< French, as `*error*` gets it
  std::wstring expression;  ///< the call in which it happened, shortened; empty outside of any
  std::wstring position;    ///< "fichier.lsp:12", empty for what was typed
};

}  // namespace aclisp
