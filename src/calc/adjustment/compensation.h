#pragma once

#include "calc/adjustment/modele_pondere.h"

#include <string>
#include <vector>

namespace veltora {

class systemePondere;

enum class robustesse { aucune, danoise, huber };

struct bilanPondere {
  int passes = 0;
  bool convergence = false;
  double somme = 0.0;                 ///< v^T P v
  std::vector<double> poidsRobustes;  ///< factor of each measure's weight, 1 without robust estimation
};

/// Gauss-Newton: steps of the linear system, each halved until the sum v^T P v does not grow. Moves the
/// points and orientations.
/// @return false when a pass gives no numbers or the datum is not defined, nothing moved then;
/// `systeme.mouvementsSansDatum()` tells how the network floats
/// @param pasSuffisant  metres and radians: a step below it is the last one; 0 for nothing that rounding
/// leaves
VELTORA_API bool compenser(reseauPondere& reseau, systemePondere& systeme, bilanPondere& bilan,
                           int passesMax = 60, double pasSuffisant = 0.0);

/// The same again with the weights of gross errors lowered until they stand: Huber's k/|w| above k = 2, or
/// the Danish method's exp(-(|w|/3)^2 + 1) above 3 (Kubik 1982, Krarup and Juhl), w the residual standardised
/// by the redundancy. From the result of `compenser`.
VELTORA_API bool compenserRobuste(reseauPondere& reseau, systemePondere& systeme, robustesse methode,
                                  bilanPondere& bilan);

}  // namespace veltora
