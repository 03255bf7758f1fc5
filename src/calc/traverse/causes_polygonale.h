#pragma once

#include "calc/traverse/cheminement.h"

#include <string>
#include <vector>

/// Why a traverse does not close: single mistakes are tried, and those are told with which it would close.
/// Nothing is applied. An angle that is wrong turns all that follows about its station, a distance moves it
/// along the leg, so that each row costs the same few operations (location of a single blunder: Wolf and
/// Ghilani, Elementary Surveying, "locating blunders in traverse observations").
namespace veltora {

struct causePolygonale {
  int ligne = 0;       ///< of the file, 0 for none
  std::wstring texte;  ///< French, without capital and full stop
};

struct causesPolygonale {
  static constexpr std::size_t kCitees = 3;

  std::vector<causePolygonale> meilleures;  ///< the likeliest first, `kCitees` at most
  int autres = 0;                           ///< how many more would close
  /// There is one alone, and it is not a row that is missing: that one, with an angle and a distance to
  /// choose, closes many a traverse with other mistakes.
  bool probable = false;
};

/// @param modeAngle  unit of the angles as read: 0 grades, 1 degres, 2 radians
/// @return nothing for what holds infinities or has fewer than two rows
causesPolygonale chercherCauses(const cheminement& mesure, int modeAngle,
                                const tolerancesPolygonale& tolerances);

}  // namespace veltora
