#pragma once

#include "arx/adesk.h"
#include "arx/db/dbobject.h"
#include "base/export.h"

#include <cstdint>
#include <optional>

/// The extended data by which the entities of a stake-out are known again.
namespace veltora {

inline constexpr const ACHAR* kXDataImplantation = L"VARN_IMPLANTATION";
inline constexpr const ACHAR* kXDataObstacles = L"VARN_HAUTEURSOBJETS";

/// What an entity was drawn for: the first value of its mark.
enum class marqueImplantation : std::int32_t { kPoint = 14241, kStation = 12482 };

/// Registers both applications in the working drawing, where they are not yet.
void inscrireApplicationsImplantation();

/// Marks an entity that is open for writing. @param id  of the point, or `idMise` of the station
Acad::ErrorStatus marquerImplantation(AcDbObject& entite, marqueImplantation genre, std::uint32_t id);
/// The point's identifier that an entity bears; nothing for one that was not drawn for a point.
VELTORA_API std::optional<std::uint32_t> pointMarque(const AcDbObject& entite);

}  // namespace veltora
