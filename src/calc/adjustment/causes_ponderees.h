#pragma once

namespace veltora {

struct reseauCompense;

/// What would explain a network that fits badly as a whole: angles in another unit or turned the other way,
/// distances in feet, millimetres or kilometres, X and Y of the given points exchanged. Each is tried by an
/// adjustment of a copy; what makes m0 many times smaller, or lets all
/// measures count where some are put aside, is told as a doubt. Nothing is applied. Networks
/// above some thousand measures are not tried.
void chercherCausesPonderees(reseauCompense& resultat);

}  // namespace veltora
