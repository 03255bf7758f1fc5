#pragma once

// LISP functions on parallels; see host/lisp/table_lisp.h.
namespace veltora {

/// Smallest distance of a parallel, or at which blocks are looked for; drawing units.
inline constexpr double kPlusPetiteDistance = 0.0001;

/// C:pointsParDecalage: the parallel of a polyline, and points at its vertices.
int lispPointsParDecalage();

}  // namespace veltora
