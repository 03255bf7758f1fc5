#pragma once

#include "base/export.h"
#include "base/growable_array.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

/// The words of a field book in GSI form. A line is a run of words of one width; a word holds its index, four
/// information characters, a sign, 8 or 16 characters of data and a separator.
namespace veltora {

/// One decoded word.
struct motGSI {
  static constexpr std::uint8_t kNumerique = 2;
  static constexpr std::uint8_t kTexte = 3;

  static constexpr int kNom = 11;       ///< index of the point's name
  static constexpr int kBlocCode = 41;  ///< index that opens a code block

  std::uint8_t indexMot = 0;  ///< what the word tells: 11 name, 21 horizontal angle, 81 X ...
  std::uint8_t genre = kTexte;
  char infos[7] = {};   ///< the four information characters; the last one is the unit
  double valeur = 0.0;  ///< of a numeric word: metres or grades as a rule; see `decoderLigneGSI`
  char texte[17] = {};  ///< the data as read; in a text word leading "0" and "." are blanks
};

/// The words of one line, in its order.
using ligneGSI = base::CArray<motGSI>;

/// What outlives the lines of one file.
struct etatLectureGSI {
  static constexpr std::uint32_t kAucun = 0xFFFFFFFFu;
  std::uint32_t stationCourante = kAucun;  ///< the station that new sightings belong to
  std::uint32_t debutBlocCode = kAucun;    ///< line at which the run of code blocks began
};

/// Longest line that is looked at.
inline constexpr std::size_t kLigneGsiMax = 65535;

/// Where the parts of the words of a line lie, in characters. The line's first character alone decides.
struct formeGSI {
  static constexpr std::size_t kInfos = 2;
  static constexpr std::size_t kUnite = 5;
  static constexpr std::size_t kSigne = 6;
  static constexpr std::size_t kDonnees = 7;

  explicit formeGSI(std::string_view ligne) {
    if (!ligne.starts_with('*')) return;
    debut = 1;
    donnees = 16;
    mot = 24;
  }
  std::size_t debut = 0;    ///< of the first word
  std::size_t donnees = 8;  ///< width of the data
  std::size_t mot = 16;     ///< of a whole word, separator included
};

/// Whether the data of words of this index are a number: angles, distances, coordinates, heights.
VELTORA_API bool estNumeriqueGSI(int indexMot);

/// Decodes one line; what stands behind a zero byte or character `kLigneGsiMax` is not seen.
///
/// Metres are read with 3, 4 or 5 decimals (units 0, 6, 8), grades with 5 (2), degrees with 5 turned into
/// grades (3). Other units have rules of their own, told where they stand in the source.
/// @param ligne  in Windows-1252, without its end
/// @param mots  emptied first; what was decoded in front of a stop stays
/// @return 1 when the line ended cleanly, 0 when it stopped: at what is no word, or at a last word without
/// its separator
VELTORA_API int decoderLigneGSI(etatLectureGSI& etat, std::string_view ligne, ligneGSI& mots);

}  // namespace veltora
