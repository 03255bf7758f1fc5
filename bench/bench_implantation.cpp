// Stake-out along clothoids: points from the elements, their lists, their drawing.

#include "arx/db/dbmain.h"
#include "arx/db/dbpl.h"
#include "core/drawing_space.h"
#include "core/resbuf_serializer.h"
#include "drafting/clothoids/clothoide_donnees.h"
#include "drafting/clothoids/clothoide_parcours.h"
#include "mesure.h"
#include "stakeout/ajouter_points.h"
#include "stakeout/dessin_implantation.h"
#include "stakeout/listes_implantation.h"
#include "stakeout/saisir_station.h"

#include <cmath>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

using namespace veltora;

constexpr double kX = 650000.0;
constexpr double kY = 6860000.0;
constexpr double kLength = 99.5;  // 100 points at a step of 1, and the end

/// Polylines that bear clothoids, in rows beside each other.
std::vector<AcDbObjectId> drawClothoids(int count) {
  std::vector<AcDbObjectId> ids;
  for (int i = 0; i < count; ++i) {
    clothoide curve;
    curve.endParam = kLength - 1.0;
    curve.paramA = 120.0;
    curve.setOffset({kX + 200.0 * (i % 40), kY + 50.0 * (i / 40)});
    curve.setAngleRot(0.3);
    auto polyline = std::make_unique<AcDbPolyline>(64U);
    for (const double s : echantillonner(curve, 0.001, 0.5))
      polyline->addVertexAt(polyline->numVerts(), curve.pointEn(curve.startParam + s));
    const chaineResbuf data(xDataClothoide(curve));
    DrawingSpace space;
    AcDbPolyline* const placed = space.addOpen(std::move(polyline));
    placed->setXData(data.tete);
    ids.push_back(placed->objectId());
    placed->close();
  }
  return ids;
}

void run(Mesure& mesure, int curves) {
  AcDbDatabase drawing;
  acdbHostApplicationServices()->setWorkingDatabase(&drawing);
  const std::vector<AcDbObjectId> ids = drawClothoids(curves);
  const int points = curves * 100;
  {
    projetImplantation job;
    job.dessin.numeros = 0;
    job.params.distClothoides = 1.0;
    const ServicesTerrain terrain;
    mesure("points along clothoids", points, [&] {
      for (const AcDbObjectId& id : ids) ajouterElement(job, terrain, id);
    });
    if (job.points.GetSize() != points) std::exit(1);
    uneStationReference station;
    station.x = kX - 100.0;
    station.y = kY - 100.0;
    const std::uint32_t mise =
        creerMiseEnStation(job, station, L"R", {kX, kY, 0.0}, modeOrientation::kReference);
    for (observationImplantation& point : job.points) point.idStation = mise;
    std::size_t characters = 0;
    mesure("list as text", points, [&] { characters = texteImplantation(job, 0).size(); });
    mesure("list as columns", points, [&] { characters += csvImplantation(job).size(); });
    if (characters < static_cast<std::size_t>(points) * 100) std::exit(1);
    mesure("drawn, grouped", points, [&] {
      job.dessin.numeros = 1;
      dessinerResultats(job, job.dessin.options());
      grouperResultats(job);
    });
    mesure("tables", points, [&] {
      if (dessinerTables(job, {}, 1.0) != (points + 49999) / 50000) std::exit(1);
    });
    oublierResultats(job);
  }
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
}

}  // namespace

int main() {
  Mesure mesure;
  for (const int curves : {10, 100, 1000}) run(mesure, curves);
  return 0;
}
