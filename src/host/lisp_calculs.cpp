// LISP functions on computations.

#include "arx/ed/acedads.h"
#include "calc/helmert_dlg.h"
#include "host/fonctions_lisp.h"

namespace veltora {

int lispHelmert() {
  CHelmertDLG().doModal();
  return RTNORM;
}

}  // namespace veltora
