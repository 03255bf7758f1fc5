#include "arx/ap/commands.h"

#include "arx/ap/commands_draw.h"
#include "arx/ap/commands_edit.h"
#include "arx/ap/commands_explode.h"
#include "arx/ap/commands_files.h"
#include "arx/ap/commands_layer.h"
#include "arx/ap/commands_offset.h"
#include "arx/ap/commands_text.h"
#include "arx/ap/commands_transform.h"
#include "arx/ap/commands_undo.h"
#include "arx/ap/commands_view.h"
#include "arx/ed/accmd.h"
#include "arx/ed/edhelp.h"

void acapRegisterCommands() {
  constexpr const ACHAR* kGroup = L"ARX";
  constexpr Adesk::Int32 kHelpFlags = ACRX_CMD_TRANSPARENT | ACRX_CMD_NO_UNDO_MARKER;
  struct Row {
    const ACHAR* global;
    const ACHAR* local;
    Adesk::Int32 flags;
    AcRxFunctionPtr function;
    const ACHAR* subject;
    const ACHAR* line;  ///< for AIDE
  };
  static constexpr Row rows[] = {
      {L"NEW", L"NOUVEAU", ACRX_CMD_SESSION, arx_commands::newDrawing, L"Dessins", L"Ouvre un dessin vide"},
      {L"OPEN", L"OUVRIR", ACRX_CMD_SESSION, arx_commands::openDrawing, L"Dessins", L"Ouvre un dessin DXF"},
      {L"QSAVE", L"SAUVERAP", ACRX_CMD_MODAL, arx_commands::saveDrawing, L"Dessins", L"Enregistre le dessin"},
      {L"SAVEAS", L"SAUVENOM", ACRX_CMD_MODAL, arx_commands::saveDrawingAs, L"Dessins",
       L"Enregistre le dessin sous un autre nom"},
      {L"CLOSE", L"FERMER", ACRX_CMD_SESSION, arx_commands::closeDrawing, L"Dessins", L"Ferme le dessin"},
      {L"QUIT", L"QUITTER", ACRX_CMD_SESSION, arx_commands::quit, L"Dessins", L"Quitte le programme"},
      {L"U", L"U", ACRX_CMD_NO_UNDO_MARKER, arx_commands::undo, L"Annulation",
       L"Annule la dernière commande"},
      {L"REDO", L"RETABLIR", ACRX_CMD_NO_UNDO_MARKER, arx_commands::redo, L"Annulation",
       L"Rétablit ce qui vient d'être annulé"},
      {L"UNDO", L"ANNULER", ACRX_CMD_NO_UNDO_MARKER, arx_commands::undoSteps, L"Annulation",
       L"Annule plusieurs commandes"},
      {L"REGEN", L"REGEN", ACRX_CMD_NO_UNDO_MARKER, arx_commands::regenerate, L"Vue",
       L"Efface les tracés passagers"},
      {L"ZOOM", L"ZOOM", ACRX_CMD_TRANSPARENT, arx_commands::zoom, L"Vue",
       L"Change la vue : fenêtre, étendue, centre"},
      {L"LIST", L"LISTE", ACRX_CMD_USEPICKSET, arx_commands::listEntities, L"Vue",
       L"Décrit les entités choisies"},
      {L"ERASE", L"EFFACER", ACRX_CMD_USEPICKSET, arx_commands::eraseEntities, L"Dessiner",
       L"Efface les entités choisies"},
      {L"MOVE", L"DEPLACER", ACRX_CMD_USEPICKSET, arx_commands::moveEntities, L"Dessiner",
       L"Déplace les entités choisies"},
      {L"COPY", L"COPIER", ACRX_CMD_USEPICKSET, arx_commands::copyEntities, L"Dessiner",
       L"Copie les entités choisies à d'autres endroits"},
      {L"ROTATE", L"ROTATION", ACRX_CMD_USEPICKSET, arx_commands::rotateEntities, L"Dessiner",
       L"Tourne les entités choisies"},
      {L"SCALE", L"ECHELLE", ACRX_CMD_USEPICKSET, arx_commands::scaleEntities, L"Dessiner",
       L"Agrandit ou réduit les entités choisies"},
      {L"MIRROR", L"MIROIR", ACRX_CMD_USEPICKSET, arx_commands::mirrorEntities, L"Dessiner",
       L"Les entités choisies vues dans un miroir"},
      {L"OFFSET", L"DECALER", ACRX_CMD_MODAL, arx_commands::offsetEntity, L"Dessiner",
       L"Parallèles d'une ligne, d'un cercle, d'une polyligne"},
      {L"EXPLODE", L"DECOMPOS", ACRX_CMD_USEPICKSET, arx_commands::explodeEntities, L"Dessiner",
       L"Décompose polylignes, blocs et textes multilignes"},
      {L"LINE", L"LIGNE", ACRX_CMD_MODAL, arx_commands::line, L"Dessiner",
       L"Des lignes d'un point à l'autre"},
      {L"PLINE", L"POLYLIGN", ACRX_CMD_MODAL, arx_commands::polyline, L"Dessiner", L"Une polyligne"},
      {L"POINT", L"POINT", ACRX_CMD_MODAL, arx_commands::point, L"Dessiner", L"Un point du dessin"},
      {L"CIRCLE", L"CERCLE", ACRX_CMD_MODAL, arx_commands::circle, L"Dessiner", L"Un cercle"},
      {L"ARC", L"ARC", ACRX_CMD_MODAL, arx_commands::arc, L"Dessiner", L"Un arc par trois points"},
      {L"TEXT", L"TEXTE", ACRX_CMD_MODAL, arx_commands::text, L"Dessiner", L"Un texte"},
      {L"INSERT", L"INSERER", ACRX_CMD_MODAL, arx_commands::insert, L"Dessiner",
       L"Un bloc du dessin ou d'un fichier"},
      {L"LAYER", L"CALQUE", ACRX_CMD_TRANSPARENT, arx_commands::layer, L"Dessiner",
       L"Crée, choisit, cache les calques"},
      {L"HELP", L"AIDE", kHelpFlags, arx_commands::help, L"Aide", L"Cette liste (aussi « ? »)"},
  };
  if (acedRegCmds->lookupCmd(L"QSAVE")) return;
  for (const Row& row : rows) {
    acedRegCmds->addCommand(kGroup, row.global, row.local, row.flags, row.function);
    const std::wstring local = row.local;
    acedDescribeCommand(
        {kGroup, row.subject, local == row.global ? local : local + L", " + row.global, row.line});
  }
  acedRegCmds->addCommand(kGroup, L"?", L"?", kHelpFlags, arx_commands::help);
}
