// Weighted adjustment with full statistics of networks on a jittered grid, with noise: angles at every point
// to its neighbours from one back sight, each side and one diagonal of each cell measured once, a known point
// for each 300. Prints how far the result lies from the truth, in mm. With a file's name: that network.

#include "base/files.h"
#include "base/format.h"
#include "base/text.h"
#include "calc/adjustment/lecture_mc.h"
#include "calc/adjustment/reseau_compense.h"
#include "mesure.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <vector>

namespace {

using namespace veltora;

constexpr double kTurn = 400.0;
constexpr int kPointsAControl = 300;

struct Place {
  double x;
  double y;
};

class Network {
public:
  explicit Network(int count) : m_columns(static_cast<int>(std::ceil(std::sqrt(count)))), m_random(1) {
    std::uniform_real_distribution<double> jitter(-20.0, 20.0);
    for (int i = 0; i < count; ++i)
      places.push_back({650000.0 + i % m_columns * 100.0 + jitter(m_random),
                        6860000.0 + i / m_columns * 100.0 + jitter(m_random)});
    for (int i = 0; i < count; ++i)
      if (i < 2 || i % kPointsAControl == 0)
        file += base::formater("P%d %.4f %.4f\n", i, places[at(i)].x, places[at(i)].y);
    file += "OBS\n";
    for (int i = 0; i < count; ++i) observe(i, count);
  }
  std::vector<Place> places;
  std::string file;

private:
  static std::size_t at(int i) { return static_cast<std::size_t>(i); }
  [[nodiscard]] int neighbour(int i, int column, int row, int count) const {
    const int c = i % m_columns + column;
    const int r = i / m_columns + row;
    return c >= 0 && c < m_columns && r >= 0 && r * m_columns + c < count ? r * m_columns + c : -1;
  }
  [[nodiscard]] double bearing(int a, int b) const {
    return std::atan2(places[at(b)].x - places[at(a)].x, places[at(b)].y - places[at(a)].y) * 200.0 /
           3.141592653589793;
  }
  std::string length(int a, int b) {
    return base::formater("%.4f",
                          std::hypot(places[at(b)].x - places[at(a)].x, places[at(b)].y - places[at(a)].y) +
                              0.003 * m_noise(m_random));
  }
  void observe(int i, int count) {
    const int w = neighbour(i, -1, 0, count);
    const int s = neighbour(i, 0, -1, count);
    const int e = neighbour(i, 1, 0, count);
    const int back = w >= 0 ? w : s >= 0 ? s : e;
    for (const int j : {e, neighbour(i, 0, 1, count), s}) {
      if (j < 0 || j == back) continue;
      const double angle = bearing(i, j) - bearing(i, back) + 3e-4 * m_noise(m_random);
      file += base::formater("P%d P%d P%d %.5f %s\n", i, back, j, angle - kTurn * std::floor(angle / kTurn),
                             j > i ? length(i, j) : std::string("."));
    }
    if (w < 0 && e >= 0 && back == e) file += base::formater("P%d NORD P%d . %s\n", i, e, length(i, e));
    if (const int d = neighbour(i, 1, 1, count); d >= 0)
      file += base::formater("P%d NORD P%d . %s\n", i, d, length(i, d));
  }

  int m_columns;
  std::mt19937 m_random;
  std::normal_distribution<double> m_noise;
};

std::wstring adjust(const std::string& file, reseauCompense& result) {
  result.reseau.ecarts.angle = 0.3;
  result.reseau.ecarts.distance = 3.0;
  result.reseau.ecarts.ppm = 0.0;
  const std::wstring error = lireMcPondere(file, result.reseau, result.remarques);
  return error.empty() ? compenserReseau({}, result) : error;
}

void tell(const reseauCompense& result, const std::wstring& error, const std::vector<Place>& truth) {
  double worst = 0.0;
  for (std::size_t i = 0; i < truth.size() && error.empty(); ++i) {
    const int k = result.reseau.chercher(base::formater(L"P%d", static_cast<int>(i)));
    if (k < 0) continue;
    const auto& c = result.reseau.point(k).c;
    worst = std::max(worst, std::hypot(c[0] - truth[i].x, c[1] - truth[i].y));
  }
  std::printf("  %s m0 %.4f, redundancy %d, passes %d, farthest from the truth %.1f mm, doubts %d\n",
              base::toUtf8(error).c_str(), result.test.m0, result.test.redondance, result.bilan.passes,
              worst * 1000.0, static_cast<int>(result.remarques.nombre()));
}

}  // namespace

int main(int argc, char** argv) {
  Mesure measure;
  if (argc > 1) {
    const auto bytes = base::lireFichier(argv[1]);
    reseauCompense result;
    std::wstring error = L"unreadable";
    if (bytes) measure("network of a file", 1, [&] { error = adjust(*bytes, result); });
    tell(result, error, {});
    return 0;
  }
  for (const int n : {1000, 2000, 3000, 10000}) {
    const Network network(n);
    reseauCompense result;
    std::wstring error;
    measure("weighted network, statistics", n, [&] { error = adjust(network.file, result); });
    tell(result, error, network.places);
  }
  return 0;
}
