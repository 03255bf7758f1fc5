#pragma once

#include "arx/lisp/lispargs.h"

namespace aclisp {

/// Numbers and angles as texts in the units of the drawing, and back.
std::span<const Subr> unitFunctions();

/// Value of a system variable as a number.
double systemNumber(const wchar_t* name, double fallback);

}  // namespace aclisp
