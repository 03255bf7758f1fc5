#pragma once

#include "arx/lisp/lispargs.h"

namespace aclisp {

/// Entities of the working drawing.
std::span<const Subr> entityFunctions();

}  // namespace aclisp
