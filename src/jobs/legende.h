#pragma once

#include "base/export.h"
#include "base/remarque.h"
#include "codes/legend/legende.h"

#include <string>

/// The legend of the working drawing, drawn in one call.
namespace veltora {

struct demandeDessinLegende {
  demandeLegende mesures;
  AcGePoint2d coin;   ///< lower left corner of the first line
  bool tous = false;  ///< blocks that model space does not show, too
};

struct resultatLegende {
  int blocs = 0;   ///< lines drawn for blocks
  int layers = 0;  ///< likewise for layers
  base::Remarques remarques;
  std::wstring erreur;  ///< French, why nothing was drawn; empty on success
};

/// Draws what TABLEGENDES draws, with the blocks in use.
/// @return false with `erreur` set, nothing drawn, when there is nothing to draw
VELTORA_API bool dessinerLegendeDuDessin(const demandeDessinLegende& demande, resultatLegende& resultat);

}  // namespace veltora
