#pragma once

#include "arx/lisp/lispargs.h"

namespace aclisp {

/// Lists: building, taking apart, searching.
std::span<const Subr> listFunctions();

}  // namespace aclisp
