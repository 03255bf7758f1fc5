#pragma once

#include "base/export.h"

namespace veltora {

/// Fresnel integrals, from 0 to t.
struct integralesFresnel {
  double c = 0.0;  ///< of cos(pi u^2 / 2)
  double s = 0.0;  ///< of sin(pi u^2 / 2)
};

/// Both integrals, to 1e-15 relative for |t| below 1.6, 1e-13 up to 300 and 1e-11 beyond, where the argument
/// of the sine loses digits; both are +-0.5 beyond |t| = 36974. By the rational approximations of the routine
/// fresnl of the Cephes mathematical library (S. L. Moshier), with its published coefficients.
VELTORA_API integralesFresnel calculerFresnel(double t);

}  // namespace veltora
