#pragma once

#include "arx/lisp/lispvalue.h"

namespace aclisp {

/// A value as text. @param quoted texts in quotes with escapes (`prin1`), otherwise as they stand (`princ`)
/// @param limit the text is cut there with "..."; lists may be of any length and depth
ARX_API std::wstring printed(const Value& value, bool quoted, std::size_t limit = std::wstring::npos);
/// Six significant digits, always with a point: 1.0, 0.333333, 1.0e+20.
std::wstring printedReal(double value);

}  // namespace aclisp
