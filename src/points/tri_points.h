#pragma once

#include "points/liste_points_du_dessin.h"

#include <vector>

namespace veltora {

/// Columns of a list of points.
enum class colonnePoints { kOrdre, kNumero, kX, kY, kZ, kCode };

/// Position of each point of a table, in array order, when it is sorted by a column, ascending; equal points
/// share one. Numbers of points go by `comparerNumeros`; absent altitudes come last.
VELTORA_API std::vector<int> rangsPoints(const listePointsDuDessin& table, colonnePoints colonne);

}  // namespace veltora
