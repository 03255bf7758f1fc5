#pragma once

#include "stakeout/projet_implantation.h"

#include <string>
#include <vector>

/// The prompts that give points a station and an orientation.
namespace veltora {

using selectionPoints = std::vector<std::uint32_t>;

/// The loop behind "Mise en station": stations and references for the selection until the user leaves it.
/// What was drawn is erased at the end.
VELTORA_API void mettreEnStation(projetImplantation& projet, selectionPoints selection);

/// How a prompt of the loop ended.
enum class suiteStation { kQuitter = -1, kStation = 1, kReference = 2 };
/// @param selection  may be replaced  @param nom, position  of the station on `kReference`
suiteStation choisirStation(projetImplantation& projet, selectionPoints& selection, AcString& nom,
                            AcGePoint3d& position);
/// Stations the selection, checks its sights and draws it. @return `kStation` also when it is done
suiteStation choisirReference(projetImplantation& projet, const selectionPoints& selection,
                              const unPoint& station);

enum class modeOrientation { kNord = 1, kReference = 2, kPosition = 3, kVersPosition = 4 };
/// Makes a station, gives it to the job and draws it.
/// @param nomRef, position  of the reference; `kNord` needs none, `kVersPosition` turns the circle's zero to
/// the position
/// @return its `idMise`; all bits for another mode
VELTORA_API std::uint32_t creerMiseEnStation(projetImplantation& projet, const unPoint& station,
                                             const AcString& nomRef, const AcGePoint3d& position,
                                             modeOrientation mode);

}  // namespace veltora
