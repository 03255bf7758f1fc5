#pragma once

#include "base/export.h"
#include "base/remarque.h"
#include "drafting/polylines/polylines_2d.h"

#include <string>
#include <vector>

/// The 3D polylines of the working drawing made flat in one call.
namespace veltora {

struct demandeAplatir {
  demandePolylines2d polylines;      ///< its layers are those of `layers`
  std::vector<std::wstring> layers;  ///< names, whatever the case; empty for all
  bool malgreDoutes = false;         ///< works also where polylines have to stay that were to go
};

struct resultatAplatir {
  bilanPolylines2d bilan;
  bool retenu = false;  ///< nothing was made, for there are doubts
  base::Remarques remarques;
  std::wstring erreur;  ///< French, why nothing was made; empty on success
};

/// Makes what POL3DTOPOL2D makes, of the 3D polylines of model space, hidden ones included.
/// @return false with `erreur` set, nothing made, when there is nothing to do or a name is wrong
VELTORA_API bool aplatirPolylines(const demandeAplatir& demande, resultatAplatir& resultat);

}  // namespace veltora
