#pragma once

#include "calc/adjustment/systeme_pondere.h"

#include <string>
#include <vector>

namespace veltora {

/// How a network floats: for each part that moves by itself its points and what they do, "A, B, C :
/// translation en X et en Y, rotation". Of motions that are no translation, rotation or scale: "déformation".
/// @param V  motions that nothing holds, a column each
/// @param faibles  or that hardly anything holds: what moves by a hundredth of the others stands
VELTORA_API std::vector<std::wstring> direMouvements(const reseauPondere& reseau,
                                                     const colonnesPonderees& colonnes,
                                                     const Eigen::MatrixXd& V, bool faibles = false);

}  // namespace veltora
