#pragma once

// LISP functions on extended data; see host/lisp/table_lisp.h.
namespace veltora {

/// sxd: sets a section of the extended data of an entity.
int lispSxd();

}  // namespace veltora
