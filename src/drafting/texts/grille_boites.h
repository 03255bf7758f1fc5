#pragma once

#include "drafting/texts/superpositions.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace veltora {

/// Square cells over the plane, each of which knows the boxes that touch it. A box that would cover many
/// cells stands apart and is found everywhere.
class grilleBoites {
public:
  /// @param cote  side of a cell, drawing units; made 1 unless above 0 and finite
  /// @param nombre  of boxes; their indices lie below it
  grilleBoites(double cote, std::size_t nombre);
  void ajouter(std::size_t index, const boitePlane& boite);
  /// @param boite  as it was when added
  void enlever(std::size_t index, const boitePlane& boite);
  /// Every box that may have an area in common with this one, in ascending order. Valid until the next call.
  const std::vector<std::size_t>& autour(const boitePlane& boite);

private:
  struct cellules {
    std::int64_t x0, y0, x1, y1;
    [[nodiscard]] bool nombreuses() const;
  };
  [[nodiscard]] std::int64_t rang(double valeur) const;
  [[nodiscard]] cellules couvertes(const boitePlane& boite) const;
  std::vector<std::size_t>& cellule(std::int64_t x, std::int64_t y);

  double m_cote;
  std::unordered_map<std::uint64_t, std::vector<std::size_t>> m_cellules;
  std::vector<std::size_t> m_grandes;
  std::size_t m_nombre;
  std::vector<std::size_t> m_trouves;
};

}  // namespace veltora
