#pragma once

// LISP functions on a dialog of the system; see host/lisp/table_lisp.h.
namespace veltora {

/// choixpoint: the name of a point that the user chooses.
int lispChoixPoint();
/// c:gererLeves: the tables of points.
int lispGererLeves();
/// c:HELMERT: the transformation.
int lispHelmert();
/// c:CREERPLANCHE: a sheet.
int lispCreerPlanche();
/// c:IMPLANT2: points set out.
int lispImplant2();

}  // namespace veltora
