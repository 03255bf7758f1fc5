#pragma once

#include "arx/lisp/lispargs.h"

namespace aclisp {

/// Printing, files, loading.
std::span<const Subr> fileFunctions();

/// Writes out the files that routines left open.
void flushFiles(Interpreter& in);
/// Evaluates the forms of a file; the value of the last. Fails when it cannot be read.
Value loadFile(Interpreter& in, const std::wstring& path);

}  // namespace aclisp
