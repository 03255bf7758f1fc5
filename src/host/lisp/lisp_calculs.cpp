// LISP functions on computations.

#include "arx/ed/acedads.h"
#include "calc/dialogs/helmert_dlg.h"
#include "host/lisp/fonctions_lisp.h"

namespace veltora {

int lispHelmert() {
  CHelmertDLG().doModal();
  return RTNORM;
}

}  // namespace veltora
