#pragma once

#include "arx/lisp/lispargs.h"

namespace aclisp {

/// Prompts, system variables, messages.
std::span<const Subr> inputFunctions();

}  // namespace aclisp
