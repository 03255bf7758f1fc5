#pragma once

#include "base/export.h"
#include "base/growable_array.h"
#include "calc/network/reseau_moindres_carres.h"

#include <string>
#include <string_view>

namespace veltora {

/// The control points of the sheet "Calculs topométriques": one array for the whole program, kept from one
/// opening of the sheet to the next.
VELTORA_API base::CArray<pointACalculer>& canevas();

/// One point as typed. A coordinate that is no number, such as ".", is absent.
struct saisieCanevas {
  std::wstring nom;
  std::wstring x, y, z, vo;
};

/// Replaces the coordinates of the point of that name, whatever its case, or appends one. A blank name does
/// nothing.
VELTORA_API void placerDansCanevas(const saisieCanevas& saisie);
/// Reads lines `Nom X Y Z` and optionally `Vo`, split like those of data files. Lines of fewer tokens are
/// passed over; without `Vo` a point that exists keeps its own.
VELTORA_API void importerCanevas(std::wstring_view texte);
/// "%.4f", "." for an absent value.
VELTORA_API std::wstring texteCanevas(double valeur);

}  // namespace veltora
