#pragma once

// LISP functions on joining points; see host/lisp/table_lisp.h.
namespace veltora {

/// c:TopJndre: a polyline through a run of numbered points.
int lispTopJndre();

}  // namespace veltora
