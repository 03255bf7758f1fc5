#pragma once

#include "terrain/triangulation.h"

namespace veltora::terrain {

/// A place of a profile.
struct SommetProfil {
  double distance = 0.0;  ///< in the plane along the line, from its beginning
  AcGePoint3d point;
  bool surAxe = false;  ///< a vertex of the line itself, else where it crosses an edge
};

/// The ground under a line: its stretches, in its direction.
using Profil = std::vector<std::vector<SommetProfil>>;

/// @param axe  vertices of the line; their altitudes do not count
Profil profilLeLong(const Triangulation& surface, const std::vector<AcGePoint3d>& axe);

}  // namespace veltora::terrain
