#pragma once

#include "base/export.h"

#include <string>

namespace veltora {

struct reseauCompense;

/// Layers of a drawn network, and what stands on them.
namespace calquesReseau {
inline constexpr const wchar_t* kEllipses = L"RESEAU_ELLIPSES_95";
inline constexpr const wchar_t* kStandard = L"RESEAU_ELLIPSES";
inline constexpr const wchar_t* kBonnes = L"RESEAU_MESURES";  ///< |w| up to 2, green
inline constexpr const wchar_t* kLimites =
    L"RESEAU_MESURES_LIMITES";  ///< up to the limit of the test, orange
inline constexpr const wchar_t* kSuspectes = L"RESEAU_MESURES_SUSPECTES";         ///< beyond it, red
inline constexpr const wchar_t* kSansControle = L"RESEAU_MESURES_SANS_CONTROLE";  ///< no redundancy, grey
}  // namespace calquesReseau

/// A round scale at which the largest ellipse for 95 % takes about a tenth of the mean side; 1 without plan.
VELTORA_API double echelleDesEllipses(const reseauCompense& resultat);

/// Draws lines of the measured sides, coloured by the largest |w| of their measures, and the ellipses of the
/// computed points, standard and 95 %, into model space of the working drawing.
/// @param echelle  by which ellipses are enlarged, above 0
/// @return empty, or why nothing was drawn: no drawing, a locked layer
VELTORA_API std::wstring dessinerReseau(const reseauCompense& resultat, double echelle);

}  // namespace veltora
