#pragma once

// LISP functions on polylines; see host/lisp/table_lisp.h.
namespace veltora {

/// c:projpoly: a polyline runs through the points near it.
int lispProjPoly();
/// C:POL3DTOPOL2D: light polylines of 3D ones.
int lispPol3dToPol2d();

}  // namespace veltora
