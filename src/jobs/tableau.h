#pragma once

#include "arx/ge/gepoint.h"
#include "base/export.h"

#include <string>

/// The coordinate table of the working drawing's points in one call, on the installed project.
namespace veltora {

struct demandeTableau {
  AcGePoint3d coin;      ///< upper left corner
  double hauteur = 2.5;  ///< of the texts, drawing units, above 0
};

struct resultatTableau {
  int points = 0;       ///< rows drawn
  std::wstring erreur;  ///< French, why nothing came of it; empty on success
};

/// Draws number, X, Y and Z of the points of the current table as one object, an `AcDbTable`.
/// @return false with `erreur` set, nothing drawn: no project, no points, 100,000 points or more
VELTORA_API bool dessinerTableau(const demandeTableau& demande, resultatTableau& resultat);

}  // namespace veltora
