#pragma once

#include "base/export.h"

#include <string>
#include <utility>
#include <vector>

/// Points made from the entities of the working drawing in one call, on the installed project.
namespace veltora {

struct demandeImportDessin {
  std::wstring table;                    ///< takes the points, made when missing; empty for the current one
  std::vector<std::wstring> sources;     ///< names of `nomsSourcesImport`; empty for all
  std::vector<std::wstring> etiquettes;  ///< attributes of number, altitude and, if there is one, code
};

struct resultatImportDessin {
  /// Points made from each source that gave some, and its title.
  std::vector<std::pair<int, std::wstring>> comptes;
  std::wstring table;   ///< that took the points
  int points = 0;       ///< of that table now
  std::wstring erreur;  ///< French, why nothing came of it; empty on success
};

/// The kinds of entities, as a command line names them.
VELTORA_API std::vector<std::wstring> nomsSourcesImport();

/// Turns the entities of model space into points at the end of the table.
/// @return false with `erreur` set: no project, or the user stopped it, and then the points made so far stay
VELTORA_API bool importerDessin(const demandeImportDessin& demande, resultatImportDessin& resultat);

}  // namespace veltora
