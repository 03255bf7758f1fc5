#pragma once

#include "base/remarque.h"
#include "core/leve_terrain.h"
#include "field/carnet_gsi.h"
#include "field/regles_gsi.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A field book as a survey to be computed. Here signs count, and each unit is what its number says, whatever
/// the table of sightings makes of them: grades, decimal degrees, degrees with minutes and seconds (D.MMSSs),
/// 6400 mils; metres and international feet (0.3048 m).
namespace veltora {

/// A station that the user names: it opens in front of the first pointing on this line or behind it.
struct stationNommee {
  int ligne = 1;  ///< of the file, from 1
  std::wstring nom;
  std::optional<double> hauteur;  ///< of the instrument
};

/// Reads rules for code blocks, a line each: `presence MOT`, `texte MOT TEXTE`, `code MOT`, `hauteur MOT`,
/// and behind each `sauf N` for the line of a run of blocks on which it does not fire; "*" begins a comment.
/// @return the rules; a line that is none is told in `remarques` as a doubt
VELTORA_API reglesCodesGSI lireReglesCodes(std::string_view octets, base::Remarques& remarques);
/// In force without a file: word 41 is "STATION", word 42 the name, word 43 the height of the instrument.
VELTORA_API reglesCodesGSI reglesUsuelles();

struct lectureLeve {
  leveTerrain leve;
  base::Remarques remarques;  ///< what was passed over or looks wrong
  std::size_t visees = 0;
};

/// Cuts the book into stations. One opens with a line of a name and words 84 to 86 or 88 without measures,
/// with another position of the station (84, 85) in a pointing, with a run of code blocks that meets the
/// rules, or where the user names it. A height of target or instrument that a line does not tell is the last
/// one told; at the target only from the same station.
/// @param regles  of code blocks
VELTORA_API lectureLeve lireLeveGSI(const carnetGSI& carnet, reglesCodesGSI regles,
                                    const std::vector<stationNommee>& nommees);

}  // namespace veltora
