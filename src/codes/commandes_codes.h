#pragma once

#include "arx/db/resbuf.h"

namespace veltora {

// What LISP and the command line reach of the code table. The chains given back belong to the caller; null is
// nil.

/// Sorts the table by code. @return a list of dotted pairs (code . label); null when the table is empty
VELTORA_API resbuf* loadcodept();
/// Adds a code to the table unless it is there. A code outside their range becomes 1; the label is trimmed of
/// blanks and tabs, and becomes "Code %d" when empty.
/// @param arguments code (16 or 32 bits), label. @return T; null, nothing changed, when they are missing or
/// of other types
VELTORA_API resbuf* addcodept(const resbuf* arguments);
/// Empties the table. @return null
VELTORA_API resbuf* resetcodespts();
/// The command VCODIFICATION: shows the table's dialog, then writes the table to its file whatever button
/// closed it.
VELTORA_API void vcodification();

}  // namespace veltora
