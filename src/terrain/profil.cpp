#include "terrain/profil.h"

#include <cmath>

namespace veltora::terrain {
namespace {

bool memeLieu(const AcGePoint3d& a, const AcGePoint3d& b) { return a.x == b.x && a.y == b.y; }

/// What one segment of the line adds: it goes on where the stretch before it ended at their common vertex.
void ajouter(Profil& profil, const std::vector<AcGePoint3d>& piece, const AcGePoint3d& de,
             const AcGePoint3d& a, double avant) {
  const bool suite = !profil.empty() && memeLieu(piece.front(), de) &&
                     memeLieu(profil.back().back().point, de) && profil.back().back().surAxe;
  if (!suite) profil.emplace_back();
  for (std::size_t i = suite ? 1 : 0; i < piece.size(); ++i)
    profil.back().push_back({avant + std::hypot(piece[i].x - de.x, piece[i].y - de.y), piece[i],
                             memeLieu(piece[i], de) || memeLieu(piece[i], a)});
}

}  // namespace

Profil profilLeLong(const Triangulation& surface, const std::vector<AcGePoint3d>& axe) {
  Profil profil;
  double distance = 0.0;
  for (std::size_t i = 0; i + 1 < axe.size(); ++i) {
    for (const std::vector<AcGePoint3d>& piece : surface.chemin(axe[i], axe[i + 1]))
      ajouter(profil, piece, axe[i], axe[i + 1], distance);
    distance += std::hypot(axe[i + 1].x - axe[i].x, axe[i + 1].y - axe[i].y);
  }
  return profil;
}

}  // namespace veltora::terrain
