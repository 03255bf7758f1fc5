#pragma once

#include "calc/adjustment/statistiques.h"

#include <vector>

/// The search for mistakes behind a weighted adjustment. Nothing is removed.
namespace veltora {

/// A measure that the others contradict.
struct mesureSuspecte {
  int mesure = -1;
  double w = 0.0;       ///< with those named before it left out
  double erreur = 0.0;  ///< its likely error, measured less right, radians or metres
  double m0Sans = 0.0;  ///< of the network without it and those before it
};

/// The risk of calling a good measure a mistake: 0.1 % for each, less in large networks, so that a good one
/// of 20 is told at most for all of them.
VELTORA_API double risqueMesure(std::size_t mesures);
/// The limit of |w| at that risk.
VELTORA_API double limiteW(std::size_t mesures);

/// Data snooping, one suspect at a time (Baarda 1968): the largest |w| beyond the limit, then the largest of
/// what is left without it, and so on. The residuals v and the cofactors Qv of the network without measure i
/// follow from c = Qv P e: v - c (e^T P v) / d and Qv - c c^T / d, with d = e^T P Qv P e.
/// @param statistiques  of all measures
VELTORA_API std::vector<mesureSuspecte> chercherMesuresFausses(
    const std::vector<statistiqueMesure>& statistiques, const systemePondere& systeme, double somme,
    int redondance, std::size_t nombreMax);

/// A fixed point that the measures want elsewhere.
struct connuSuspect {
  int point = -1;
  bool altitude = false;
  std::array<double, 3> ecart{};  ///< where it would lie, less where it is given; metres
  double test = 0.0;              ///< of the freed coordinates, over its limit
};
/// Frees the fixed points one by one: T = D^T Qd^-1 D of what each would move by, against the chi-square
/// limit at 0.1 % shared among the points. The worst first. Points whose freeing leaves the datum undefined
/// are passed over.
VELTORA_API std::vector<connuSuspect> libererConnus(const reseauPondere& reseau,
                                                    const systemePondere& systeme);

}  // namespace veltora
