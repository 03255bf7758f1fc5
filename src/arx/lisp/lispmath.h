#pragma once

#include "arx/lisp/lispargs.h"

namespace aclisp {

/// Arithmetic. Integers have 32 bits and wrap around when they overflow, as routines for this dialect expect;
/// one real among the arguments makes the rest of the computation real.
std::span<const Subr> mathFunctions();

}  // namespace aclisp
