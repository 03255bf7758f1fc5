#include "calc/adjustment/lois.h"

#include <boost/math/distributions/chi_squared.hpp>
#include <boost/math/distributions/fisher_f.hpp>
#include <boost/math/distributions/normal.hpp>
#include <boost/math/distributions/students_t.hpp>
#include <cmath>

namespace veltora {

double quantileKhi2(double p, double degres) {
  return boost::math::quantile(boost::math::chi_squared(degres), p);
}

double quantileF(double p, double degres1, double degres2) {
  return boost::math::quantile(boost::math::fisher_f(degres1, degres2), p);
}

double quantileNormal(double p) { return boost::math::quantile(boost::math::normal(), p); }

double limiteTau(double alpha, double redondance) {
  if (redondance <= 1.0) return 1.0;
  const double t = boost::math::quantile(boost::math::students_t(redondance - 1.0), 1.0 - alpha / 2.0);
  return t * std::sqrt(redondance / (redondance - 1.0 + t * t));
}

}  // namespace veltora
