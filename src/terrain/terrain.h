#pragma once

#include "core/services_terrain.h"
#include "terrain/triangulation.h"

#include <string>

namespace veltora {
namespace terrain {

/// What a terrain is made of, as the drawing keeps it. Numbers name vertices.
struct Modele {
  std::wstring nom;
  std::vector<AcGePoint3d> sommets;  ///< as `Triangulation` wants them
  std::vector<std::pair<int, int>> lignes;
  /// Outlines in the plane, closed by themselves: ground is what lies within an odd number of them; none for
  /// no limit. Where they run over ground, lines run along them.
  std::vector<std::vector<AcGePoint2d>> limites;
  double areteMaximale = 0.0;  ///< a face with a longer edge, in the plane, is no ground; 0 for any length
  /// The faces of a terrain that was taken from a drawing: ground is what lies in one of them. Empty for a
  /// terrain whose faces are found.
  std::vector<std::array<int, 3>> facettes;
};

/// The segments that are edges of its faces: lines and the edges of faces taken over, each once.
std::vector<std::pair<int, int>> toutesLesLignes(const Modele& modele);

/// Whether its numbers name vertices, its lengths are none below 0, and its vertices can be joined to faces.
bool estValable(const Modele& modele);

}  // namespace terrain

/// One terrain of a drawing. Its faces are made at first use.
class Terrain {
public:
  explicit Terrain(terrain::Modele modele) : m_modele(std::move(modele)) {}
  [[nodiscard]] const terrain::Modele& modele() const { return m_modele; }
  [[nodiscard]] const terrain::Triangulation& surface() const;

private:
  terrain::Modele m_modele;
  mutable std::unique_ptr<terrain::Triangulation> m_surface;
};

}  // namespace veltora
