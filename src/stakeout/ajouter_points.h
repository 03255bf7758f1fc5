#pragma once

#include "core/services_terrain.h"
#include "stakeout/projet_implantation.h"

#include <optional>

/// Points on their way into a job.
namespace veltora {

/// Adds a point: its name from the numbering, its altitude from the terrain where there is one.
VELTORA_API void ajouterPointImplantation(projetImplantation& projet, const ServicesTerrain& terrain,
                                          double x, double y);
/// Adds the points of an element that are not there yet, then moves on the group.
/// @return how many; nothing when the entity does not open, or its steps would give more than a million
VELTORA_API std::optional<int> ajouterElement(projetImplantation& projet, const ServicesTerrain& terrain,
                                              const AcDbObjectId& element);
/// Moves on the group of selection, and the prefix when asked.
VELTORA_API void finirGroupe(projetImplantation& projet);

/// The loop behind "Ajouter": elements and single points, until the user leaves it.
VELTORA_API void saisirPoints(projetImplantation& projet);

}  // namespace veltora
