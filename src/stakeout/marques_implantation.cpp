#include "stakeout/marques_implantation.h"

#include "arx/db/dbservices.h"
#include "arx/db/resbuf.h"
#include "core/resbuf_serializer.h"

namespace veltora {

void inscrireApplicationsImplantation() {
  acdbRegApp(kXDataImplantation);
  acdbRegApp(kXDataObstacles);
}

Acad::ErrorStatus marquerImplantation(AcDbObject& entite, marqueImplantation genre, std::uint32_t id) {
  const chaineResbuf marque(acutBuildList(1001, kXDataImplantation, 1071, static_cast<std::int32_t>(genre),
                                          1071, static_cast<std::int32_t>(id), RTNONE));
  return entite.setXData(marque.tete);
}

std::optional<std::uint32_t> pointMarque(const AcDbObject& entite) {
  const chaineResbuf marque(entite.xData(kXDataImplantation));
  const resbuf* const genre = marque.tete ? marque.tete->rbnext : nullptr;
  const resbuf* const id = genre ? genre->rbnext : nullptr;
  if (!id || genre->restype != 1071 || id->restype != 1071 ||
      genre->resval.rlong != static_cast<std::int32_t>(marqueImplantation::kPoint))
    return std::nullopt;
  return static_cast<std::uint32_t>(id->resval.rlong);
}

}  // namespace veltora
