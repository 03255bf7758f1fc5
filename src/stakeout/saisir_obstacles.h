#pragma once

#include "stakeout/projet_implantation.h"

namespace veltora {

/// The loop behind "Gérer obstacles": marks curves and blocks of the drawing as obstacles of a height, and
/// takes marks away, until the user leaves it. Heights and radius last for the process.
VELTORA_API void saisirObstacles(projetImplantation& projet);

}  // namespace veltora
