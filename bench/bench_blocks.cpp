// Points in a drawing: placing them as blocks with their table entries, rewriting the blocks, saving the
// drawing, loading it with its tables, reading the tables anew from the blocks, and importing vertices of 3D
// polylines of which every second one stands twice.

#include "arx/db/dbheavypoly.h"
#include "arx/db/dblines.h"
#include "arx/db/dbmain.h"
#include "base/files.h"
#include "base/text.h"
#include "codes/table_codification.h"
#include "core/installation.h"
#include "mesure.h"
#include "points/exchange/import_dessin.h"
#include "points/infos_topo.h"

#include <cstdlib>
#include <filesystem>

namespace {

using namespace veltora;

void expect(bool right, const char* what) {
  if (right) return;
  std::fprintf(stderr, "%s failed\n", what);
  std::exit(1);
}

void makeBlockFile(const std::filesystem::path& path) {
  AcDbDatabase block;
  {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(block.modelSpaceId(), AcDb::kForWrite);
    auto* line = new AcDbLine({-1, 0, 0}, {1, 0, 0});
    expect(space->appendAcDbEntity(line) == Acad::eOk, "block file");
    line->close();
  }
  expect(block.saveAs(base::fromUtf8(path.string()).c_str()) == Acad::eOk, "block file");
}

void place(listePointsDuDessin& table, int n) {
  for (int i = 0; i < n; ++i) {
    pointDuDessin point;
    point.setParams((L"P" + std::to_wstring(i)).c_str(),
                    {650000.0 + i % 1000, 6860000.0 + i / 1000, 100.0 + i % 10}, 1);
    point.creer(true, L"");
    expect(point.id.isLive(), "creer");
    table.Ajouter(point);
  }
}

void run(Mesure& measure, const std::filesystem::path& folder, int n) {
  const std::wstring file = base::fromUtf8((folder / "points.dxf").string());
  projetsTopo project;
  {
    AcDbDatabase drawing;
    acdbHostApplicationServices()->setWorkingDatabase(&drawing);
    setSrcInfosTopo(&drawing, &project, 1, 0);
    drawing.undoLog().begin(L"PLACER");  // a command is one step
    measure("place blocks and entries", n, [&] { place(*project.currTable(), n); });
    drawing.undoLog().end();
    drawing.undoLog().begin(L"MODIFIER");
    project.currTable()->decalZ(0.5);
    measure("updateDrawing", n, [&] { project.currTable()->updateDrawing(); });
    drawing.undoLog().end();
    measure("save", n, [&] {
      expect(sauvegarderInfosTopo() != 0, "tables");
      expect(drawing.saveAs(file.c_str()) == Acad::eOk, "save");
    });
  }
  AcDbDatabase back(false);
  measure("load", n, [&] {
    expect(back.readDwgFile(file.c_str()) == Acad::eOk, "load");
    acdbHostApplicationServices()->setWorkingDatabase(&back);
    setSrcInfosTopo(&back, &project, 1, 1);
  });
  expect(project.currTable()->nbPoint() == n && project.currTable()->getData(n - 1)->id.isLive(), "tables");
  measure("updateFromDrawing", n, [&] { project.currTable()->updateFromDrawing(); });
  expect(project.currTable()->nbPoint() == n && project.currTable()->getData(n - 1)->z < 1e4, "blocks read");
  setSrcInfosTopo(nullptr, nullptr, 0, 0);
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
}

/// Polylines of a hundred vertices each, the next one beginning with the second half of the one before.
void makePolylines(AcDbDatabase& drawing, int vertices) {
  constexpr int kOfOne = 100;
  const AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
  for (int first = 0; first < vertices / 2; first += kOfOne / 2) {
    auto* line = new AcDb3dPolyline;
    expect(space->appendAcDbEntity(line) == Acad::eOk, "polyline");
    for (int i = first; i < first + kOfOne; ++i) {
      AcDbObjectId id;
      auto* vertex = new AcDb3dPolylineVertex({650000.0 + i % 1000, 6860000.0 + i / 1000, 100.0 + i % 10});
      expect(line->appendVertex(id, vertex) == Acad::eOk, "vertex");
      vertex->close();
    }
    line->close();
  }
}

void runImport(Mesure& measure, int vertices) {
  AcDbDatabase drawing;
  acdbHostApplicationServices()->setWorkingDatabase(&drawing);
  projetsTopo project;
  setSrcInfosTopo(&drawing, &project, 1, 0);
  makePolylines(drawing, vertices);
  parametresImport parameters;
  parameters.masque = kSourcePolylines3d;
  measure("import vertices of 3D polylines", vertices,
          [&] { importerToutLeDessin(*project.currTable(), parameters); });
  expect(project.currTable()->nbPoint() == vertices / 2 + 50, "import");
  setSrcInfosTopo(nullptr, nullptr, 0, 0);
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
}

}  // namespace

int main() {
  const std::filesystem::path folder = base::creerFichierTemporaire(base::dossierTemporaire(), "BCH");
  std::filesystem::remove(folder);
  std::filesystem::create_directories(folder / "biblio");
  setDossierInstallation(folder);
  makeBlockFile(folder / "biblio/varnblk1.dxf");
  getTableCodification().resetDefauts();
  Mesure measure;
  for (const int n : {1000, 10000, 100000}) run(measure, folder, n);
  for (const int n : {1000, 10000, 100000}) runImport(measure, n);
  std::filesystem::remove_all(folder);
}
