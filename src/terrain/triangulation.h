#pragma once

#include "arx/ge/gepoint.h"
#include "base/uncopyable.h"

#include <array>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace veltora::terrain {

/// Farthest from the origin that a coordinate may lie.
inline constexpr double kPlusLoin = 1e9;

/// Whether all of its coordinates are numbers within `kPlusLoin`.
bool estPlacable(const AcGePoint3d& point);

/// A triangle of the ground, counter-clockwise.
struct Face {
  std::array<int, 3> sommets{};
  std::array<int, 3> voisines{};     ///< across the edge in front of each corner; -1 where the ground ends
  std::array<bool, 3> contrainte{};  ///< whether that edge is part of a line
  bool sol = true;                   ///< false for what lies within the hull and is no ground
};

/// Polylines over the ground, as `tinExtractPath` fills them.
using Chemins = std::vector<std::vector<AcGePoint3d>>;

/// Points joined to faces in the plane: the constrained Delaunay triangulation, its predicates exact. All
/// that knows the library behind it stands in its source.
///
/// Lines that cross get a vertex there, at the mean of their altitudes; a vertex that lies within
/// `kSurLaLigne` of a line becomes part of it.
class Triangulation : private Uncopyable {
public:
  static constexpr double kSurLaLigne = 1e-4;  ///< drawing units

  /// @param points  no two of one place in the plane, all `estPlacable`, not all in a line: see `alignes`
  /// @param lignes  segments by the numbers of their ends
  Triangulation(const std::vector<AcGePoint3d>& points, const std::vector<std::pair<int, int>>& lignes);
  ~Triangulation();

  /// Whether no three of the points make a triangle.
  static bool alignes(const std::vector<AcGePoint3d>& points);

  /// The points, and behind them the crossings of lines.
  [[nodiscard]] const std::vector<AcGePoint3d>& sommets() const { return m_sommets; }
  [[nodiscard]] const std::vector<Face>& faces() const { return m_faces; }
  /// The points that lie on lines and end them not, which became part of them whatever their altitude.
  struct SurLigne {
    int de = 0;
    int a = 0;
    int sommet = 0;
    double part = 0.0;  ///< of the way from one end to the other
  };
  [[nodiscard]] const std::vector<SurLigne>& surLignes() const { return m_surLignes; }
  /// Takes faces out of the ground: those marked true, by number.
  void retirer(const std::vector<bool>& horsSol);

  /// Sets z from x and y, linear on the face. @return false, z as it was, where there is no ground
  bool altitude(AcGePoint3d& point) const;
  /// The ground along a segment, in its direction: each vertex is an end of the segment, or lies where it
  /// meets an edge. Empty where there is none, and for a segment without length.
  [[nodiscard]] Chemins chemin(const AcGePoint3d& de, const AcGePoint3d& a) const;

private:
  struct Interne;
  void insererLignes(const std::vector<std::pair<int, int>>& lignes);
  void numeroter();

  std::unique_ptr<Interne> m_interne;
  std::vector<AcGePoint3d> m_sommets;
  std::vector<Face> m_faces;
  std::vector<SurLigne> m_surLignes;
};

}  // namespace veltora::terrain
