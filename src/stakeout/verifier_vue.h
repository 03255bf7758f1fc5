#pragma once

#include "core/services_terrain.h"
#include "stakeout/projet_implantation.h"

namespace veltora {

/// Checks one sight against the ground and the obstacles: sets `visibiliteCalculee` and `hauteurRequise`, and
/// the point's altitude when it is unknown. Where the terrain does not reach, the point stays unchecked.
/// @param hauteurStation  above the ground, drawing units
VELTORA_API void verifierVue(observationImplantation& point, const observationMiseEnStation& station,
                             const ServicesTerrain& terrain,
                             const base::CArray<obstacleImplantation*>& obstacles, double hauteurStation);

/// Checks the sights of these points, of all for null, as the job's `verifierVisibilite` says. Without a
/// terrain nothing happens.
VELTORA_API void verifierVisibilites(projetImplantation& projet,
                                     const std::vector<std::uint32_t>* ids = nullptr);

}  // namespace veltora
