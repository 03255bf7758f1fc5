// Traverses without error, closed and open: read from the text of a file, computed with and without report.

#include "calc/traverse/obs_fermee.h"
#include "calc/traverse/obs_ouverte.h"
#include "calc/traverse/polygonale_fermee.h"
#include "mesure.h"
#include "report/html_document.h"

#include <cmath>
#include <cstdlib>

namespace {

using namespace veltora;

constexpr double kPi = 3.14159265358979323846;
constexpr double kLeg = 100.0;  // metres

/// A result that is wrong makes the figures worthless.
void expect(bool right, const char* what) {
  if (right) return;
  std::fprintf(stderr, "%s failed\n", what);
  std::exit(1);
}

/// A regular polygon, in grades.
std::string closedFile(int n) {
  polygonaleFermeeObs obs;
  obs.nom = L"S0";
  obs.modeNivellement = 2;
  for (int i = 1; i <= n; ++i) {
    ligneObs line = formaterLigne(L"S" + std::to_wstring(i % n), 0.0, kLeg, i % 2 == 0 ? -1.0 : 1.0);
    line.angle = std::to_wstring(200.0 + 400.0 / n);
    obs.lignes.push_back(line);
  }
  return ecrireObsFermee(obs);
}

/// A zigzag towards the north, in grades.
std::string openFile(int n) {
  polygonaleOuverteObs obs;
  obs.depart = {L"A", 650000.0, 6860000.0, 100.0, 0.0};
  obs.arrivee = obs.depart;
  obs.arrivee.nom = L"B";
  obs.modeNivellement = 2;
  double bearing = 0.0;
  for (int i = 1; i <= n; ++i) {
    const double angle = i % 2 == 0 ? 180.0 : 220.0;
    bearing += angle - 200.0;
    obs.arrivee.x += std::sin(bearing * kPi / 200.0) * kLeg;
    obs.arrivee.y += std::cos(bearing * kPi / 200.0) * kLeg;
    obs.lignes.push_back(formaterLigne(L"S" + std::to_wstring(i), angle, kLeg, 0.5));
    obs.arrivee.z += 0.5;
  }
  obs.fermeture = 200.0;
  obs.arrivee.gisement = bearing;
  return ecrireObsOuverte(obs);
}

void expectSmall(const fermeturesPolygonale& closure) {
  expect(std::fabs(closure.E) < 0.1 && std::hypot(closure.Ex, closure.Ey) < 0.01 * closure.D, "closure");
}

void runClosed(Mesure& measure, int n) {
  const std::string file = closedFile(n);
  polygonaleFermeeObs obs;
  measure("closed, read", n, [&] { expect(lireObsFermee(file, obs).empty(), "read"); });
  base::CArray<double> X, Y, Z;
  fermeturesPolygonale closure;
  const auto compute = [&](htmlDocument* report) {
    lignesPolygonale lines = lireLignes(obs.lignes);
    expect(calculerPolygonaleFermee(obs.nom, obs.x, obs.y, obs.z, obs.vo, obs.modeNivellement, obs.modeAngle,
                                    lines, X, Y, Z, report, false, false, &closure) != 0,
           "closed");
  };
  measure("closed, computed", n, [&] { compute(nullptr); });
  expectSmall(closure);
  measure("closed, computed with report", n, [&] {
    htmlDocument report;
    compute(&report);
    expect(!report.contenu().empty(), "report");
  });
}

void runOpen(Mesure& measure, int n) {
  const std::string file = openFile(n);
  polygonaleOuverteObs obs;
  measure("open, read", n, [&] { expect(lireObsOuverte(file, obs).empty(), "read"); });
  base::CArray<double> X, Y, Z;
  fermeturesPolygonale closure;
  const auto compute = [&](htmlDocument* report) {
    lignesPolygonale lines = lireLignes(obs.lignes);
    expect(calculerPolygonaleOuverte(obs, lines, X, Y, Z, report, false, false, &closure) != 0, "open");
  };
  measure("open, computed", n, [&] { compute(nullptr); });
  expectSmall(closure);
  measure("open, computed with report", n, [&] {
    htmlDocument report;
    compute(&report);
    expect(!report.contenu().empty(), "report");
  });
}

}  // namespace

int main() {
  Mesure measure;
  for (const int n : {1000, 10000, 100000}) {
    runClosed(measure, n);
    runOpen(measure, n);
  }
}
