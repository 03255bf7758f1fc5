#pragma once

#include "arx/ge/gepoint.h"
#include "stakeout/projet_implantation.h"

#include <string>
#include <vector>

/// The results of a job as lists.
namespace veltora {

class htmlDocument;

/// A station with its points in the order of the job; null for those that have none.
struct visees {
  const observationMiseEnStation* mise = nullptr;
  std::vector<const observationImplantation*> points;
};
/// One entry a station in the order of the job, then one for the points without station.
VELTORA_API std::vector<visees> viseesParStation(const projetImplantation& projet);

/// "%.4f", or nothing for `Z_ABSENT`.
std::wstring coteImplantation(double valeur);
/// Angle that the instrument reads, grades with four decimals; "g= %s" with the plain bearing when it is
/// unknown, "-" when neither exists.
VELTORA_API std::wstring celluleAngle(const observationMiseEnStation* mise,
                                      const observationImplantation& point);

/// The report: each station with its table, then the points without station.
VELTORA_API void rapportImplantation(const projetImplantation& projet, htmlDocument& document);
/// Writes the report to a file: the Word form for an extension of fewer than 3 characters or ".doc".
/// @return false with the reason, in French, in `erreur`
VELTORA_API bool exporterImplantation(const projetImplantation& projet, const std::wstring& chemin,
                                      const std::wstring& extension, std::wstring& erreur);

/// A text for people. @param modeAngle  0 grades, 1 degrees, 2 radians
VELTORA_API std::wstring texteImplantation(const projetImplantation& projet, int modeAngle);
/// Columns parted by semicolons, a header line, angles in grades.
VELTORA_API std::wstring csvImplantation(const projetImplantation& projet);

/// Draws the lists as tables into the current space. @param coin  upper left corner of the first
/// @param hauteur  of the texts  @return how many tables
VELTORA_API int dessinerTables(const projetImplantation& projet, const AcGePoint3d& coin, double hauteur);

}  // namespace veltora
