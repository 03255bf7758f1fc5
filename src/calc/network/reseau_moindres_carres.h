#pragma once

#include "calc/network/donnees_reseau.h"

#include <string>
#include <vector>

namespace veltora {

/// A network adjusted from angles, distances and height differences. Log lines are added behind "\r\n".
class VELTORA_API reseauMoindresCarres : public donneesReseau {
public:
  /// Norm of the last step of either solve: 0 when there was nothing to solve, -1e38 when the system was
  /// singular, not a number when a value of a pass was none, whereupon that pass moved nothing.
  double dernierPas = 0.0;
  /// Why `dernierPas` of the plan is not a number.
  arretPasse arret;

  /// One planimetric pass: with `premierPassage` first the reduction of observations and the provisional
  /// points.
  /// @return true when the step's norm was above 1e-8, so that another pass is wanted
  bool calculerPlani(std::wstring& journal, bool premierPassage);
  /// A further pass that nobody reads: no log, and a system that the sparse factorisation does not solve
  /// counts as singular.
  bool calculerPlaniEnSilence();
  /// The heights: provisional values, then one linear solve. @return true when it moved any height
  bool calculerAlti(std::wstring& journal);

  /// Usable unknown points that the observations leave undetermined together with others, with the
  /// singularity that rounding hides from the exact test of the solve.
  std::vector<int> pointsIndetermines();
};

struct bilanIteration {
  int passes = 0;            ///< behind the first one, which gives the provisional points
  bool convergence = false;  ///< the last step was small enough, or there was nothing to compute
  /// How far the passes carried a point from its provisional coordinates at most, and which one (-1: none).
  double deplacement = 0.0;
  int pointDeplace = -1;
};

/// The iteration of the button "Calculer X,Y": a first pass, then passes until one asks for no other, or 100.
/// @param journal gets the text of the last pass behind what it holds
/// @param premiere gets the text of the first pass; null for none
VELTORA_API bilanIteration iterer(reseauMoindresCarres& reseau, std::wstring& journal,
                                  std::wstring* premiere = nullptr);

}  // namespace veltora
