#include "jobs/projection/echelle_proj.h"

#include <proj.h>

#include <cmath>
#include <memory>

namespace {

struct Free {
  void operator()(PJ* object) const { proj_destroy(object); }
  void operator()(PJ_CONTEXT* context) const { proj_context_destroy(context); }
};
using Object = std::unique_ptr<PJ, Free>;
using Context = std::unique_ptr<PJ_CONTEXT, Free>;

bool isProjected(PJ_CONTEXT* context, const PJ* system) {
  const PJ_TYPE type = proj_get_type(system);
  if (type == PJ_TYPE_PROJECTED_CRS) return true;
  if (type != PJ_TYPE_COMPOUND_CRS) return false;
  const Object plane(proj_crs_get_sub_crs(context, system, 0));
  return plane && proj_get_type(plane.get()) == PJ_TYPE_PROJECTED_CRS;
}

}  // namespace

int veltoraEchelleProjection(const char* crs, double x, double y, double* echelle) {
  const Context context(proj_context_create());
  proj_log_level(context.get(), PJ_LOG_NONE);
  const Object system(proj_create(context.get(), crs));
  if (!system || !isProjected(context.get(), system.get())) return 1;
  const Object geographic(proj_crs_get_geodetic_crs(context.get(), system.get()));
  if (!geographic) return 1;
  const char* const options[] = {"ALLOW_BALLPARK=NO", nullptr};
  const Object raw(
      proj_create_crs_to_crs_from_pj(context.get(), system.get(), geographic.get(), nullptr, options));
  if (!raw) return 1;
  const Object way(proj_normalize_for_visualization(context.get(), raw.get()));
  if (!way) return 1;
  const PJ_COORD place = proj_trans(way.get(), PJ_FWD, proj_coord(x, y, 0.0, 0.0));
  double west = 0.0;
  double south = 0.0;
  double east = 0.0;
  double north = 0.0;
  // Nonsense coordinates give numbers too: only the area of use tells.
  const bool inside =
      proj_get_area_of_use(context.get(), system.get(), &west, &south, &east, &north, nullptr) != 0 &&
      place.xy.x >= west && place.xy.x <= east && place.xy.y >= south && place.xy.y <= north;
  if (!inside) return 2;
  const PJ_FACTORS factors =
      proj_factors(system.get(), proj_coord(proj_torad(place.xy.x), proj_torad(place.xy.y), 0.0, 0.0));
  if (proj_errno(system.get()) != 0 || !(factors.meridional_scale > 0.5 && factors.meridional_scale < 2.0))
    return 1;
  // A direction is kept by conformal projections alone; of others no one factor could be told.
  if (std::fabs(factors.meridional_scale - factors.parallel_scale) > 1e-9) return 1;
  *echelle = factors.meridional_scale;
  return 0;
}
