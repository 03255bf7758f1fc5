#pragma once

#include "arx/db/dbid.h"
#include "base/export.h"

#include <string>
#include <string_view>

class AcDbDatabase;

namespace veltora {

/// Name of the block that a block file defines: its name without folders and without its extension, whichever
/// separators the path has. Empty for a path that names no file.
VELTORA_API std::wstring nomBloc(std::wstring_view chemin);

/// The block definition of a block file in a drawing: the one of that name that the drawing has,
/// else read from the file, ".dwg" appended when the path does not end so, first as given and then
/// below the installation directory.
/// @param chemin  trimmed of blanks, tabs and ",;."; empty for "biblio\varnblk1.dwg"
/// @return the null id when no file can be read
VELTORA_API AcDbObjectId blocDuFichier(AcDbDatabase& db, std::wstring_view chemin);

}  // namespace veltora
