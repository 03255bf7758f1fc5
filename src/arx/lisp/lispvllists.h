#pragma once

#include "arx/lisp/lispargs.h"

namespace aclisp {

/// The later list functions: filtering and sorting with a function.
std::span<const Subr> vlListFunctions();

}  // namespace aclisp
