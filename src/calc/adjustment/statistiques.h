#pragma once

#include "calc/adjustment/modele_pondere.h"

#include <vector>

/// Precision of points and measures behind a weighted adjustment.
namespace veltora {

class systemePondere;

// A measure with less redundancy is controlled by no other one.
inline constexpr double kRedondanceNulle = 1e-6;
// Baarda's tests: a risk of 0.1 % to accuse a good measure, 20 % to miss an error of the smallest detectable
// size.
inline constexpr double kAlphaMesure = 0.001;
inline constexpr double kDecentrage = 4.13;

/// Of a measure; w and what is detectable count with m0 a priori.
struct statistiqueMesure {
  double residu = 0.0;      ///< adjusted less measured, radians or metres
  double redondance = 0.0;  ///< share of its own error that its residual shows, 0 to 1
  double w = 0.0;           ///< Baarda's standardised residual; 0 without redundancy
  double detectable = 0.0;  ///< smallest detectable error; 0 without redundancy
  double effet = 0.0;       ///< what an undetected one of that size moves its points by, at most; metres
};

struct ellipse {
  double a = 0.0;  ///< half axes, metres
  double b = 0.0;
  double gisement = 0.0;  ///< of a, radians, 0 to pi
};
/// Of a covariance matrix in plan, by its eigenvalues.
ellipse ellipseDe(double qxx, double qxy, double qyy);

/// Of a point, m0 a priori; 0 for what is fixed or no unknown.
struct statistiquePoint {
  std::array<double, 3> s{};
  ellipse plan;
  bool calculePlan = false;
  bool calculeZ = false;
};

/// The global test of m0 against its value a priori, at 5 %, two-sided.
struct testGlobal {
  int redondance = 0;
  double m0 = 1.0;  ///< a posteriori over a priori; 1 without redundancy
  double bas = 0.0;
  double haut = 0.0;
  [[nodiscard]] bool tropFort() const { return redondance > 0 && m0 > haut; }
  [[nodiscard]] bool tropFaible() const { return redondance > 0 && m0 < bas; }
  /// Of a standard ellipse with m0 a posteriori, for 95 %.
  [[nodiscard]] double facteurEllipse() const;
};

/// To be called behind `systeme.inverser()`.
VELTORA_API std::vector<statistiqueMesure> statistiquesMesures(const reseauPondere& reseau,
                                                               const systemePondere& systeme);
VELTORA_API std::vector<statistiquePoint> statistiquesPoints(const reseauPondere& reseau,
                                                             const systemePondere& systeme);
VELTORA_API testGlobal testerGlobal(const reseauPondere& reseau, const systemePondere& systeme, double somme);
/// Ellipse of b less a, for points that a measure joins; of others by solving (`parResolution`).
VELTORA_API ellipse ellipseRelative(const systemePondere& systeme, int a, int b, bool parResolution);

}  // namespace veltora
