#pragma once

#include "base/export.h"
#include "core/travail_terrain.h"
#include "jobs/lire_liste.h"

#include <filesystem>

/// A terrain made in one call, by the sibling module.
namespace veltora {

/// What terrain commands and calls say where the module is missing.
inline constexpr const wchar_t* kSansModuleTerrain =
    L"le module de terrain « QRAL-ARX2021-64BITS.arx » n'est pas chargé : il se trouve auprès du programme "
    L"lorsque celui-ci a été construit avec CGAL (paquet libcgal-dev)";

/// Makes a terrain in the working drawing, keeps it there, and draws what the demand asks for. The points of
/// a list serve the terrain only: none is placed.
/// @param liste  a list of coordinates; empty for what the drawing holds
/// @return false with `erreur` set, nothing made: no module, no drawing, a list that cannot be read, no such
/// layer, no terrain possible
VELTORA_API bool faireTerrain(const std::filesystem::path& liste, DemandeTerrain demande,
                              ResultatTerrain& resultat);

/// Runs a command of the sibling module by its name; without it a message says so.
void commandeTerrain(const wchar_t* nom);

}  // namespace veltora
