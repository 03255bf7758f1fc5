#pragma once

#include "arx/lisp/lispargs.h"

namespace aclisp {

/// Texts.
std::span<const Subr> textFunctions();

/// A character of a LISP text as ANSI code: 1 to 255 in Windows-1252, the code point for any other.
int codeOfCharacter(wchar_t c);
/// The character of such a code; the zero character for a code that is none.
wchar_t characterOfCode(std::int32_t code);

}  // namespace aclisp
