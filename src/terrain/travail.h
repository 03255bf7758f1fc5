#pragma once

#include "core/travail_terrain.h"
#include "terrain/fabrication.h"

class AcDbDatabase;

namespace veltora::terrain {

/// The work of one call: makes the terrain, keeps it, draws what is wanted. Nothing is changed when it fails,
/// or when there are doubts and the demand does not go on in spite of them.
bool travailler(AcDbDatabase& dessin, const DemandeTerrain& demande, ResultatTerrain& resultat);

/// What tells of a surface: number of faces, area in plan, range of altitudes of the ground.
void decrire(const Terrain& terrain, ResultatTerrain& resultat);

}  // namespace veltora::terrain
