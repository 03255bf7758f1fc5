#pragma once

#include "arx/ge/gepoint.h"
#include "stakeout/params_implantation.h"
#include "stakeout/plan_implantation_auto.h"

#include <string>
#include <vector>

/// The results of a plan: lists as text, report and tables, and a picture of the sights. Angles in grades.
namespace veltora {

class htmlDocument;

/// For each station its head, its reference and a row a point; columns parted by tabs.
VELTORA_API std::wstring textePlan(const planImplantationAuto& plan);
/// The same as a report.
VELTORA_API void rapportPlan(const planImplantationAuto& plan, htmlDocument& document);
/// Columns parted by semicolons, a header line.
VELTORA_API std::wstring csvPlan(const planImplantationAuto& plan);
/// Writes the report, in its Word form for a name that ends in ".doc". @return as below
VELTORA_API bool ecrireRapportPlan(const planImplantationAuto& plan, const std::wstring& chemin,
                                   std::wstring& erreur);
/// Writes the report for a name that ends in ".htm", ".html" or ".doc", else the text, UTF-8. @return false
/// with the reason, in French, in `erreur`
VELTORA_API bool ecrirePlan(const planImplantationAuto& plan, const std::wstring& chemin,
                            std::wstring& erreur);

/// Draws the lists as tables into the current space of the working drawing.
/// @param coin  upper left corner of the first  @param hauteur  of the texts, above 0  @return how many
VELTORA_API int dessinerTablesPlan(const planImplantationAuto& plan, const AcGePoint3d& coin, double hauteur);
/// Draws the sights, each station in a colour of its own: an arrow at both ends of the line to the reference,
/// a line to each point with its distance and angle. Sizes are those of `reglagesImplantation`.
/// @param dessin  which of these, and how they are grouped; names and coordinates do not count
/// @return what was drawn
VELTORA_API std::vector<AcDbObjectId> schematiserPlan(const planImplantationAuto& plan,
                                                      const paramsDessinImplantation& dessin);

}  // namespace veltora
