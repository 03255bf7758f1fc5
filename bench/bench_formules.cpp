// Weight formulas: parsed, evaluated through the network's interface and directly.

#include "calc/network/formules_poids.h"
#include "mesure.h"

#include <cmath>
#include <cstdlib>

namespace {

using namespace veltora;

/// A result that is wrong makes the figures worthless.
void expect(bool right, const char* what) {
  if (right) return;
  std::fprintf(stderr, "%s failed\n", what);
  std::exit(1);
}

void run(Mesure& measure, int n) {
  formulesPoids formulas;
  formulas.gisements = "1/(k^2 + (e/d1)^2 + (e/d2)^2) + 0*ang";
  formulas.distances = "1/(5 + d1/1000*2)^2";
  formulas.definir("k", 0.5);
  formulas.definir("e", 3.0);
  measure("parse both texts", n / 100, [&] {
    for (int i = 0; i < n / 100; ++i) formulas.compiler();
  });
  double sum = 0.0;
  measure("weight of an angle", n, [&] {
    for (int i = 0; i < n; ++i) sum += formulas.poidsAngle(50.0 + i % 100, 80.0, 100.0, 1.0);
  });
  expect(sum > 0.0 && std::isfinite(sum), "angle");
  measure("weight of a bearing", n, [&] {
    for (int i = 0; i < n; ++i) sum += formulas.poidsGisement(50.0 + i % 100, 1.0);
  });
  measure("weight of a distance", n, [&] {
    for (int i = 0; i < n; ++i) sum += formulas.poidsDistance(50.0 + i % 100);
  });
  formule tree;
  expect(tree.analyser(formulas.gisements), "parse");
  measure("tree, places remembered", n, [&] {
    for (int i = 0; i < n; ++i) sum += tree.evaluer(formulas, true);
  });
  formule fresh;
  expect(fresh.analyser(formulas.gisements), "parse");
  measure("tree, names looked up", n, [&] {
    for (int i = 0; i < n; ++i) sum += fresh.evaluer(formulas, false);
  });
  expect(std::isfinite(sum), "evaluation");
}

}  // namespace

int main() {
  Mesure measure;
  for (const int n : {100000, 1000000}) run(measure, n);
}
