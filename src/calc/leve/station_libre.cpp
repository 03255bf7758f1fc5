#include "calc/leve/station_libre.h"

#include "calc/helmert/controle_helmert.h"
#include "calc/helmert/helmert.h"
#include "calc/leve/angles_leve.h"
#include "calc/leve/orientation.h"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>

namespace veltora {
namespace {

constexpr double kDirection = 0.001 * kPi / 200.0;  // radians, a milligrade
constexpr double kCentrage = 0.002;                 // metres
constexpr double kDistance = 0.003;
constexpr double kBruitParMetre = 2e-6;
constexpr int kPasses = 30;
constexpr double kArrete = 1e-6;          // metres
constexpr std::size_t kTripletsMax = 12;  // references among which three directions are chosen

using Mesures = std::vector<referenceLeve>;

struct Depart {
  double x = 0.0;
  double y = 0.0;
};

/// The bearing of the circle's zero as the directions from a place have it, radians.
double zeroMoyen(const Mesures& references, const Depart& lieu) {
  double sinus = 0.0;
  double cosinus = 0.0;
  for (const referenceLeve& r : references) {
    if (!r.mesure.h) continue;
    const double zero = std::atan2(r.point.x - lieu.x, r.point.y - lieu.y) - radiansDe(*r.mesure.h);
    sinus += std::sin(zero);
    cosinus += std::cos(zero);
  }
  return std::atan2(sinus, cosinus);
}

/// Misfit of a place in squares of metres. Directions alone, and distances where they are.
double ecartDe(const Mesures& references, const Depart& lieu) {
  const double zero = zeroMoyen(references, lieu);
  double somme = 0.0;
  for (const referenceLeve& r : references) {
    const double d = std::hypot(r.point.x - lieu.x, r.point.y - lieu.y);
    if (r.mesure.h) {
      const double e = std::remainder(
          std::atan2(r.point.x - lieu.x, r.point.y - lieu.y) - radiansDe(*r.mesure.h) - zero, 2.0 * kPi);
      somme += e * e * d * d;
    }
    if (r.mesure.d) somme += (d - *r.mesure.d) * (d - *r.mesure.d);
  }
  return somme;
}

std::optional<Depart> parSimilitude(const Mesures& references) {
  couplesHelmert couples;
  for (const referenceLeve& r : references) {
    if (!r.mesure.h || !r.mesure.d) continue;
    const double h = radiansDe(*r.mesure.h);
    couples.depart.emplace_back(*r.mesure.d * std::sin(h), *r.mesure.d * std::cos(h));
    couples.arrivee.emplace_back(r.point.x - references.front().point.x,
                                 r.point.y - references.front().point.y);
  }
  if (couples.depart.size() < 2) return {};
  std::vector<AcGePoint2d> portes;
  resultatHelmert resultat;
  if (!transformerHelmert(couples, portes, resultat)) return {};
  const AcGeVector2d origine = translationOrigine(couples.depart, resultat);
  return Depart{origine.x + references.front().point.x, origine.y + references.front().point.y};
}

/// Three directions: the radical centre of the three circles over which each pair is seen.
std::optional<Depart> relever(const referenceLeve& a, const referenceLeve& b, const referenceLeve& c) {
  const auto cotangente = [](const referenceLeve& de, const referenceLeve& vers) {
    return 1.0 / std::tan(radiansDe(*de.mesure.h - *vers.mesure.h));  // counter-clockwise from de to vers
  };
  const double x1 = a.point.x - b.point.x;
  const double y1 = a.point.y - b.point.y;
  const double x3 = c.point.x - b.point.x;
  const double y3 = c.point.y - b.point.y;
  const double t12 = cotangente(a, b);
  const double t23 = cotangente(b, c);
  const double t31 = (1.0 - t12 * t23) / (t12 + t23);
  const double x12 = x1 + t12 * y1;
  const double y12 = y1 - t12 * x1;
  const double x23 = x3 - t23 * y3;
  const double y23 = y3 + t23 * x3;
  const double x31 = x3 + x1 + t31 * (y3 - y1);
  const double y31 = y3 + y1 - t31 * (x3 - x1);
  const double k31 = x1 * x3 + y1 * y3 + t31 * (x1 * y3 - x3 * y1);
  const double d = (x12 - x23) * (y23 - y31) - (y12 - y23) * (x23 - x31);
  const Depart lieu{b.point.x + k31 * (y12 - y23) / d, b.point.y + k31 * (x23 - x12) / d};
  if (!std::isfinite(lieu.x) || !std::isfinite(lieu.y)) return {};
  return lieu;
}

std::optional<Depart> parRelevement(const Mesures& references) {
  Mesures vues;
  for (const referenceLeve& r : references)
    if (r.mesure.h && vues.size() < kTripletsMax) vues.push_back(r);
  std::optional<Depart> meilleur;
  for (std::size_t i = 0; i < vues.size(); ++i)
    for (std::size_t j = i + 1; j < vues.size(); ++j)
      for (std::size_t k = j + 1; k < vues.size(); ++k) {
        const std::optional<Depart> lieu = relever(vues[i], vues[j], vues[k]);
        if (lieu && (!meilleur || ecartDe(references, *lieu) < ecartDe(references, *meilleur)))
          meilleur = lieu;
      }
  return meilleur;
}

/// Gauss-Newton on X, Y and the zero of the circle; lengths relative to the start.
class Ajustement {
public:
  Ajustement(const Mesures& references, const Depart& depart)
      : m_references(references), m_x(depart.x), m_y(depart.y), m_zero(zeroMoyen(references, depart)) {}

