// Point tables in memory: entering, finding, duplicates, removal, and the round trip through both
// serializers.

#include "base/files.h"
#include "core/file_serializer.h"
#include "core/resbuf_serializer.h"
#include "mesure.h"
#include "points/projets_topo.h"

#include <cstdlib>
#include <filesystem>
#include <vector>

namespace {

using namespace veltora;

std::vector<std::wstring> s_names;

void fill(listePointsDuDessin& table, int n, int places) {
  for (int i = 0; i < n; ++i) {
    pointDuDessin point;
    point.setParams(s_names[static_cast<std::size_t>(i)].c_str(),
                    {650000.0 + i % places, 6860000.0 + static_cast<double>((i * 7919LL) % 1000), 100.0},
                    1 + i % 50);
    table.Ajouter(point);
  }
}

/// A result that is wrong makes the figures worthless.
void expect(bool right, const char* what) {
  if (right) return;
  std::fprintf(stderr, "%s failed\n", what);
  std::exit(1);
}

void runTable(Mesure& measure, int n) {
  listePointsDuDessin table;
  measure("Ajouter", n, [&] { fill(table, n, n); });
  measure("existPoint", n, [&] {
    int index = -1;
    for (const std::wstring& name : s_names) expect(table.existPoint(name.c_str(), index) != 0, "existPoint");
  });
  listePointsDuDessin twins;
  fill(twins, n / 2, n);
  twins.fusionnerAvec(twins);
  measure("delDups, every point twice", n, [&] { twins.delDups(); });
  expect(twins.nbPoint() == n / 2, "delDups");
  measure("supprimerPoint, all of them", n, [&] {
    for (const std::wstring& name : s_names) table.supprimerPoint(name.c_str());
  });
  expect(table.nbPoint() == 0, "supprimerPoint");
}

void runSerializers(Mesure& measure, int n) {
  projetsTopo project;
  fill(*project.currTable(), n, n);
  {
    chaineResbuf chain;
    ResbufSerializer stream(&chain);
    projetsTopo back;
    measure("write a chain", n, [&] { expect(project.SaveToXRecord(&stream) != 0, "chain"); });
    measure("read a chain", n, [&] { expect(back.GetFromXRecord(&stream) != 0, "chain"); });
    expect(back.currTable()->nbPoint() == n, "chain");
  }
  const std::filesystem::path path = base::creerFichierTemporaire(base::dossierTemporaire(), "BCH");
  measure("write a file", n, [&] {
    FileSerializer stream(path.string(), true);
    expect(project.SaveToXRecord(&stream) != 0, "file");
  });
  measure("read a file", n, [&] {
    FileSerializer stream(path.string(), false);
    expect(project.GetFromXRecord(&stream) != 0, "file");
  });
  expect(project.currTable()->nbPoint() == n, "file");
  std::filesystem::remove(path);
}

}  // namespace

int main() {
  Mesure measure;
  for (const int n : {50000, 500000}) {
    s_names.clear();
    for (int i = 0; i < n; ++i) s_names.push_back(L"P" + std::to_wstring(i));
    runTable(measure, n);
    runSerializers(measure, n);
  }
}
