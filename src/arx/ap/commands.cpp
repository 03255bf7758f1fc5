#include "arx/ap/commands.h"

#include "arx/ap/commands_draw.h"
#include "arx/ap/commands_edit.h"
#include "arx/ap/commands_files.h"
#include "arx/ap/commands_layer.h"
#include "arx/ap/commands_text.h"
#include "arx/ap/commands_undo.h"
#include "arx/ap/commands_view.h"
#include "arx/ed/accmd.h"

void acapRegisterCommands() {
  struct Row {
    const ACHAR* global;
    const ACHAR* local;
    Adesk::Int32 flags;
    AcRxFunctionPtr function;
  };
  static constexpr Row rows[] = {
      {L"NEW", L"NOUVEAU", ACRX_CMD_SESSION, arx_commands::newDrawing},
      {L"OPEN", L"OUVRIR", ACRX_CMD_SESSION, arx_commands::openDrawing},
      {L"QSAVE", L"SAUVERAP", ACRX_CMD_MODAL, arx_commands::saveDrawing},
      {L"SAVEAS", L"SAUVENOM", ACRX_CMD_MODAL, arx_commands::saveDrawingAs},
      {L"CLOSE", L"FERMER", ACRX_CMD_SESSION, arx_commands::closeDrawing},
      {L"QUIT", L"QUITTER", ACRX_CMD_SESSION, arx_commands::quit},
      {L"U", L"U", ACRX_CMD_NO_UNDO_MARKER, arx_commands::undo},
      {L"REDO", L"RETABLIR", ACRX_CMD_NO_UNDO_MARKER, arx_commands::redo},
      {L"UNDO", L"ANNULER", ACRX_CMD_NO_UNDO_MARKER, arx_commands::undoSteps},
      {L"REGEN", L"REGEN", ACRX_CMD_NO_UNDO_MARKER, arx_commands::regenerate},
      {L"ZOOM", L"ZOOM", ACRX_CMD_TRANSPARENT, arx_commands::zoom},
      {L"LIST", L"LISTE", ACRX_CMD_USEPICKSET, arx_commands::listEntities},
      {L"ERASE", L"EFFACER", ACRX_CMD_USEPICKSET, arx_commands::eraseEntities},
      {L"MOVE", L"DEPLACER", ACRX_CMD_USEPICKSET, arx_commands::moveEntities},
      {L"LINE", L"LIGNE", ACRX_CMD_MODAL, arx_commands::line},
      {L"PLINE", L"POLYLIGN", ACRX_CMD_MODAL, arx_commands::polyline},
      {L"POINT", L"POINT", ACRX_CMD_MODAL, arx_commands::point},
      {L"CIRCLE", L"CERCLE", ACRX_CMD_MODAL, arx_commands::circle},
      {L"ARC", L"ARC", ACRX_CMD_MODAL, arx_commands::arc},
      {L"TEXT", L"TEXTE", ACRX_CMD_MODAL, arx_commands::text},
      {L"INSERT", L"INSERER", ACRX_CMD_MODAL, arx_commands::insert},
      {L"LAYER", L"CALQUE", ACRX_CMD_TRANSPARENT, arx_commands::layer},
  };
  if (acedRegCmds->lookupCmd(L"QSAVE")) return;
  for (const Row& row : rows) acedRegCmds->addCommand(L"ARX", row.global, row.local, row.flags, row.function);
}
