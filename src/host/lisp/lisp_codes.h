#pragma once

// LISP functions on the code table; see host/lisp/table_lisp.h.
namespace veltora {

/// loadcodept: the pairs (code . label).
int lispLoadCodePt();
/// addcodept: adds a code.
int lispAddCodePt();
/// resetcodespts: empties the table.
int lispResetCodesPts();
/// selectionnerCode: a code that the user chooses.
int lispSelectionnerCode();
/// c:decrireblock: the description of a block.
int lispDecrireBlock();
/// c:tablegendes: the legend of the drawing.
int lispTableLegendes();

}  // namespace veltora
