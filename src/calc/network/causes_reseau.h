#pragma once

#include "base/remarque.h"
#include "calc/network/reseau_moindres_carres.h"

namespace veltora {

/// Looks for what would explain an adjustment that fits badly, by computing the network anew: all angles in
/// another unit or turned the other way, columns exchanged, X and Y of the fixed points exchanged; else
/// single observations without which the others agree, with what the mistake seems to be. Nothing of it is
/// applied. Of a small network every observation is tried, of a large one those that the linear estimate
/// finds likeliest, so that the whole costs no more than a few adjustments.
/// @param reseau  adjusted, or left by passes that failed; without any computed point whole files only are
/// tried
/// @param remarques  gets a doubt for each cause that fits, at most three
void chercherCausesPlan(const reseauMoindresCarres& reseau, base::Remarques& remarques);
/// The same for the heights.
void chercherCausesAltitudes(const reseauMoindresCarres& reseau, base::Remarques& remarques);

}  // namespace veltora
