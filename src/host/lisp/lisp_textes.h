#pragma once

// LISP functions on texts; see host/lisp/table_lisp.h.
namespace veltora {

/// superpos: clears overlaps in a selection.
int lispSuperpos();
/// VARNTEXT: places a text.
int lispVarnText();
/// c:DISSOCBLOCK: turns the attributes of blocks into texts.
int lispDissocBlock();

}  // namespace veltora
