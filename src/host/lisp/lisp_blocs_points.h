#pragma once

// LISP functions on point blocks; see host/lisp/table_lisp.h.
namespace veltora {

/// c:VNDEPORTPNTS: moves point blocks onto a path.
int lispVnDeportPnts();
/// c:VNAJUSTERZ: shifts altitudes.
int lispVnAjusterZ();

}  // namespace veltora
