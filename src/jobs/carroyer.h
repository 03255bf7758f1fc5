#pragma once

#include "base/export.h"
#include "base/remarque.h"

#include <string>

/// The grid of the regions of one layer of the working drawing, in one call.
namespace veltora {

/// How a grid looks, in drawing units; see `dessinerCarroyage`.
struct aspectCarroyage {
  double pasX = 100.0;
  double pasY = 100.0;
  double tailleCroix = 5.0;
  double tailleTexte = 2.0;
  bool internes = true;
  int format = 2;
};

struct demandeCarroyer {
  std::wstring calque;  ///< whose light polylines in model space are the regions; case does not count
  aspectCarroyage aspect;
  bool malgreDoutes = false;  ///< draw more than a million crosses too
};

struct resultatCarroyer {
  int regions = 0;
  int croix = 0;
  bool retenu = false;        ///< nothing was drawn, for there are doubts
  base::Remarques remarques;  ///< regions that are open, at another altitude, without a cross
  std::wstring erreur;        ///< French, why nothing was drawn; empty on success
};

/// @return false with `erreur` set, nothing drawn: no drawing, no such layer, no polyline on it; also when
/// the user stops it, and then the crosses drawn so far stay
VELTORA_API bool carroyer(const demandeCarroyer& demande, resultatCarroyer& resultat);

}  // namespace veltora
