#pragma once

// LISP functions on the user and the system; see host/lisp/table_lisp.h.
namespace veltora {

/// analyse: the words of a text.
int lispAnalyse();
/// k_getpt: a point that the user shows.
int lispKGetPt();
/// vndelfile: deletes a file.
int lispVnDelFile();
/// wait_user: waits for a key.
int lispWaitUser();

}  // namespace veltora
