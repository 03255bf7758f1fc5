// LISP functions that show the point tables.

#include "arx/ed/edlisp.h"
#include "drafting/points_dlg.h"
#include "drafting/tables_dlg.h"
#include "host/fonctions_lisp.h"

namespace veltora {

int lispChoixPoint() {
  AcString nom;
  return choisirPoint(nom) ? acedRetStr(nom.c_str()) : acedRetNil();
}

int lispGererLeves() {
  gererLeves();
  return acedRetVoid();
}

}  // namespace veltora
