#pragma once

#include "core/services_terrain.h"
#include "core/travail_terrain.h"

/// What the module exports, by these names; see core/services_terrain.h and core/travail_terrain.h.
extern "C" {
VELTORA_API void currDwgData(veltora::TerrainsDuDessin** donnees);
VELTORA_API int calcZPoint(veltora::Terrain* terrain, AcGePoint3d* point);
VELTORA_API int tinExtractPath(veltora::Terrain* terrain, const AcGePoint3d* from, const AcGePoint3d* to,
                               veltora::CheminsTerrain* out);
VELTORA_API int travailTerrain(const veltora::DemandeTerrain* demande, veltora::ResultatTerrain* resultat);
/// Runs one of its commands. @return 0 for another name
VELTORA_API int commandeTerrain(const wchar_t* nom);
}
