#include "arx/ap/commands_undo.h"

#include "arx/ap/acdocman.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbundo.h"
#include "arx/ed/edinput.h"

namespace arx_commands {

void undo() {
  AcApDocument* const document = curDoc();
  if (!document) return;
  AcDbUndoLog& log = document->database()->undoLog();
  if (!log.canUndo()) {
    acedPrompt(L"\nTout a été annulé.\n");
    return;
  }
  acutPrintf(L"\nAnnulé : %s\n", log.undo());
}

void redo() {
  AcApDocument* const document = curDoc();
  if (!document) return;
  AcDbUndoLog& log = document->database()->undoLog();
  if (!log.canRedo()) {
    acedPrompt(L"\nRien à rétablir.\n");
    return;
  }
  acutPrintf(L"\nRétabli : %s\n", log.redo());
}

/// A number of steps; within a routine, a group. What a routine does is one step as it is, which its groups
/// are part of, so nothing is left to open or close; a group over several typed commands is not offered.
void undoSteps() {
  AcApDocument* const document = curDoc();
  if (!document) return;
  const AcDbUndoLog& log = document->database()->undoLog();
  if (log.depth() > 0) {
    std::wstring word;
    acedInitGet(0, L"Début Fin _Begin End");
    acedGetKword(L"\nGroupe d'annulation [Début/Fin] : ", word);
    return;
  }
  int count = 1;
  acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
  const int status = acedGetInt(L"\nNombre d'opérations à annuler <1> : ", &count);
  if (status != RTNORM && status != RTNONE) return;
  for (; count > 0 && log.canUndo(); --count) undo();
  if (count > 0) undo();  // says that nothing is left
}

}  // namespace arx_commands
