// LISP functions that show the point tables.

#include "arx/ed/edlisp.h"
#include "drafting/dialogs/points_dlg.h"
#include "drafting/dialogs/tables_dlg.h"
#include "host/lisp/fonctions_lisp.h"

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
