#pragma once

#include "arx/db/dbid.h"
#include "arx/db/dxftags.h"
#include "terrain/terrain.h"

#include <vector>

class AcDbDatabase;

/// Where the terrains live in a drawing: records of a dictionary below its named objects, in order of
/// creation. A record never changes; a terrain that is made anew is another record.
namespace veltora::terrain {

/// A terrain as groups of a record; `docs/formats.md` tells them.
DxfTagText ecrireModele(const Modele& modele);
/// Reads any groups. @return false for what is no terrain, or none that is `estValable`
bool lireModele(const DxfTagText& groupes, Modele& modele);

/// The records of a drawing's terrains, in order of creation.
std::vector<AcDbObjectId> enregistrements(AcDbDatabase& dessin);
/// The record of the current one; null for none.
AcDbObjectId enregistrementCourant(AcDbDatabase& dessin);

/// Adds a terrain and makes it current. @return null when the drawing refuses
AcDbObjectId enregistrer(AcDbDatabase& dessin, const Modele& modele);
/// @return false when the drawing refuses, or has no such record
bool rendreCourant(AcDbDatabase& dessin, AcDbObjectId enregistrement);
/// Takes a terrain out of the drawing; behind the current one the last that remains becomes current.
bool supprimer(AcDbDatabase& dessin, AcDbObjectId enregistrement);

}  // namespace veltora::terrain
