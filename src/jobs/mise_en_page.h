#pragma once

#include "arx/plot/pllayout.h"
#include "jobs/rendre.h"

#include <optional>

namespace veltora {

/// How the drawing lies on its paper.
struct miseEnPage {
  AcPlView vue;
  std::optional<AcPlLayout> presentation;  ///< what is drawn; none for model space
};

/// Chooses paper and scale: by a sheet or a layout, by the window, or by what is to be seen.
/// @return false with the reason in `resultat.erreur`
bool mettreEnPage(AcDbDatabase& dessin, const demandeRendu& demande, miseEnPage& mise,
                  resultatRendu& resultat);

}  // namespace veltora
