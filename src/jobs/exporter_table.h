#pragma once

#include "base/export.h"
#include "core/code_range.h"
#include "jobs/resultat_points.h"
#include "points/tri_points.h"

#include <filesystem>
#include <string>

/// A point table written as a file in one call, from the installed project.
namespace veltora {

struct demandeExportPoints {
  std::filesystem::path fichier;  ///< its extension tells the form: .htm, .html, .doc, any other is text
  std::wstring table;             ///< empty for the current one
  int code = 0;                   ///< only points of this code, of those that a point may bear; 0 for all
  colonnePoints tri = colonnePoints::kOrdre;
  bool observations = false;  ///< writes those that the blocks show behind the codes of a text
};

/// Writes the points of a table; observations that it leaves out are a remark. @return false with `erreur`
/// set, no file written: no project, an unknown table, no point, the file cannot be written, the user stops
/// it
VELTORA_API bool exporterTable(const demandeExportPoints& demande, resultatPoints& resultat);

}  // namespace veltora
