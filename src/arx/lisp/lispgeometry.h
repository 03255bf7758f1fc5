#pragma once

#include "arx/lisp/lispargs.h"

namespace aclisp {

/// Points. Angles in radians, counter-clockwise from +X, in the plane of x and y.
std::span<const Subr> geometryFunctions();

}  // namespace aclisp
