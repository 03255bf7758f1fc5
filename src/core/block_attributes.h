#pragma once

#include "arx/adesk.h"
#include "arx/db/dbid.h"

#include <span>

class AcDbAttribute;
class AcDbBlockReference;

namespace veltora {

/// Text of the first attribute with this tag, ignoring case.
/// @return 0, `valeur` unchanged, when there is none
VELTORA_API int lireAttribut(const AcDbBlockReference& bloc, const AcString& etiquette, AcString& valeur);

struct valeurAttribut {
  AcString etiquette;
  AcString valeur;
};

/// Sets every attribute for each pair whose tag matches, ignoring case: the later of two pairs wins.
/// @return number of settings, the overwritten ones included
VELTORA_API int ecrireAttributs(const AcDbBlockReference& bloc, std::span<const valeurAttribut> valeurs);
/// The same for one pair on an object that is exactly a block reference.
/// @return number of settings, 0 for another
VELTORA_API int ecrireAttribut(const AcDbObjectId& id, const AcString& etiquette, const AcString& valeur);

/// Gives a reference that has none, open for writing in its drawing, the attributes that its block defines,
/// with their default texts; constant ones belong to the block.
VELTORA_API void ajouterAttributs(AcDbBlockReference& bloc);

/// Shows or hides an attribute, open for writing, as a whole: its own flag and the entity's.
VELTORA_API void montrerAttribut(AcDbAttribute& attribut, bool visible);

}  // namespace veltora
