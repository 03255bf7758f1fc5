#include "host/lisp/lisp_codes.h"

#include "arx/ed/edlisp.h"
#include "codes/commandes_codes.h"
#include "codes/dialogs/commentaire_bloc_dlg.h"
#include "codes/dialogs/legendes_dlg.h"
#include "codes/selectionner_code.h"
#include "host/lisp/arguments_lisp.h"

namespace veltora {

int lispLoadCodePt() {
  const argumentsLisp liste(loadcodept());
  return acedRetList(liste.chaine());
}

int lispAddCodePt() {
  const argumentsLisp args(acedGetArgs());
  const argumentsLisp resultat(addcodept(args.chaine()));
  return resultat.chaine() ? acedRetT() : acedRetNil();
}

int lispResetCodesPts() {
  const argumentsLisp resultat(resetcodespts());
  return acedRetNil();
}

int lispSelectionnerCode() {
  int code = 0;
  return selectionnerCode(code) ? acedRetInt(code) : acedRetNil();
}

int lispDecrireBlock() {
  CDlgCommentaireBlock().doModal();
  return RTNORM;
}

int lispTableLegendes() {
  tableLegendes();
  return RTNORM;
}

}  // namespace veltora
