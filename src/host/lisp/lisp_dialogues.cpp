#include "host/lisp/lisp_dialogues.h"

#include "arx/ed/edlisp.h"
#include "calc/dialogs/helmert_dlg.h"
#include "drafting/dialogs/cartouche_dlg.h"
#include "drafting/dialogs/points_dlg.h"
#include "drafting/dialogs/tables_dlg.h"
#include "stakeout/dialogs/implantation_dlg.h"

namespace veltora {

int lispChoixPoint() {
  AcString nom;
  return choisirPoint(nom) ? acedRetStr(nom.c_str()) : acedRetNil();
}

int lispGererLeves() {
  gererLeves();
  return acedRetVoid();
}

int lispHelmert() {
  CHelmertDLG().doModal();
  return RTNORM;
}

int lispCreerPlanche() {
  creerPlanche();
  return RTNORM;
}

int lispImplant2() {
  implantationDirecte();
  return RTNORM;
}

}  // namespace veltora
