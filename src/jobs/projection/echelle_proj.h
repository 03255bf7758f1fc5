#pragma once

/// The one place that knows PROJ: a library of its own, loaded when a projection is asked for.
extern "C" {

/// The scale of a projection at a place: length in the plane over length on the ellipsoid.
/// @param crs  as PROJ names a projected system: "EPSG:2154"  @param x, y  east and north, metres
/// @return 0 when `echelle` is set; 1 for a system that is unknown or no projection of France's kind, 2 for a
/// place outside of what it is meant for
__attribute__((visibility("default"))) int veltoraEchelleProjection(const char* crs, double x, double y,
                                                                    double* echelle);
}
