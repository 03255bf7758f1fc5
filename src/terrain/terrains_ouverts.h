#pragma once

#include "arx/db/dbid.h"
#include "terrain/terrain.h"

class AcDbDatabase;

/// The terrains of open drawings in memory, as their records tell them.
namespace veltora::terrain {

/// The terrains of a drawing, brought up to its records: behind U, a load or a change their list follows.
/// Records that cannot be read are passed over. What it points at lives until the drawing's records change.
TerrainsDuDessin& terrainsDe(AcDbDatabase& dessin);
/// The current one; null for none.
Terrain* terrainCourant(AcDbDatabase& dessin);
/// The record of a terrain of the list; null for none.
AcDbObjectId enregistrementDe(AcDbDatabase& dessin, const Terrain& terrain);
/// How many records of the drawing hold no terrain that can be read.
int illisibles(AcDbDatabase& dessin);

/// Adds a terrain to a drawing, in place of those of its name whatever the case, and makes it current.
/// @param remplaces  how many there were  @return null when the drawing refuses
Terrain* ajouter(AcDbDatabase& dessin, std::unique_ptr<Terrain> terrain, int& remplaces);

/// Lets go of what belongs to drawings that close, from now on.
void suivreLesDessins();
void oublierTout();

}  // namespace veltora::terrain
