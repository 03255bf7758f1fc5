// A field book to coordinates: words decoded, stations oriented or placed, points radiated. A station sights
// three known points and 97 new ones; every second one is known, the others are free.

#include "base/format.h"
#include "base/text.h"
#include "calc/angles.h"
#include "calc/leve/calcul_leve.h"
#include "field/leve_gsi.h"
#include "mesure.h"

#include <cmath>
#include <cstdlib>

namespace {

using namespace veltora;

constexpr int kSights = 100;

struct Place {
  double x, y;
};
Place station(int i) { return {1000.0 + 150.0 * (i % 100), 2000.0 + 150.0 * (i / 100)}; }
Place target(int i, int j) {
  const double angle = 0.063 * j + 0.1 * i;
  return {station(i).x + (40.0 + j) * std::sin(angle), station(i).y + (40.0 + j) * std::cos(angle)};
}

std::string sight(int number, int name, Place from, Place to) {
  const double d = std::hypot(to.x - from.x, to.y - from.y);
  const double h = reduireAngle(std::atan2(to.x - from.x, to.y - from.y) * 200.0 / kPi, 400.0);
  return base::formater("*11%04d+%016d 21...2+%016d 22...2+%016d 32...6+%016d 87...0+%016d \r\n",
                        number % 10000, name, static_cast<int>(std::lround(h * 1e5)), 10000000,
                        static_cast<int>(std::lround(d * 1e4)), 1500);
}

std::string book(int stations) {
  std::string bytes;
  for (int i = 0; i < stations; ++i) {
    bytes += base::formater("*410001+000000000STATION 42....+%016d 43....+%016d \r\n", 1000000 + i, 1500);
    for (int j = 0; j < kSights; ++j) {
      const int name = j < 3 ? 2000000 + i * 3 + j : 3000000 + i * kSights + j;
      bytes += sight(j, name, station(i), target(i, j));
    }
  }
  return bytes;
}

std::vector<pointConnuLeve> known(int stations) {
  std::vector<pointConnuLeve> list;
  for (int i = 0; i < stations; ++i) {
    if (i % 2 == 0) list.push_back({std::to_wstring(1000000 + i), station(i).x, station(i).y, 100.0});
    for (int j = 0; j < 3; ++j)
      list.push_back({std::to_wstring(2000000 + i * 3 + j), target(i, j).x, target(i, j).y, 100.0});
  }
  return list;
}

}  // namespace

int main() {
  Mesure measure;
  for (const int n : {10000, 100000, 200000}) {
    const std::string bytes = book(n / kSights);
    const auto points = known(n / kSights);
    lectureLeve read;
    measure("book read into stations", n,
            [&] { read = lireLeveGSI(lireCarnet(bytes), reglesUsuelles(), {}); });
    resultatCalculLeve result;
    measure("stations and points", n, [&] { result = calculerLeve(read.leve, points, {}); });
    if (result.points.size() != static_cast<std::size_t>(n / kSights * (kSights - 3) + n / kSights / 2) ||
        result.remarques.douteuses()) {
      std::fprintf(stderr, "wrong result\n");
      return EXIT_FAILURE;
    }
  }
}
