#pragma once

#include "arx/lisp/lispargs.h"

namespace aclisp {

/// (command ...) and its kin: answers for the host's commands.
std::span<const Subr> commandFunctions();

/// A command begun by (command ...) that still waits for answers.
bool commandIsPending(Interpreter& in);
/// Ends such a command with what the user answers; to be called when an expression at the prompt ends.
void finishCommand(Interpreter& in);
/// Forgets such a command and its answers.
void dropCommand(Interpreter& in);

}  // namespace aclisp
