// The planner of stake-outs: points and stations grow; against all pairs at the sizes where those can be
// waited for.

#include "arx/db/dbmain.h"
#include "mesure.h"
#include "points/infos_topo.h"
#include "points/projets_topo.h"
#include "stakeout/listes_plan.h"
#include "stakeout/plan_implantation_auto.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace veltora;

constexpr double kX = 652000.0;
constexpr double kY = 6862000.0;
constexpr double kCote = 5000.0;

std::vector<AcGePoint2d> points(int n, unsigned graine) {
  std::mt19937 hasard(graine);
  std::uniform_real_distribution<double> place(0.0, kCote);
  std::vector<AcGePoint2d> lieux;
  for (int i = 0; i < n; ++i) lieux.emplace_back(kX + place(hasard), kY + place(hasard));
  return lieux;
}

void planifier(Mesure& mesure, int nombre, int stations) {
  projetsTopo projet;
  AcDbDatabase dessin;
  acdbHostApplicationServices()->setWorkingDatabase(&dessin);
  setSrcInfosTopo(&dessin, &projet, 0, 0);
  for (const AcGePoint2d& lieu : points(stations, 1)) {
    pointDuDessin p;
    p.setParams(L"S", {lieu.x, lieu.y, Z_ABSENT}, 100);
    projet.currTable()->Ajouter(p);
  }
  const std::vector<AcGePoint2d> lieux = points(nombre, 2);
  planImplantationAuto plan;
  const std::string nom = std::to_string(stations) + " stations, ";
  mesure(nom + "plan", nombre, [&] { plan.preparer(lieux, 100, {}); });
  std::size_t caracteres = 0;
  mesure(nom + "text", nombre, [&] { caracteres = textePlan(plan).size(); });
  if (caracteres < static_cast<std::size_t>(nombre) * 20) std::exit(1);
  if (nombre <= 10000)
    mesure(nom + "all pairs", nombre, [&] {
      std::vector<std::pair<double, int>> toutes(static_cast<std::size_t>(stations));
      for (int i = 0; i < nombre; ++i) {
        for (int s = 0; s < stations; ++s) {
          const pointDuDessin& p = *projet.currTable()->getData(s);
          toutes[static_cast<std::size_t>(s)] = {std::hypot(p.x - plan.point(i).x, p.y - plan.point(i).y), s};
        }
        std::partial_sort(toutes.begin(), toutes.begin() + plan.nbColonnes(), toutes.end());
        for (int c = 0; c < plan.nbColonnes(); ++c)
          if (plan.tableStations(i, c).station != toutes[static_cast<std::size_t>(c)].second) std::exit(1);
      }
    });
  setSrcInfosTopo(nullptr, nullptr, 0, 0);
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
}

}  // namespace

int main() {
  Mesure mesure;
  for (const int n : {1000, 10000, 100000, 1000000}) planifier(mesure, n, 1000);
  for (const int n : {10000, 100000}) planifier(mesure, n, 10000);
  return 0;
}
