#pragma once

#include "base/remarque.h"
#include "terrain/terrain.h"

namespace veltora::terrain {

/// What a terrain is to be made of.
struct Sources {
  std::vector<AcGePoint3d> points;                ///< z exactly `Z_ABSENT` for none
  std::vector<std::vector<AcGePoint3d>> lignes;   ///< breaklines, their vertices are points too
  std::vector<std::vector<AcGePoint3d>> limites;  ///< outlines, closed by themselves; see `Modele`
  std::vector<std::array<AcGePoint3d, 3>>
      facettes;  ///< when there are any, of the others only the limits count
  double areteMaximale = 0.0;
  std::vector<std::wstring> reperes;  ///< names of the points, for messages; may be shorter than these
};

/// Makes a terrain, its faces included.
///
/// Of several vertices at one place (within `kMemeLieu` in the plane) the first stands. An outline whose
/// vertices all lie at the altitude 0 takes its altitudes from the terrain without it; another one is a
/// breakline too. What is left out is told, and as a doubt where it may be wrong: points without altitude,
/// two altitudes at one place, breaklines that cross at different altitudes, and altitudes or places far from
/// all others.
/// @param erreur  French, why there is none: fewer than three points, or all of them in a line
/// @return null with `erreur` set
std::unique_ptr<Terrain> fabriquer(const std::wstring& nom, const Sources& sources,
                                   base::Remarques& remarques, std::wstring& erreur);

inline constexpr double kMemeLieu = 1e-4;  ///< drawing units

}  // namespace veltora::terrain