  /// @return false when it does not settle, or the measures leave the place open
  bool resoudre() {
    for (int passe = 0; passe < kPasses; ++passe) {
      normer();
      const Eigen::LDLT<Eigen::Matrix3d> facteur(m_normale);
      const Eigen::Vector3d d = facteur.vectorD();
      if (!(d.minCoeff() > 1e-12 * d.maxCoeff())) return false;
      const Eigen::Vector3d pas = facteur.solve(m_second);
      if (!pas.allFinite()) return false;
      m_x += pas(0);
      m_y += pas(1);
      m_zero += pas(2) / kLevier;
      if (std::hypot(pas(0), pas(1)) < kArrete) {
        normer();
        m_inverse = m_normale.inverse();
        return true;
      }
    }
    return false;
  }

  void rendre(stationLeve& station) const {
    station.x = m_x;
    station.y = m_y;
    station.surabondantes = m_nombre - 3;
    if (station.surabondantes <= 0) return;
    const double m0 = std::sqrt(m_somme / station.surabondantes);
    station.sx = m0 * std::sqrt(m_inverse(0, 0));
    station.sy = m0 * std::sqrt(m_inverse(1, 1));
  }

private:
  static constexpr double kLevier = 100.0;  ///< metres: the zero counts as a length so far away, which keeps
                                            ///< the equations of one size

  [[nodiscard]] double gisement(const referenceLeve& r) const {
    return std::atan2(r.point.x - m_x, r.point.y - m_y);
  }

  void normer() {
    m_normale.setZero();
    m_second.setZero();
    m_somme = 0.0;
    m_nombre = 0;
    for (const referenceLeve& r : m_references) {
      const double dx = r.point.x - m_x;
      const double dy = r.point.y - m_y;
      const double d = std::max(std::hypot(dx, dy), 1e-3);
      if (r.mesure.h) {
        const double sigma = std::hypot(kDirection, kCentrage / d);
        const double e = std::remainder(radiansDe(*r.mesure.h) + m_zero - gisement(r), 2.0 * kPi);
        ajouter({-dy / (d * d), dx / (d * d), -1.0 / kLevier}, e, sigma);
      }
      if (r.mesure.d) ajouter({dx / d, dy / d, 0.0}, d - *r.mesure.d, kDistance + kBruitParMetre * d);
    }
  }
  /// A row a . (dx, dy, dzero) = e.
  void ajouter(const Eigen::Vector3d& a, double e, double sigma) {
    const double p = 1.0 / (sigma * sigma);
    m_normale += p * a * a.transpose();
    m_second += p * e * a;
    m_somme += p * e * e;
    ++m_nombre;
  }

  const Mesures& m_references;
  double m_x;
  double m_y;
  double m_zero;
  Eigen::Matrix3d m_normale;
  Eigen::Matrix3d m_inverse = Eigen::Matrix3d::Zero();
  Eigen::Vector3d m_second;
  double m_somme = 0.0;
  int m_nombre = 0;
};

}  // namespace

std::wstring placerLibre(stationLeve& station) {
  const auto compte = [&](bool avecDistance) {
    return std::count_if(station.references.begin(), station.references.end(),
                         [&](const referenceLeve& r) { return r.mesure.h && (!avecDistance || r.mesure.d); });
  };
  if (compte(true) < 2 && compte(false) < 3)
    return L"trop peu de points connus visés : il en faut deux avec direction et distance, ou trois "
           L"directions";
  std::optional<Depart> depart = parSimilitude(station.references);
  if (!depart) depart = parRelevement(station.references);
  const wchar_t* const kIndetermine =
      L"place indéterminée : points connus confondus, ou sur un cercle qui passe par la station";
  if (!depart) return kIndetermine;
  Ajustement ajustement(station.references, *depart);
  if (!ajustement.resoudre()) return kIndetermine;
  ajustement.rendre(station);
  const int surabondantes = station.surabondantes;
  if (!orienter(station)) return kIndetermine;
  station.surabondantes = surabondantes;
  return {};
}

}  // namespace veltora
