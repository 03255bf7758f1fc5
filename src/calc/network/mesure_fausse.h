#pragma once

#include "calc/network/donnees_reseau.h"

#include <string>

namespace veltora {

/// What an observation would measure, and by which usual mistake it does not.
struct mesureFausse {
  bool nette = false;   ///< it differs by more than the others leave in doubt
  std::wstring valeur;  ///< "132.4567 grades", "502.341 m"
  std::wstring faute;   ///< "fausse de 10 m"; empty when none explains it
};

/// @param reseau  adjusted without the observation
/// @param pire  largest residual of its kind there, radians or metres: how well it is known
/// @param unite  of the file's angles as a `modeAngle`; -1 for several
mesureFausse expliquerMesure(const donneesReseau& reseau, const ObservationReduite& o, double pire,
                             int unite);

}  // namespace veltora
