#pragma once

#include "arx/lisp/lispargs.h"

namespace aclisp {

/// Selection sets.
std::span<const Subr> selectionFunctions();

}  // namespace aclisp
