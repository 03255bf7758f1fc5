// Legends and polylines: the legend of a drawing with many blocks and references, 3D polylines laid flat, a
// polyline drawn through points near it, references copied and taken apart, points pulled to ends.

#include "arx/db/dballents.h"
#include "arx/db/dbclone.h"
#include "arx/db/dbexplode.h"
#include "arx/db/dbmain.h"
#include "arx/ed/edsnap.h"
#include "codes/legend/description_bloc.h"
#include "codes/legend/legende.h"
#include "drafting/polylines/polylines_2d.h"
#include "drafting/polylines/projeter_polyligne.h"
#include "mesure.h"

#include <cmath>
#include <cstdlib>
#include <memory>

namespace {

using namespace veltora;

void expect(bool right, const char* what) {
  if (right) return;
  std::fprintf(stderr, "%s failed\n", what);
  std::exit(1);
}

/// A drawing that is the working one, with what is done to it in one undo step.
struct Drawing {
  Drawing() {
    acdbHostApplicationServices()->setWorkingDatabase(&database);
    database.undoLog().begin(L"BENCH");
  }
  ~Drawing() { acdbHostApplicationServices()->setWorkingDatabase(nullptr); }
  Drawing(const Drawing&) = delete;
  Drawing& operator=(const Drawing&) = delete;
  AcDbDatabase database;
};

AcDbObjectId append(AcDbBlockTableRecord& space, AcDbEntity* entity) {
  AcDbObjectId id;
  expect(space.appendAcDbEntity(id, entity) == Acad::eOk, "entity");
  entity->close();
  return id;
}

/// A hundred references to each block, on a grid.
std::vector<AcDbObjectId> makeReferences(AcDbDatabase& database, int blocks) {
  std::vector<AcDbObjectId> references;
  for (int i = 0; i < blocks; ++i) {
    const AcDbObjectId id = database.recordOf("BLOCK_RECORD", L"B" + std::to_wstring(i));
    const AcDbObjectPointer<AcDbBlockTableRecord> block(id, AcDb::kForWrite);
    append(*block, new AcDbLine({0, 0, 0}, {1.0 + i % 7, 2, 0}));
    append(*block, new AcDbCircle({0, 0, 0}, AcGeVector3d::kZAxis, 0.5));
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
    for (int k = 0; k < 100; ++k)
      references.push_back(
          append(*space, new AcDbBlockReference({650000.0 + 10 * k, 6860000.0 + 10 * i, 0}, id)));
  }
  return references;
}

void legend(Mesure& measure, int blocks) {
  Drawing drawing;
  makeReferences(drawing.database, blocks);
  std::vector<ligneLegende> lines;
  measure("legend: list, by references", blocks * 100, [&] {
    for (infoBlocks& block : listerBlocs()) {
      std::wstring text = descriptionBloc(block.idBlock);
      lines.push_back({std::move(block), std::move(text)});
    }
  });
  expect(lines.size() == static_cast<std::size_t>(blocks) && lines.back().bloc.occurrences == 100, "list");
  demandeLegende demand;
  demand.legendeLayers = demand.grouper = true;
  measure("legend: draw, by blocks", blocks, [&] { dessinerLegende(lines, demand, {0, 0}); });
}

void flatten(Mesure& measure, int n) {
  Drawing drawing;
  std::vector<AcDbObjectId> sources;
  {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.database.modelSpaceId(), AcDb::kForWrite);
    for (int i = 0; i < n; ++i) {
      auto* polyline = new AcDb3dPolyline;
      expect(space->appendAcDbEntity(polyline) == Acad::eOk, "polyline");
      for (int k = 0; k < 10; ++k) {
        AcDbObjectId id;
        auto* vertex = new AcDb3dPolylineVertex({650000.0 + 10 * k, 6860000.0 + i, 100.0 + k});
        expect(polyline->appendVertex(id, vertex) == Acad::eOk, "vertex");
        vertex->close();
      }
      sources.push_back(polyline->objectId());
      polyline->close();
    }
  }
  demandePolylines2d demand;
  demand.modeAltitude = demandePolylines2d::kMoyenne;
  demand.modeleLayer = L"{LAYER}-2D";
  demand.supprimerOriginales = true;
  measure("3D polylines of 10 vertices flat", n,
          [&] { expect(convertirPolylines3d(sources, demand).creees == n, "flat"); });
}

/// @param n  points near a polyline of a tenth of so many vertices
void project(Mesure& measure, int n) {
  Drawing drawing;
  const int vertices = n / 10;
  auto* polyline = new AcDbPolyline(static_cast<unsigned int>(vertices));
  for (int i = 0; i < vertices; ++i)
    polyline->addVertexAt(polyline->numVerts(), {650000.0 + 10 * i, 6860000.0 + 20 * std::sin(0.01 * i)});
  std::vector<AcGePoint2d> points;
  for (int i = 0; i < n; ++i) {  // in no order of the curve
    const double x = std::fmod(7919.0 * i, 10.0 * (vertices - 1)) + 0.0001 * i / n;
    points.emplace_back(650000.0 + x, 6860000.0 + 20 * std::sin(0.001 * x) + 0.5 * std::cos(i));
  }
  {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.database.modelSpaceId(), AcDb::kForWrite);
    expect(space->appendAcDbEntity(polyline) == Acad::eOk, "polyline");
  }
  int kept = 0;
  measure("projpoly, vertices: a tenth", n, [&] { kept = projeterPolyligne(*polyline, points, 2.0); });
  expect(kept > n / 2, "projection");
  polyline->close();
}

void edit(Mesure& measure, int blocks) {
  Drawing drawing;
  const std::vector<AcDbObjectId> references = makeReferences(drawing.database, blocks);
  const int n = static_cast<int>(references.size());
  const std::vector<AcEdSnap> snaps = {AcEdSnap::kEnd, AcEdSnap::kIntersection};
  measure("snap to ends at each reference", n, [&] {
    for (int i = 0; i < n; ++i)
      expect(acedSnap(drawing.database, snaps,
                      {650000.0 + 10 * (i % 100) + 0.1, 6860000.0 + 10 * (i / 100), 0}, 0.5, {})
                 .has_value(),
             "snap");
  });
  measure("copy references", n, [&] { expect(acdbCopyEntities(references).back().isLive(), "copy"); });
  measure("explode references", n, [&] {
    std::vector<AcDbObjectId> parts;
    for (const AcDbObjectId id : references) expect(acdbExplode(id, parts) == Acad::eOk, "explode");
  });
}

}  // namespace

int main() {
  Mesure measure;
  for (const int blocks : {1250, 2500, 5000}) legend(measure, blocks);
  for (const int n : {25000, 50000, 100000}) flatten(measure, n);
  for (const int n : {25000, 50000, 100000}) project(measure, n);
  for (const int blocks : {250, 500, 1000}) edit(measure, blocks);
  return 0;
}
