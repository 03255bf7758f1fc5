#pragma once

#include "arx/lisp/lispargs.h"

namespace aclisp {

/// Questions about values and their order.
std::span<const Subr> predicateFunctions();

/// Equal in structure; numbers may differ by `fuzz` when both are numbers.
bool equalValues(const Value& a, const Value& b, double fuzz = 0.0);

}  // namespace aclisp
