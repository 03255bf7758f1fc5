#pragma once

#include "base/remarque.h"
#include "calc/network/controle_reseau.h"
#include "calc/network/reseau_moindres_carres.h"

namespace veltora {

/// Looks for what would explain an adjustment that fits badly, by computing the network anew: all angles in
/// another unit or turned the other way, columns exchanged, X and Y of the fixed points exchanged; else
/// single observations without which the others agree, with what the mistake seems to be. Nothing of it is
/// applied.
/// @param reseau  adjusted, or left by passes that failed; without any computed point whole files only are
/// tried
/// @param suspects  residuals to be doubted; none when the passes failed
/// @param remarques  gets a doubt for each cause that fits, at most three
void chercherCausesPlan(const reseauMoindresCarres& reseau, const std::vector<residuSuspect>& suspects,
                        base::Remarques& remarques);
/// The same for the heights.
void chercherCausesAltitudes(const reseauMoindresCarres& reseau, const std::vector<residuSuspect>& suspects,
                             base::Remarques& remarques);

}  // namespace veltora
