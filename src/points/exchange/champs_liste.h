#pragma once

#include "base/export.h"

#include <string_view>
#include <vector>

/// The fields of one line of a list of coordinates, and the numbers in them.
namespace veltora {

/// A field, without the blanks around it and without its quotes.
struct champListe {
  std::string_view texte;        ///< bytes of the line
  bool entreGuillemets = false;  ///< "" stands for a quote within it
};

/// Cuts a line into its fields. A field that begins with a double quote runs to the next one; a quote that
/// nothing closes is a character like others.
/// @param separateur  ' ' for any number of blanks and tabs, then no field is empty but between quotes; else
/// each one parts two fields
VELTORA_API void decouperLigne(std::string_view ligne, char separateur, std::vector<champListe>& champs);

/// A number as people and spreadsheets write it: sign, digits, decimals, exponent; thousands may be parted by
/// blanks (hard ones too), by apostrophes, or by the sign that is not the decimal one when it cannot be meant
/// for one ("1,234.5", "1.234.567").
/// @param texte  UTF-8 or Windows-1252  @param decimale  '.' or ','
/// @return false, `valeur` unchanged, when the whole text is no such number, or it is not finite
VELTORA_API bool lireNombre(std::string_view texte, char decimale, double& valeur);

}  // namespace veltora
