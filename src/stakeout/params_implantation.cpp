#include "stakeout/params_implantation.h"

namespace veltora {

reglagesImplantation& reglagesImplantation::commun() {
  static reglagesImplantation reglages;
  return reglages;
}

double hauteurAdmise(double hauteur) {
  constexpr double kDemesuree = 1e30;
  constexpr double kUsuelle = 1.2;
  if (hauteur < 0.0) return 0.0;
  return hauteur > kDemesuree ? kUsuelle : hauteur;
}

}  // namespace veltora
