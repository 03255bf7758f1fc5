#include "calc/adjustment/statistiques.h"

#include "calc/adjustment/lois.h"
#include "calc/angles.h"

#include "calc/adjustment/systeme_pondere.h"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>

namespace veltora {
namespace {

constexpr double kRisque = 0.05;

using groupe = systemePondere::groupe;

/// A Q A^T of a group.
Eigen::MatrixXd cofacteursAjustes(const systemePondere& systeme, const groupe& g) {
  const auto k = static_cast<Eigen::Index>(g.mesures.size());
  Eigen::MatrixXd q(k, k);
  for (Eigen::Index a = 0; a < k; ++a) {
    for (Eigen::Index b = 0; b <= a; ++b) {
      double somme = 0.0;
      for (const auto& s : systeme.ligne(g.mesures[static_cast<std::size_t>(a)]))
        for (const auto& t : systeme.ligne(g.mesures[static_cast<std::size_t>(b)]))
          somme += s.a * systeme.cofacteurBrut(systeme.colonne(s), systeme.colonne(t)) * t.a;
      q(a, b) = q(b, a) = somme;
    }
  }
  return q;
}

/// What an error of the measure moves one of its points by at most: Q A^T P e.
double effetSurPoints(const systemePondere& systeme, const groupe& g, const Eigen::VectorXd& p, int mesure,
                      double erreur) {
  double plusGrand = 0.0;
  for (const auto& cible : systeme.ligne(mesure)) {
    if (cible.point < 0) continue;
    double carre = 0.0;
    for (const int colonne : systeme.colonnes().points[static_cast<std::size_t>(cible.point)]) {
      double d = 0.0;
      for (std::size_t k = 0; k < g.mesures.size(); ++k)
        for (const auto& t : systeme.ligne(g.mesures[k]))
          d += systeme.cofacteur(colonne, systeme.colonne(t)) * t.a * p[static_cast<Eigen::Index>(k)];
      carre += d * d;
    }
    plusGrand = std::max(plusGrand, std::sqrt(carre) * erreur);
  }
  return plusGrand;
}

}  // namespace

ellipse ellipseDe(double qxx, double qxy, double qyy) {
  const double milieu = 0.5 * (qxx + qyy);
  const double rayon = std::hypot(0.5 * (qyy - qxx), qxy);
  ellipse e;
  e.a = std::sqrt(std::max(milieu + rayon, 0.0));
  e.b = std::sqrt(std::max(milieu - rayon, 0.0));
  // tan 2t = 2 qxy / (qyy - qxx), clockwise from +Y (Ghilani, Adjustment Computations, error ellipse).
  e.gisement = 0.5 * std::atan2(2.0 * qxy, qyy - qxx);
  if (e.gisement < 0.0) e.gisement += kPi;
  return e;
}

double testGlobal::facteurEllipse() const {
  if (redondance <= 0) return std::sqrt(quantileKhi2(1.0 - kRisque, 2.0));
  return std::sqrt(2.0 * quantileF(1.0 - kRisque, 2.0, redondance));
}

std::vector<statistiqueMesure> statistiquesMesures(const reseauPondere& reseau,
                                                   const systemePondere& systeme) {
  std::vector<statistiqueMesure> resultats(reseau.mesures.size());
  for (const groupe& g : systeme.groupes()) {
    const Eigen::MatrixXd ajustes = cofacteursAjustes(systeme, g);
    const Eigen::MatrixXd Qv = g.P.inverse() - ajustes;
    const auto k = static_cast<Eigen::Index>(g.mesures.size());
    Eigen::VectorXd v(k);
    for (Eigen::Index i = 0; i < k; ++i) {
      const mesurePonderee& m =
          reseau.mesures[static_cast<std::size_t>(g.mesures[static_cast<std::size_t>(i)])];
      v[i] = m.prevue ? 0.0 : -reseau.ecartAuCalcul(m);
    }
    const Eigen::MatrixXd R = Qv * g.P;
    for (Eigen::Index i = 0; i < k; ++i) {
      const int mesure = g.mesures[static_cast<std::size_t>(i)];
      statistiqueMesure& s = resultats[static_cast<std::size_t>(mesure)];
      const Eigen::VectorXd p = g.P.col(i);
      const double d = p.dot(Qv * p);  // of e^T P Qv P e, the weight of the error's estimate
      s.residu = v[i];
      s.redondance = std::clamp(R(i, i), 0.0, 1.0);
      if (!(s.redondance > kRedondanceNulle) || !(d > 0.0)) continue;
      s.w = p.dot(v) / std::sqrt(d);
      s.detectable = kDecentrage / std::sqrt(d);
      s.effet = effetSurPoints(systeme, g, p, mesure, s.detectable);
    }
  }
  return resultats;
}

std::vector<statistiquePoint> statistiquesPoints(const reseauPondere& reseau, const systemePondere& systeme) {
  std::vector<statistiquePoint> resultats(reseau.points.size());
  for (std::size_t i = 0; i < resultats.size(); ++i) {
    statistiquePoint& s = resultats[i];
    const auto& c = systeme.colonnes().points[i];
    for (std::size_t axe = 0; axe < 3; ++axe)
      s.s.at(axe) = std::sqrt(std::max(systeme.cofacteur(c.at(axe), c.at(axe)), 0.0));
    s.calculePlan = c[0] >= 0 && c[1] >= 0;
    s.calculeZ = c[2] >= 0;
    if (s.calculePlan)
      s.plan = ellipseDe(systeme.cofacteur(c[0], c[0]), systeme.cofacteur(c[0], c[1]),
                         systeme.cofacteur(c[1], c[1]));
  }
  return resultats;
}

testGlobal testerGlobal(const reseauPondere& reseau, const systemePondere& systeme, double somme) {
  testGlobal test;
  const auto mesures =
      std::count_if(reseau.mesures.begin(), reseau.mesures.end(), [](const auto& m) { return !m.ecarte; });
  test.redondance =
      static_cast<int>(mesures) - systeme.colonnes().nombre + static_cast<int>(systeme.mouvements().cols());
  if (test.redondance <= 0) return test;
  const double r = test.redondance;
  test.m0 = std::sqrt(somme / r);
  test.bas = std::sqrt(quantileKhi2(kRisque / 2.0, r) / r);
  test.haut = std::sqrt(quantileKhi2(1.0 - kRisque / 2.0, r) / r);
  return test;
}

ellipse ellipseRelative(const systemePondere& systeme, int a, int b, bool parResolution) {
  const auto& ca = systeme.colonnes().points[static_cast<std::size_t>(a)];
  const auto& cb = systeme.colonnes().points[static_cast<std::size_t>(b)];
  Eigen::Matrix2d q = Eigen::Matrix2d::Zero();
  for (std::size_t i = 0; i < 2; ++i) {
    Eigen::VectorXd deA;
    if (parResolution && ca.at(i) >= 0) deA = systeme.colonneDeQ(ca.at(i));
    for (std::size_t j = 0; j < 2; ++j) {
      const auto I = static_cast<Eigen::Index>(i);
      const auto J = static_cast<Eigen::Index>(j);
      q(I, J) += systeme.cofacteur(ca.at(i), ca.at(j)) + systeme.cofacteur(cb.at(i), cb.at(j));
      const double croise = !parResolution                ? systeme.cofacteur(ca.at(i), cb.at(j))
                            : deA.size() && cb.at(j) >= 0 ? deA[cb.at(j)]
                                                          : 0.0;
      q(I, J) -= croise;
      q(J, I) -= croise;
    }
  }
  return ellipseDe(q(0, 0), q(0, 1), q(1, 1));
}

}  // namespace veltora
