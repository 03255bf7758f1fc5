#pragma once

#include "base/export.h"

namespace veltora {

class htmlDocument;
class htmlTable;

/// The five classes that every report uses: ".petit", ".grand", ".titre", ".celnorm", ".celgris".
VELTORA_API void ajouterPrologue(htmlDocument& document);
/// Sets up the one table object of a report: centred, no border, no padding, no spacing.
VELTORA_API void preparerTable(htmlTable& table);

/// Attribute texts of cells and paragraphs, spelled as every report spells them.
namespace attributs {
inline constexpr const char* kGrand = "CLASS=grand";
inline constexpr const char* kTitreMaj = "CLASS=titre";
inline constexpr const char* kTitre = "class=titre";
inline constexpr const char* kPetitMaj = "CLASS=petit";
inline constexpr const char* kPetit = "class=petit";
inline constexpr const char* kGrisMaj = "CLASS=celgris";
inline constexpr const char* kGrisCentre = "class=celgris align=center";
inline constexpr const char* kNombre = "class=celnorm align=right";
inline constexpr const char* kTexte = "class=celnorm align='left'";
inline constexpr const char* kCentre = "class=celnorm align='center'";
inline constexpr const char* kQuatreColonnes = "colspan=4";
}  // namespace attributs

}  // namespace veltora
