#pragma once

#include "arx/lisp/lispargs.h"

namespace aclisp {

/// Special forms and the functions that call functions.
std::span<const Subr> formFunctions();

}  // namespace aclisp
