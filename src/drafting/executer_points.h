#pragma once

#include "base/export.h"
#include "points/tri_points.h"

#include <filesystem>
#include <string>
#include <vector>

/// Coordinate lists in one call, without a dialog, on the installed project and the working drawing.
namespace veltora {

struct demandeListeXYZ {
  std::filesystem::path fichier;  ///< the .xyz list
  std::wstring table;             ///< takes the points, made when missing; empty for the current one
};

struct demandeExportPoints {
  std::filesystem::path fichier;  ///< its extension tells the form: .htm, .html, .doc, any other is text
  std::wstring table;             ///< empty for the current one
  int code = 0;                   ///< only points of this code; 0 for all
  colonnePoints tri = colonnePoints::kOrdre;
};

struct resultatPoints {
  int nombre = 0;                       ///< points placed or written
  std::vector<std::wstring> remarques;  ///< French, what was passed over or changed; the run goes on
  std::wstring erreur;                  ///< French, why nothing was done; empty on success
};

/// Places the points of a list as blocks, with their observations, and enters them in the table; a blank
/// column Z between tabs means no altitude. A point of
/// the table that bears a name of the list is replaced; within the list the same name may stand twice.
/// @return false with `erreur` set, nothing changed: no project, the file cannot be read or holds no point;
/// also when the user stops it, and then the points placed so far stay
VELTORA_API bool placerListeXYZ(const demandeListeXYZ& demande, resultatPoints& resultat);

/// Writes the points of a table. @return false with `erreur` set, no file written: no project, an unknown
/// table, no point, the file cannot be written
VELTORA_API bool exporterTable(const demandeExportPoints& demande, resultatPoints& resultat);

}  // namespace veltora
