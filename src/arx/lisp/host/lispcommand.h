#pragma once

#include "arx/lisp/lispinterp.h"

namespace aclisp {

/// A command begun by (command ...) that still waits for answers.
bool commandIsPending(Interpreter& in);
/// Ends such a command with what the user answers; to be called when an expression at the prompt ends.
void finishCommand(Interpreter& in);
void dropCommand(Interpreter& in);

}  // namespace aclisp
