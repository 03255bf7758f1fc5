// What two curves have in common: polylines that cross in as many points as they have vertices, straight and
// with arcs, and splines.

#include "arx/db/dballents.h"
#include "mesure.h"

#include <cmath>
#include <cstdlib>
#include <memory>

namespace {

void expect(bool right, const char* what) {
  if (right) return;
  std::fprintf(stderr, "%s failed\n", what);
  std::exit(1);
}

// Teeth about y = 0 along x, one unit wide; the second of a pair is half a tooth beside the first.
std::unique_ptr<AcDbPolyline> teeth(int n, double shift, double bulge) {
  auto line = std::make_unique<AcDbPolyline>(static_cast<unsigned>(n));
  for (int i = 0; i < n; ++i)
    line->addVertexAt(static_cast<unsigned>(i), {650000 + i + shift, 6860000.0 + (i % 2 ? 1 : -1)}, bulge);
  return line;
}

std::unique_ptr<AcDbSpline> wave(int n, double shift) {
  std::vector<AcGePoint3d> points;
  for (int i = 0; i < n; ++i) points.emplace_back(650000 + i + shift, 6860000.0 + (i % 2 ? 1 : -1), 0);
  return std::make_unique<AcDbSpline>(points);
}

void meet(Mesure& measure, const char* what, int n, const AcDbCurve& a, const AcDbCurve& b, int least) {
  AcGePoint3dArray points;
  measure(what, n,
          [&] { expect(a.intersectWith(&b, AcDb::kOnBothOperands, points) == Acad::eOk, "intersectWith"); });
  expect(static_cast<int>(points.size()) >= least, what);
}

}  // namespace

int main() {
  Mesure measure;
  for (const int n : {1000, 10000, 100000}) {
    meet(measure, "polylines of N vertices", n, *teeth(n, 0, 0), *teeth(n, 0.5, 0), n - 2);
    meet(measure, "polylines of N arcs", n, *teeth(n, 0, 0.3), *teeth(n, 0.5, 0.3), n - 2);
    if (n <= 10000) meet(measure, "splines through N points", n, *wave(n, 0), *wave(n, 0.5), n - 2);
  }
  return 0;
}
