#pragma once

#include "stakeout/projet_implantation.h"

namespace veltora {

/// Draws a point's cross, name and coordinates by the option word. Nothing for one that is drawn already, or
/// without coordinates.
void dessinerPoint(observationImplantation& point, int options);
/// Draws a point's sight line and its text from its station, by the option word, unless they are there.
void dessinerVisee(observationImplantation& point, const observationMiseEnStation& station, int options);
/// Erases what was drawn for a point.
void effacerPoint(observationImplantation& point);

/// How a point is shown: not checked, or checked without a height; clear; blocked.
enum class verdictVisee { kNonVerifie, kVisible, kNonVisible };
VELTORA_API verdictVisee verdict(const observationImplantation& point);

/// Draws these points with their stations, by an option word; all points for null.
VELTORA_API void dessinerResultats(projetImplantation& projet, int options,
                                   const std::vector<std::uint32_t>* ids = nullptr);
/// Erases all that is drawn for the job.
VELTORA_API void effacerResultats(projetImplantation& projet);
/// Forgets all that is drawn for the job, which stays in the drawing.
VELTORA_API void oublierResultats(projetImplantation& projet);
/// Joins what is drawn to groups, by `groupement`.
VELTORA_API void grouperResultats(projetImplantation& projet);

}  // namespace veltora
