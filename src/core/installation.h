#pragma once

#include "base/export.h"

#include <filesystem>
#include <string>
#include <string_view>

/// The installation directory (also called data folder): "config.ini", "defcodif", biblio/ and Cartouches/.
///
/// Texts of the system join paths with backslashes ("biblio\varnblk1.dwg"), and are kept, shown and stored
/// so. They become paths of this platform at one place only, `cheminPlateforme`, when a file is opened.
namespace veltora {

/// The first of these that exists or can be made, and can be written by the user; empty when there is none:
/// 1. the environment variable VELTORA_INSTALLATION;
/// 2. <program>/../share/veltora, when it stands there already;
/// 3. $XDG_DATA_HOME/veltora, else ~/.local/share/veltora.
/// When none can be written, folder 2 all the same if it is there: its blocks can be read.
/// It is found once. Sub-folders of the shipped data that folder 1 or 3 lacks are copied into it.
VELTORA_API std::filesystem::path dossierInstallation();
/// Another installation directory, for tests; an empty path has the rule applied anew at the next use.
VELTORA_API void setDossierInstallation(const std::filesystem::path& dossier);
/// Where the shipped data/ lies, told by the program; by default <program>/../share/veltora. May come after
/// the first use of the installation directory, which then receives what it lacks.
VELTORA_API void setDossierDonnees(const std::filesystem::path& dossier);

/// Path of a file below the installation directory, as the system writes it: the directory without its final
/// separators, "\", the sub-folder and "\" unless it is empty, then the file.
/// @return "\" and the rest when there is no installation directory
VELTORA_API std::wstring cheminInstallation(std::wstring_view fichier, std::wstring_view sousDossier = {});
/// A complete path as it is; any other name below the installation directory. A path is complete when it
/// holds a ":" or, as absolute paths here bear no drive, begins with "/".
VELTORA_API std::wstring completerChemin(std::wstring_view chemin);
/// The platform's form of a path in the system's texts: backslashes become "/".
VELTORA_API std::filesystem::path cheminPlateforme(std::wstring_view chemin);

}  // namespace veltora
