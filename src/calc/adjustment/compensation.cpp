#include "calc/adjustment/compensation.h"

#include "calc/adjustment/statistiques.h"
#include "calc/adjustment/systeme_pondere.h"

#include <Eigen/Dense>
#include <cmath>

namespace veltora {
namespace {

constexpr int kDemisMax = 12;
constexpr double kPasNegligeable = 1e-7;        // metres
constexpr double kRotationNegligeable = 1e-10;  // radians
constexpr double kBaisseNulle = 1e-12;          // share of the sum by which rounding may let it grow
constexpr int kPassesRobustes = 40;
constexpr double kPoidsStable = 1e-3;
constexpr double kLimiteHuber = 2.0;
constexpr double kLimiteDanoise = 3.0;

std::vector<double> ecarts(const reseauPondere& reseau) {
  std::vector<double> l(reseau.mesures.size(), 0.0);
  for (std::size_t i = 0; i < l.size(); ++i)
    if (!reseau.mesures[i].ecarte) l[i] = reseau.ecartAuCalcul(reseau.mesures[i]);
  return l;
}

void avancer(reseauPondere& reseau, const colonnesPonderees& colonnes, const Eigen::VectorXd& x,
             double part) {
  for (std::size_t i = 0; i < reseau.points.size(); ++i)
    for (std::size_t axe = 0; axe < 3; ++axe)
      if (const int k = colonnes.points[i].at(axe); k >= 0) reseau.points[i].c.at(axe) += part * x[k];
  for (std::size_t t = 0; t < reseau.orientations.size(); ++t)
    if (const int k = colonnes.orientations[t]; k >= 0) reseau.orientations[t] += part * x[k];
}

bool negligeable(const colonnesPonderees& colonnes, const Eigen::VectorXd& x, double suffisant) {
  const double pas = std::max(kPasNegligeable, suffisant);
  const double rotation = std::max(kRotationNegligeable, suffisant);
  for (int i = 0; i < colonnes.nombre; ++i) {
    const bool point = colonnes.places()[static_cast<std::size_t>(i)].point >= 0;
    if (!(std::abs(x[i]) < (point ? pas : rotation))) return false;
  }
  return true;
}

/// One step, halved while the sum grows.
/// @param l  measured less computed, before and behind the step
/// @return false when the step or its sum is no number
bool passer(reseauPondere& reseau, const systemePondere& systeme, bilanPondere& bilan, double suffisant,
            std::vector<double>& l) {
  const Eigen::VectorXd x = systeme.resoudre(l);
  const double avant = systeme.somme(l);
  if (!x.allFinite() || !std::isfinite(avant)) return false;
  bilan.convergence = negligeable(systeme.colonnes(), x, suffisant);
  double part = 1.0;
  avancer(reseau, systeme.colonnes(), x, part);
  l = ecarts(reseau);
  bilan.somme = systeme.somme(l);
  for (int k = 0; k < kDemisMax && !bilan.convergence; ++k) {
    if (bilan.somme <= avant * (1.0 + kBaisseNulle) + kBaisseNulle) break;
    avancer(reseau, systeme.colonnes(), x, -0.5 * part);
    part *= 0.5;
    l = ecarts(reseau);
    bilan.somme = systeme.somme(l);
  }
  if (std::isfinite(bilan.somme)) return true;
  avancer(reseau, systeme.colonnes(), x, -part);
  return false;
}

double poidsRobuste(robustesse methode, double w) {
  w = std::abs(w);
  if (methode == robustesse::huber) return w > kLimiteHuber ? kLimiteHuber / w : 1.0;
  return w > kLimiteDanoise ? std::exp(1.0 - w * w / (kLimiteDanoise * kLimiteDanoise)) : 1.0;
}

}  // namespace

bool compenser(reseauPondere& reseau, systemePondere& systeme, bilanPondere& bilan, int passesMax,
               double pasSuffisant) {
  if (bilan.poidsRobustes.empty()) bilan.poidsRobustes.assign(reseau.mesures.size(), 1.0);
  bilan.convergence = false;
  std::vector<double> l = ecarts(reseau);
  for (int passe = 0; passe < passesMax && !bilan.convergence; ++passe) {
    if (!systeme.factoriser() || !systeme.datumDefini()) return false;
    if (!passer(reseau, systeme, bilan, pasSuffisant, l)) return false;
    ++bilan.passes;
  }
  return true;
}

bool compenserRobuste(reseauPondere& reseau, systemePondere& systeme, robustesse methode,
                      bilanPondere& bilan) {
  systeme.inverser();
  const std::vector<statistiqueMesure> premieres = statistiquesMesures(reseau, systeme);
  for (int passe = 0; passe < kPassesRobustes; ++passe) {
    double change = 0.0;
    for (std::size_t i = 0; i < reseau.mesures.size(); ++i) {
      const mesurePonderee& m = reseau.mesures[i];
      if (m.ecarte || !(premieres[i].redondance > kRedondanceNulle)) continue;
      const double w = reseau.ecartAuCalcul(m) / (m.ecart * std::sqrt(premieres[i].redondance));
      const double poids = std::max(poidsRobuste(methode, w), 1e-6);
      change = std::max(change, std::abs(poids - bilan.poidsRobustes[i]));
      bilan.poidsRobustes[i] = poids;
    }
    systeme.facteursDePoids(bilan.poidsRobustes);
    if (!compenser(reseau, systeme, bilan)) return false;
    if (change < kPoidsStable) return true;
  }
  bilan.convergence = false;
  return true;
}

}  // namespace veltora
