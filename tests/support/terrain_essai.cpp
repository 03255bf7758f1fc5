// A terrain module of the tests' own: a slope of 1 % to the east with a tent-shaped bank across it, 10 wide
// and 4 high, in a square of 2000 about an origin at national coordinates.

#include "arx/rx/rxdlinkr.h"
#include "core/services_terrain.h"

#include <algorithm>
#include <cmath>

namespace veltora {
class Terrain {};
}  // namespace veltora

using namespace veltora;

namespace {

constexpr double kX = 650000.0;
constexpr double kY = 6860000.0;
constexpr double kReach = 1000.0;
constexpr double kBank = 50.0;  // its crest east of the origin
constexpr double kHalf = 5.0;
constexpr double kHeight = 4.0;

double ground(double x) {
  return 100.0 + 0.01 * (x - kX) + std::max(0.0, kHeight * (1.0 - std::abs(x - kX - kBank) / kHalf));
}

bool inside(const AcGePoint3d& p) { return std::abs(p.x - kX) <= kReach && std::abs(p.y - kY) <= kReach; }

}  // namespace

extern "C" {

__attribute__((visibility("default"))) AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* appId) {
  if (msg == AcRx::kInitAppMsg) acrxDynamicLinker->unlockApplication(appId);
  return AcRx::kRetOK;
}

__attribute__((visibility("default"))) void currDwgData(TerrainsDuDessin** donnees) {
  static Terrain terrain;
  static TerrainsDuDessin liste{{&terrain}, 7};
  *donnees = &liste;
}

__attribute__((visibility("default"))) int calcZPoint(Terrain*, AcGePoint3d* point) {
  if (!inside(*point)) return 0;
  point->z = ground(point->x);
  return 1;
}

__attribute__((visibility("default"))) int tinExtractPath(Terrain*, const AcGePoint3d* from,
                                                          const AcGePoint3d* to, CheminsTerrain* out) {
  if (!inside(*from) || !inside(*to)) return 0;
  std::vector<double> shares{0.0, 1.0};
  for (const double x : {kX + kBank - kHalf, kX + kBank, kX + kBank + kHalf})
    if ((from->x - x) * (to->x - x) < 0.0) shares.push_back((x - from->x) / (to->x - from->x));
  std::sort(shares.begin(), shares.end());
  out->emplace_back();
  for (const double t : shares) {
    const double x = from->x + (to->x - from->x) * t;
    out->back().emplace_back(x, from->y + (to->y - from->y) * t, ground(x));
  }
  return 1;
}
}
