#pragma once

#include "base/remarque.h"
#include "calc/adjustment/modele_pondere.h"

namespace veltora {

/// Provisional coordinates of all points that measures join to given ones, and orientations of the rounds.
///
/// Rounds outwards from the given points, each point from all loci that lead to it: rays of oriented
/// stations, circles of distances, circles through two points seen under an angle (lieux.h tells where loci
/// meet). Among several places the one that all loci fit; where two fit alike the point waits for more. What
/// stays without coordinates is computed in frames of its own, each from one measured side, and fitted on two
/// known points, or one and the north, by a similarity.
/// Measures that name a point without coordinates are put aside (`ecarte`).
/// @param remarques  gets a doubt that names the points without coordinates and why
VELTORA_API void calculerDepart(reseauPondere& reseau, base::Remarques& remarques);

}  // namespace veltora
