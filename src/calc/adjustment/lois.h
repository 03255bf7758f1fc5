#pragma once

#include "base/export.h"

/// Limits of the tests (probability distributions by Boost.Math).
namespace veltora {

/// x with P(X < x) = p of the chi-square distribution, `degres` from 1.
VELTORA_API double quantileKhi2(double p, double degres);
/// The same of Fisher's F.
VELTORA_API double quantileF(double p, double degres1, double degres2);
/// The same of the standard normal distribution.
VELTORA_API double quantileNormal(double p);
/// The limit of |v| / (s m0 sqrt(r)) with m0 of the same `redondance` measures, two-sided at `alpha` (Pope
/// 1976, The statistics of residuals and the detection of outliers): t sqrt(r / (r - 1 + t^2)) with Student's
/// t of r - 1 degrees. 1 for one degree, where it cannot be exceeded.
VELTORA_API double limiteTau(double alpha, double redondance);

}  // namespace veltora
