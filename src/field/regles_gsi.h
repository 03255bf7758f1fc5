#pragma once

#include "field/mots_gsi.h"

#include <cstdint>
#include <string>
#include <vector>

/// Rules that recognise a station in a run of code blocks. As delivered there are none, and so no code block
/// makes a station; routines of one's own fill `regles`.
namespace veltora {

/// What one rule waits for.
struct regleCodeGSI {
  static constexpr std::uint32_t kPresence = 0;  ///< any word of the index
  static constexpr std::uint32_t kTexte = 1;     ///< this text, whatever its case
  static constexpr std::uint32_t kHauteur = 2;   ///< a height, in m, cm or mm
  static constexpr std::uint32_t kCode = 3;      ///< a text to keep

  std::uint32_t genre = kPresence;
  bool vu = false;
  std::string texte;
  std::string texteSecond;     ///< no reader
  std::uint32_t indexMot = 0;  ///< the words that it watches
  std::uint32_t ligne = 0;     ///< line of the run, from 1, on which it does not fire
};

struct reglesCodesGSI {
  bool hauteurLue = false;
  bool codeLu = false;
  std::string code;
  double hauteur = 0.0;  ///< metres, once `hauteurLue` is set
  std::vector<regleCodeGSI> regles;
};

/// The rules of the process, empty at start.
VELTORA_API reglesCodesGSI& getReglesCodesGSI();

/// Holds the words of a line of a run of code blocks against the rules. Texts are compared and kept in upper
/// case. A height from 0 to 2.99 stands as metres, from 3 to below 299 as centimetres, from 300 to below 2999
/// as millimetres; any other value is kept in `hauteur`, and `hauteurLue` stays as it is.
/// @param numeroLigne  of the line in the run, from 1
VELTORA_API void analyserCodesGSI(reglesCodesGSI& regles, std::uint32_t numeroLigne, const ligneGSI& mots);
/// True when a code was kept, no height was read and every rule of presence or text has been met.
VELTORA_API bool reglesCompletes(const reglesCodesGSI& regles);
/// Forgets what the rules have met; code, height and rules stay.
VELTORA_API void razReglesCodes(reglesCodesGSI& regles);

}  // namespace veltora
