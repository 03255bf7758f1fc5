// Field books: decoded, listed in the table and dumped in one go, against a bare scan of the bytes for
// digits.

#include "base/files.h"
#include "base/format.h"
#include "base/text.h"
#include "field/carnet_gsi.h"
#include "mesure.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>

namespace {

using namespace veltora;

/// Lines of seven words of 16 characters of data: name, angles, distance, coordinates.
std::string makeBook(int n) {
  std::string bytes;
  bytes.reserve(static_cast<std::size_t>(n) * 170);
  for (int i = 0; i < n; ++i)
    bytes += base::formater(
        "*11%04d+%016d 21.322+%016d 22.322+%016d 31..00+%016d 81..00+%016d 82..00+%016lld 83..00+%016d \r\n",
        i % 10000, i + 1, (i * 7919) % 40000000, 9000000 + i % 2000000, 1000 + i % 500000, 650000000 + i * 37,
        6860000000LL + i * 11LL, 100000 + i % 90000);
  return bytes;
}

/// The floor, behind the reading of the file: each byte is looked at, each run of digits becomes a number.
std::uint64_t scan(const std::string& bytes) {
  std::uint64_t sum = 0;
  std::uint64_t number = 0;
  for (const char c : bytes) {
    if (c >= '0' && c <= '9') {
      number = number * 10 + static_cast<std::uint64_t>(c - '0');
    } else {
      sum += number;
      number = 0;
    }
  }
  return sum + number;
}

/// A result that is wrong makes the figures worthless.
void expect(bool right, const char* what) {
  if (right) return;
  std::fprintf(stderr, "%s failed\n", what);
  std::exit(1);
}

void run(Mesure& measure, int n) {
  const std::filesystem::path path = base::creerFichierTemporaire(base::dossierTemporaire(), "BGS");
  expect(base::remplacerFichier(path, makeBook(n)), "book");
  std::uint64_t sum = 0;
  const double floorStart = processorSeconds();
  measure("read, bare scan for digits (floor)", n, [&] { sum = scan(*base::lireFichier(path)); });
  const double floor = processorSeconds() - floorStart;
  expect(sum > 0, "scan");
  getTableObsRayonnees().viderTable();
  std::string dump;
  const double start = processorSeconds();
  measure("read, decode, list, dump", n, [&] {
    const carnetGSI book = lireCarnet(*base::lireFichier(path));
    analyseGSI analysis;
    analyseGSI::preparer(book, dump);
    for (std::size_t i = 0; i < book.nombreLignes(); ++i) analysis.lire(book.ligne(i), dump, "\r\n");
  });
  const double all = processorSeconds() - start;
  tableObsRayonnees& table = getTableObsRayonnees();
  measure("set of the known names", n,
          [&] { expect(table.nomsCanevas().size() == table.pointsCanevas().size(), "names"); });
  expect(table.lectures.size() == static_cast<std::size_t>(n) &&
             table.pointsCanevas().size() == table.lectures.size(),
         "table");
  expect(dump.size() > static_cast<std::size_t>(n) * 100, "dump");
  const auto size = static_cast<double>(std::filesystem::file_size(path));
  std::printf("%.1f MB: %.1f times the floor\n", size / 1e6, all / floor);
  std::filesystem::remove(path);
}

}  // namespace

int main() {
  Mesure measure;
  for (const int n : {10000, 100000, 400000}) run(measure, n);
}
