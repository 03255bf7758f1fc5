#pragma once

#include "calc/adjustment/reseau_compense.h"

#include <string>
#include <vector>

/// The result of a weighted adjustment as tables of text and as JSON.
namespace veltora {

/// What was counted in: measures, standard deviations by kind where they served, datum, m0 and its test.
VELTORA_API std::vector<std::wstring> lignesBilan(const reseauCompense& resultat);
/// Of the computed points: coordinates in metres, standard deviations in mm, half axes of the standard
/// ellipse and of that for 95 % in mm, bearing in grades.
VELTORA_API std::vector<std::wstring> lignesPoints(const reseauCompense& resultat);
/// "limites |w| 3.29, |tau| 2.68" at the risk of the search for mistakes; without redundancy, empty.
VELTORA_API std::wstring texteLimites(const reseauCompense& r);
/// Of the measures, the largest |w| first.
/// @param nombre  how many at most
VELTORA_API std::vector<std::wstring> lignesMesures(const reseauCompense& resultat, std::size_t nombre);
/// Relative ellipses; those that were asked for only, or all.
VELTORA_API std::vector<std::wstring> lignesPaires(const reseauCompense& resultat, bool toutes);

/// `m0`, `redondance`, `points` (name to x, y, z, sx, sy, sz, a, b in metres and gisement in grades, standard
/// deviations with m0 a posteriori; null for what there is not) and `observations` (grades and metres).
VELTORA_API std::string jsonCompense(const reseauCompense& resultat);

}  // namespace veltora
