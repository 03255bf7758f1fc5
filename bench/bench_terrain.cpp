// Terrains of one point to 9 square metres, to the millimetre at national coordinates, one in fifty on
// breaklines of 40 vertices: made with all checks, altitudes at random places and along a line, paths of 500
// m between random places, contour lines, the record in the drawing.

#include "mesure.h"
#include "terrain/courbes.h"
#include "terrain/fabrication.h"
#include "terrain/stockage.h"

#include <cmath>
#include <cstdlib>
#include <random>

namespace {

using namespace veltora;
using namespace veltora::terrain;

constexpr double kX = 650000.0;
constexpr double kY = 6860000.0;
constexpr double kTurn = 6.283185307179586;

double millimetres(double value) { return std::round(value * 1000.0) / 1000.0; }

AcGePoint3d on(double x, double y) {
  const double z = 300.0 + 25.0 * std::sin(x / 400.0) * std::cos(y / 300.0) + 0.5 * std::sin(x / 9.0);
  return {millimetres(kX + x), millimetres(kY + y), millimetres(z)};
}

Sources sourcesOf(int n, double side) {
  std::mt19937 draw(1);
  std::uniform_real_distribution<double> place(0.0, side);
  Sources sources;
  for (int i = 0; i < n - n / 50; ++i) sources.points.push_back(on(place(draw), place(draw)));
  for (int line = 0; line < n / 2000; ++line) {
    std::vector<AcGePoint3d>& vertices = sources.lignes.emplace_back();
    const double x = place(draw);
    const double y = place(draw);
    const double angle = place(draw) / side * kTurn;
    for (int i = 0; i < 40; ++i)
      vertices.push_back(
          on(x + 2.0 * i * std::cos(angle), y + 2.0 * i * std::sin(angle) + std::sin(i / 4.0)));
  }
  return sources;
}

void expect(bool right, const char* what) {
  if (right) return;
  std::fprintf(stderr, "%s failed\n", what);
  std::exit(1);
}

void measure(Mesure& mesure, int n) {
  const double side = 3.0 * std::sqrt(n);
  const Sources sources = sourcesOf(n, side);
  std::unique_ptr<Terrain> terrain;
  mesure("make, with all checks", n, [&] {
    base::Remarques remarks;
    std::wstring reason;
    terrain = fabriquer(L"banc", sources, remarks, reason);
    expect(terrain != nullptr, "terrain");
  });
  mesure("faces alone", n, [&] { expect(!Terrain(terrain->modele()).surface().faces().empty(), "faces"); });
  const Triangulation& surface = terrain->surface();
  std::mt19937 draw(2);
  std::uniform_real_distribution<double> place(0.02 * side, 0.98 * side);
  int found = 0;
  mesure("altitude, random places", n, [&] {
    for (int i = 0; i < n; ++i) {
      AcGePoint3d p(kX + place(draw), kY + place(draw), 0.0);
      found += surface.altitude(p) ? 1 : 0;
    }
  });
  expect(found == n, "altitudes");
  mesure("altitude, one after the other", n, [&] {
    for (int i = 0; i < n; ++i) {
      const double t = static_cast<double>(i) / n;
      AcGePoint3d p(kX + (0.02 + 0.96 * t) * side, kY + (0.5 + 0.3 * std::sin(9.0 * t)) * side, 0.0);
      expect(surface.altitude(p), "altitude");
    }
  });
  std::size_t vertices = 0;
  mesure("paths of 500 m", n / 10, [&] {
    for (int i = 0; i < n / 10; ++i) {
      const AcGePoint3d p(kX + place(draw), kY + place(draw), 0.0);
      const double angle = place(draw) / side * kTurn;
      for (const auto& path :
           surface.chemin(p, p + AcGeVector3d(std::cos(angle), std::sin(angle), 0.0) * 500.0))
        vertices += path.size();
    }
  });
  expect(vertices > static_cast<std::size_t>(n), "paths");
  std::size_t lines = 0;
  mesure("contour lines, 1 m", n,
         [&] { tracerCourbes(surface, 1.0, [&](const Courbe&) { return ++lines > 0; }); });
  mesure("record written and read", n, [&] {
    Modele read;
    expect(lireModele(ecrireModele(terrain->modele()), read), "record");
  });
}

}  // namespace

int main() {
  Mesure mesure;
  for (const int n : {10000, 100000, 1000000}) measure(mesure, n);
  return 0;
}
