// Networks on a jittered grid with known true coordinates: angles and distances to near neighbours, read from
// the text of a file, solved to the end and logged.

#include "base/format.h"
#include "base/text.h"
#include "calc/network/fichier_mc.h"
#include "mesure.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>
#include <vector>

namespace {

using namespace veltora;

constexpr double kPi = 3.14159265358979323846;
constexpr double kSpacing = 100.0;  // metres
constexpr double kJitter = 20.0;
constexpr int kPointsAControl = 100;  // one more control point a hundred points

struct Place {
  double x;
  double y;
};

class Network {
public:
  explicit Network(int unknown) {
    for (m_count = unknown + 3; buildControls() != unknown;) ++m_count;
    std::mt19937 random(1);
    const auto jitter = [&] { return (static_cast<double>(random()) / 4294967295.0 * 2.0 - 1.0) * kJitter; };
    for (int i = 0; i < m_count; ++i) {
      const double x = 650000.0 + i % m_columns * kSpacing + jitter();
      const double y = 6860000.0 + i / m_columns * kSpacing + jitter();
      places.push_back({std::round(x * 1e4) / 1e4, std::round(y * 1e4) / 1e4});
    }
    write();
  }

  std::vector<Place> places;
  std::string file;

private:
  /// Both ends of the first side, the last point, and some in between that are no neighbours of others.
  /// @return number of the other points
  int buildControls() {
    m_columns = std::max(2, static_cast<int>(std::ceil(std::sqrt(m_count))));
    m_controls = {0, 1, m_count - 1};
    const int more = m_count / kPointsAControl;
    for (int k = 1; k <= more; ++k) {
      const int i = static_cast<int>(static_cast<long long>(k) * m_count / (more + 1));
      const auto close = [&](int c) {
        return std::abs(i % m_columns - c % m_columns) <= 2 && std::abs(i / m_columns - c / m_columns) <= 2;
      };
      if (std::none_of(m_controls.begin(), m_controls.end(), close)) m_controls.push_back(i);
    }
    return m_count - static_cast<int>(m_controls.size());
  }
  [[nodiscard]] bool control(int i) const {
    return std::find(m_controls.begin(), m_controls.end(), i) != m_controls.end();
  }
  /// Neighbour on the grid, -1 for none.
  [[nodiscard]] int neighbour(int i, int columns, int rows) const {
    const int c = i % m_columns + columns;
    const int r = i / m_columns + rows;
    const int j = r * m_columns + c;
    return c >= 0 && c < m_columns && r >= 0 && j < m_count ? j : -1;
  }
  [[nodiscard]] double bearing(int a, int b) const {  // grades
    return std::atan2(places[idx(b)].x - places[idx(a)].x, places[idx(b)].y - places[idx(a)].y) * 200.0 / kPi;
  }
  [[nodiscard]] std::string distance(int a, int b) const {
    if (b < a || (control(a) && control(b))) return {};
    return base::formater(
        " %.4f", std::hypot(places[idx(b)].x - places[idx(a)].x, places[idx(b)].y - places[idx(a)].y));
  }
  static std::size_t idx(int i) { return static_cast<std::size_t>(i); }

  void write() {
    file = "ANGLES GRADES\r\nXYZ\r\n";
    for (const int i : m_controls)
      file += base::formater("P%d %.4f %.4f\r\n", i, places[idx(i)].x, places[idx(i)].y);
    file += "OBS\r\n";
    for (int i = 0; i < m_count; ++i) station(i);
  }
  /// One back sight: a station with three angles to known points would be passed over.
  void station(int i) {
    int back = neighbour(i, -1, 0);
    if (back < 0) back = neighbour(i, 0, -1);
    if (back < 0) back = neighbour(i, 1, 0);
    for (const auto& [columns, rows] : {std::pair(1, 0), std::pair(0, 1), std::pair(0, -1)}) {
      const int j = neighbour(i, columns, rows);
      if (j < 0) continue;
      const std::string length = distance(i, j);
      if (j != back) {
        const double angle = std::fmod(bearing(i, j) - bearing(i, back) + 800.0, 400.0);
        file += base::formater("P%d P%d P%d %.5f%s\r\n", i, back, j, angle, length);
      } else if (!length.empty()) {
        file += base::formater("P%d NORD P%d .%s\r\n", i, j, length);
      }
    }
    const int diagonal = neighbour(i, 1, 1);
    if (diagonal < 0) return;
    if (const std::string length = distance(i, diagonal); !length.empty())
      file += base::formater("P%d NORD P%d .%s\r\n", i, diagonal, length);
  }

  int m_count = 0;
  int m_columns = 0;
  std::vector<int> m_controls;
};

/// A result that is wrong makes the figures worthless.
void expect(bool right, const char* what) {
  if (right) return;
  std::fprintf(stderr, "%s failed\n", what);
  std::exit(1);
}

double largestDeviation(const reseauMoindresCarres& network, const std::vector<Place>& places) {
  double largest = 0.0;
  for (const pointACalculer& p : network.points) {
    const Place& place =
        places[static_cast<std::size_t>(base::lireEntier(std::wstring_view(p.nom).substr(1)))];
    largest = std::max(largest, std::hypot(p.X - place.x, p.Y - place.y));
  }
  return largest;
}

void run(Mesure& measure, int n) {
  const Network made(n);
  {
    reseauMoindresCarres network;
    std::wstring log;
    measure("read .mc", n, [&] { expect(lireMc(made.file, network), "read"); });
    measure("first pass", n, [&] { network.calculerPlani(log, true); });
    measure("one further pass", n, [&] { network.calculerPlani(log, false); });
  }
  reseauMoindresCarres network;
  std::wstring log;
  std::string bytes;
  int passes = 0;
  measure("read, solved and logged", n, [&] {
    expect(lireMc(made.file, network), "read");
    passes = iterer(network, log).passes;
    bytes = base::narrow(log);
  });
  const double deviation = largestDeviation(network, made.places);
  expect(deviation < 0.01, "solution");
  std::printf(
      "  %d points, %d observations, %d passes behind the first, log of %zu kB, off by %.1f mm at most\n",
      network.points.GetSize(), network.observations.GetSize(), passes, bytes.size() / 1024,
      deviation * 1000.0);
}

}  // namespace

int main() {
  Mesure measure;
  for (const int n : {10, 30, 100, 300, 1000}) run(measure, n);
}
