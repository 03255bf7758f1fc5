#pragma once

#include "base/remarque.h"
#include "calc/network/reseau_moindres_carres.h"

/// What the surveyor must know of a network and its log does not say.
namespace veltora {

/// Whether there are height differences only: X and Y are then nobody's matter.
bool nivellementSeul(const donneesReseau& reseau);
/// What the observations themselves leave to doubt: sights of a point to itself, lengths that are none,
/// weights without effect, equivalent observations that were dropped.
void remarquerObservations(const reseauMoindresCarres& reseau, base::Remarques& remarques);
/// What became of the plan: iteration, points without coordinates and why, angles counted with a whole turn,
/// residuals that are too large, points that lie too far, and what would explain a bad fit. To be called
/// before the heights are computed.
void remarquerPlan(reseauMoindresCarres& reseau, const bilanIteration& bilan, base::Remarques& remarques);
/// Points without height, residuals that are too large and what would explain them. To be called behind the
/// computation of the heights.
void remarquerAltitudes(const reseauMoindresCarres& reseau, base::Remarques& remarques);

}  // namespace veltora
