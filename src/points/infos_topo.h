#pragma once

#include "points/projets_topo.h"

#include <cstddef>

/// Where the point tables live in a drawing: an xrecord in the extension dictionary of layer "0".
namespace veltora {

/// Installs the project of a drawing, which the caller owns.
/// @param sauvegarder  non-zero: the save message writes the project into the drawing; 0: an empty record
/// @param charger  non-zero: the project is filled from the drawing `db` (null: the working one). Stored data
/// that cannot be read leave a new project, and the user is told
VELTORA_API void setSrcInfosTopo(AcDbDatabase* db, projetsTopo* projets, int sauvegarder, int charger);
/// Replaces the stored data of the working drawing by an empty record.
VELTORA_API void purgeInfosTopo();
/// Writes the project into the working drawing, as the save message does.
/// @return 0 when something could not be written
int sauvegarderInfosTopo();
/// Fills the installed project from a drawing (null: the working one); nothing without a project.
void chargerInfosTopo(AcDbDatabase* db);

/// A number for what a save would store: another one as soon as a point or a table differs.
VELTORA_API std::size_t empreinteTables(const projetsTopo& projets);

/// What a drawing holds: no stored tables (or purged ones), tables, or something that cannot be read.
enum class lectureTables { kAucune, kLues, kIllisibles };

/// Replaces the tables of a project by those stored in a drawing (null: the working one), without a message.
/// Unless they could be read the project is a new one.
lectureTables lireTables(AcDbDatabase* db, projetsTopo& projets);

}  // namespace veltora
