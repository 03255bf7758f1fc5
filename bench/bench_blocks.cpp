// Points in a drawing: placing them as blocks with their table entries, saving the drawing, loading it with
// its tables.

#include "arx/db/dblines.h"
#include "arx/db/dbmain.h"
#include "base/files.h"
#include "base/text.h"
#include "codes/table_codification.h"
#include "core/installation.h"
#include "mesure.h"
#include "points/projets_topo.h"

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
  std::filesystem::remove_all(folder);
}
