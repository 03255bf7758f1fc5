#pragma once

#include "arx/lisp/lispargs.h"

namespace aclisp {

/// Symbol tables and dictionaries.
std::span<const Subr> tableFunctions();

}  // namespace aclisp
