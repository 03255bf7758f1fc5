#pragma once

#include "base/export.h"

#include <functional>
#include <vector>

namespace veltora {

/// A box with sides along the axes: its lower left corner and its size, drawing units.
struct boitePlane {
  double x = 0.0;
  double y = 0.0;
  double largeur = 0.0;
  double hauteur = 0.0;
};

/// The area that two boxes have in common.
VELTORA_API double surfaceCommune(const boitePlane& a, const boitePlane& b);

/// One annotation whose box may cover others. A fixed one is only an obstacle.
struct annotationPlane {
  boitePlane boite;
  double ancreX = 0.0;  ///< around which it is placed: the block's position
  double ancreY = 0.0;
  double rayon = 0.0;  ///< distance of the eight places from the anchor
  bool fixe = false;
  bool deplacee = false;  ///< result: it has found a better place
};

/// Told before each annotation is placed: the iteration from 1, the annotation among the movable ones from 1,
/// their number. @return false to stop, with what has been placed so far
using suiviSuperpositions = std::function<bool(int iteration, int element, int nombre)>;
/// Told after each iteration: the area still in common.
using bilanSuperpositions = std::function<void(double surface)>;

enum class rechercheVoisins { kIndex, kToutes };

/// Moves annotations to the one of eight places around their anchor where they cover the others least, again
/// and again until nothing is covered, the sum no longer falls, or 50 iterations are done. Of equal places
/// the earliest wins, and the present one wins against any that is not strictly better.
/// @param recherche  how the neighbours of a box are found; the results are the same to the last digit
VELTORA_API void reduireSuperpositions(std::vector<annotationPlane>& annotations,
                                       const suiviSuperpositions& suivi, const bilanSuperpositions& bilan,
                                       rechercheVoisins recherche = rechercheVoisins::kIndex);

}  // namespace veltora
