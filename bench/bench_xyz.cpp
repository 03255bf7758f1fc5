// Lists of coordinates: read, sorted by each column, written, and exported in both forms.

#include "base/files.h"
#include "base/format.h"
#include "base/text.h"
#include "mesure.h"
#include "points/exchange/exporter_points.h"
#include "points/exchange/lecture_liste.h"
#include "points/exchange/table_obs_xyz.h"
#include "points/tri_points.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <vector>

namespace {

using namespace veltora;

std::string makeList(int n) {
  std::string bytes;
  for (int i = 0; i < n; ++i) {
    const long long mixed = (i * 7919LL) % n;
    bytes += base::formater("P%d\t%.4f\t%.4f\t%.3f\t%d obs\n", static_cast<int>(mixed),
                            650000.0 + static_cast<double>(mixed) * 0.37, 6860000.0 + i % 1000,
                            100.0 + i % 50, 1 + i % 20);
  }
  return bytes;
}

/// The same with decimal commas and thousands, as spreadsheets write it.
std::string makeSheet(int n) {
  std::string bytes = "Num;X;Y;Altitude;Nature;Observation\n";
  for (int i = 0; i < n; ++i)
    bytes += base::formater("P%d;652 %03d,%04d;6 862 %03d,%04d;%d,%03d;%s;obs %d\n", i, i % 1000, i % 9999,
                            i % 997, i % 8888, 100 + i % 50, i % 1000, i % 3 ? "Regard" : "7", i);
  return bytes;
}

/// A result that is wrong makes the figures worthless.
void expect(bool right, const char* what) {
  if (right) return;
  std::fprintf(stderr, "%s failed\n", what);
  std::exit(1);
}

void run(Mesure& measure, int n) {
  const std::string bytes = makeList(n);
  tableObsXYZ list;
  measure("read .xyz", n, [&] { list.lire(bytes); });
  expect(list.lignes.size() == static_cast<std::size_t>(n), "read");
  const std::string sheet = makeSheet(n);
  formeListe form;
  measure("recognise a sheet", n, [&] { form = reconnaitreListe(sheet, {}, {}); });
  measure("read a sheet", n, [&] {
    expect(form.questions.empty() && lireListe(sheet, form).lignes.size() == list.lignes.size(), "sheet");
  });
  const char* names[] = {"name", "X", "Y", "Z", "code", "running number"};
  for (int column = 0; column < 6; ++column) {
    measure(std::string("form, sort by ") + names[column], n, [&] {
      const auto compare = list.comparateur(column);
      std::vector<long long> numbers;
      for (const pointXYZ& line : list.lignes) numbers.push_back(line.numeroInterne);
      std::stable_sort(numbers.begin(), numbers.end(),
                       [&](long long a, long long b) { return compare(a, b) < 0; });
    });
  }
  listePointsDuDessin table;
  for (const pointXYZ& line : list.lignes) {
    pointDuDessin point;
    point = line;
    table.Ajouter(point);
  }
  measure("table, sort by name", n, [&] { rangsPoints(table, colonnePoints::kNumero); });
  measure("table, sort by X", n, [&] { rangsPoints(table, colonnePoints::kX); });
  measure("write .xyz", n, [&] { expect(!list.contenu().empty(), "write"); });
  const std::vector<pointDuDessin> points(table.getData()->begin(), table.getData()->end());
  const std::filesystem::path path = base::creerFichierTemporaire(base::dossierTemporaire(), "BXY");
  std::wstring reason;
  const std::wstring name = base::fromUtf8(path.string());
  measure("export text", n, [&] { expect(exporterPoints(points, name, reason), "text"); });
  measure("export report", n, [&] { expect(exporterPoints(points, name + L".doc", reason), "report"); });
  std::filesystem::remove(path);
  std::filesystem::remove(path.string() + ".doc");
}

}  // namespace

int main() {
  Mesure measure;
  for (const int n : {50000, 500000}) run(measure, n);
}
