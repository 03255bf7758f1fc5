#pragma once

// LISP functions on parallels; see host/lisp/table_lisp.h.
namespace veltora {

/// C:pointsParDecalage: the parallel of a polyline, and points at its vertices.
int lispPointsParDecalage();

}  // namespace veltora
