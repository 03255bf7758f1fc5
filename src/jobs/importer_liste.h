#pragma once

#include "base/export.h"
#include "jobs/resultat_points.h"

#include <filesystem>
#include <string>

/// A list of coordinates placed in one call, on the installed project and the working drawing.
namespace veltora {

struct demandeImportListe {
  std::filesystem::path fichier;  ///< the .xyz list
  std::wstring table;             ///< takes the points, made when missing; empty for the current one
  bool malgreDoutes = false;      ///< place even what is doubtful
};

/// Places the points of a list as blocks, with their observations, and enters them in the table; a blank
/// column Z between tabs means no altitude. A point of the table that bears a name of the list is replaced;
/// within the list the same name may stand twice.
/// @return false with `erreur` set, nothing changed: no project, the file cannot be read or holds no point;
/// also when the user stops it, and then the points placed so far stay
VELTORA_API bool importerListe(const demandeImportListe& demande, resultatPoints& resultat);

}  // namespace veltora
