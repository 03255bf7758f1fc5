#pragma once

#include "base/export.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Columns of a list of coordinates: what they may hold, and the words by which users and titles name it.
namespace veltora {

enum class roleColonne { kIgnoree, kNumero, kX, kY, kZ, kCode, kObservation, kTable, kCourante };

/// What the user said of a list; the rest is found by looking at it.
struct optionsListe {
  std::vector<roleColonne> colonnes;  ///< in the order of the file; empty: found. Those behind are left out
  char separateur = '\0';             ///< ';', ',', '\t', or ' ' for blanks and tabs; 0: found
  char decimale = '\0';               ///< '.' or ','; 0: found
  bool codesTexte = false;            ///< codes are labels, also those that look like numbers

  [[nodiscard]] bool aucune() const {
    return colonnes.empty() && separateur == '\0' && decimale == '\0' && !codesTexte;
  }
};

/// The word of the options for a role: "numero", "x", "y", "z", "code", "obs", "table", "courante", "-".
VELTORA_API std::wstring nomRole(roleColonne role);
/// The words of a row of columns, joined by commas.
VELTORA_API std::wstring texteColonnes(const std::vector<roleColonne>& colonnes);
/// Reads such words, whatever their case. @return false, with a French reason, for an unknown word, for a
/// role that stands twice, and when x or y is missing
VELTORA_API bool lireColonnes(std::wstring_view texte, std::vector<roleColonne>& colonnes,
                              std::wstring& raison);
/// The options as the user would type them.
VELTORA_API std::wstring texteOptions(const optionsListe& options);

/// What the titles of a list say of its columns; what no title tells is `kIgnoree`. Case, accents and units
/// do not count ("X (m)", "Altitude [NGF]").
struct titresListe {
  std::vector<roleColonne> roles;
  int reconnus = 0;            ///< columns that a title gives a role
  bool geographiques = false;  ///< one of them is a longitude or a latitude
  std::vector<int> repetes;    ///< columns that claim a role which another one has, from 0
};
VELTORA_API titresListe lireTitres(const std::vector<std::wstring>& titres);

}  // namespace veltora
