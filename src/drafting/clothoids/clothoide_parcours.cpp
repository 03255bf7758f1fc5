#include "drafting/clothoids/clothoide_parcours.h"

#include "arx/ge/gelin2d.h"
#include "calc/angles.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace veltora {
namespace {

// Of the sampling.
constexpr double kToleranceUsuelle = 0.001;  // drawing units
constexpr double kRatioUsuel = 0.5;
constexpr std::size_t kSommetsMax = 10000;
constexpr double kFinAtteinte = 1e-8;  // of s
constexpr double kCordeNulle = 1e36;   // place on a chord without length
// A piece is cut at its middle point's place on the chord only strictly between these.
constexpr double kPlaceMin = 0.05;
constexpr double kPlaceMax = 0.9;

// Of the search.
constexpr double kDebutRecherche = 1e36;
constexpr int kTours = 4;
constexpr int kPartsMin = 6;
constexpr int kPartsMax = 1000000;  // of curves of very many turns
constexpr double kAtteintEnTour = 1e-6;
constexpr double kAtteint = 1e-8;
constexpr int kPasNewton = 100;
constexpr double kPenteNulle = 1e-10;

/// The place of a point on a chord, 0 to 1 between its ends, and the square of its distance from it.
struct ecartCorde {
  double place = 0.0;
  double carre = 0.0;
};

ecartCorde ecartDe(AcGePoint2d q0, AcGePoint2d q1, AcGePoint2d qm) {
  // Near the origin, where the coordinates keep their digits.
  const AcGeVector2d decalage{std::floor((q0.x + q1.x) / 2.0), std::floor((q0.y + q1.y) / 2.0)};
  q0 = q0 - decalage, q1 = q1 - decalage, qm = qm - decalage;
  const AcGeLineSeg2d corde(q0, q1);
  const double place = corde.length() > 0.0 ? corde.paramOf(qm) : kCordeNulle;
  return {place, (qm - corde.closestPointTo(qm)).lengthSqrd()};
}

class echantillonnage {
public:
  echantillonnage(const clothoide& courbe, double tolerance, double ratio)
      : m_courbe(courbe), m_carre(tolerance * tolerance), m_ratio(ratio) {}

  /// @return false when there are too many
  bool parcourir() {
    double s0 = m_courbe.startParam;
    while (ajouter(s0)) {
      const double s1 = finDuMorceau(s0);
      if (std::fabs(s1 - m_courbe.endParam) <= kFinAtteinte || !(s1 > s0)) return ajouter(m_courbe.endParam);
      s0 = s1;
    }
    return false;
  }
  std::vector<double> sommets;

private:
  bool ajouter(double s) {
    const double ecart = s - m_courbe.startParam;
    if (sommets.empty() || sommets.back() != ecart) sommets.push_back(ecart);
    return sommets.size() <= kSommetsMax;
  }
  [[nodiscard]] double finDuMorceau(double s0) const {
    double s1 = m_courbe.endParam;
    double r = m_ratio;
    const AcGePoint2d q0 = m_courbe.pointEn(s0);
    while (true) {
      const double m = s0 + (s1 - s0) * r;
      const ecartCorde ecart = ecartDe(q0, m_courbe.pointEn(s1), m_courbe.pointEn(m));
      if (kPlaceMin < ecart.place && ecart.place < kPlaceMax) r = ecart.place;
      const double tourne = std::fabs(m_courbe.angleTangent(m) - m_courbe.angleTangent(s0));
      // Deliberate (clothoide-fleche): a piece is measured at this one place; far from its middle, as with
      // the ratio 0.9 of drawings, its chord may lie up to 2.8 tolerances from the curve.
      if ((ecart.carre <= m_carre && tourne <= kPi / 2.0) || !(m > s0)) return s1;
      s1 = m;
    }
  }

  const clothoide& m_courbe;
  double m_carre;
  double m_ratio;
};

}  // namespace

std::vector<double> echantillonner(clothoide& courbe, double tolerance, double ratio) {
  if (!(ratio > 0.0 && ratio < 1.0)) ratio = kRatioUsuel;
  if (!(tolerance > 0.0)) tolerance = kToleranceUsuelle;
  if (courbe.startParam > courbe.endParam) std::swap(courbe.startParam, courbe.endParam);
  if (!courbe.estTracable()) return {};
  // A piece turns by a quarter turn at most up to the place where it is measured.
  const double place = std::min(ratio, kPlaceMin);
  const double tourne = courbe.angleTangent(courbe.endParam) - courbe.angleTangent(courbe.startParam);
  if (tourne * place * place > kSommetsMax * kPi / 2.0) return {};
  // Once a chord may lie anywhere, only the turns still ask for vertices: then doubling helps no more.
  const double largeur = (courbe.endParam - courbe.startParam) * 2.0;
  for (bool encore = true; encore; tolerance *= 2.0) {
    echantillonnage essai(courbe, tolerance, ratio);
    if (essai.parcourir()) return essai.sommets;
    encore = tolerance <= largeur;
  }
  return {};
}

lieuClothoide pointLePlusProche(const clothoide& courbe, const AcGePoint2d& point) {
  const double premier = std::min(courbe.startParam, courbe.endParam);
  const double dernier = std::max(courbe.startParam, courbe.endParam);
  const auto lieuEn = [&](double s) {
    s = std::clamp(s, premier, dernier);
    return lieuClothoide{courbe.pointEn(s), s};
  };
  const auto distanceEn = [&](double s) { return courbe.pointEn(s).distanceTo(point); };
  double a = courbe.startParam;
  double b = courbe.endParam;
  double m = kDebutRecherche;
  int k = 0;
  for (int tour = 0; tour < kTours; ++tour) {
    const double parts = (courbe.angleTangent(b) - courbe.angleTangent(a)) * 6.0 / kPi;
    const int n = std::max(kPartsMin, parts < kPartsMax ? static_cast<int>(parts) : kPartsMax);
    const double h = (b - a) / n;
    // The best sum of the round before stays the one to beat, and with it the number of its part where no
    // part of this round comes below.
    double avant = distanceEn(a);
    for (int i = 0; i < n; ++i) {
      const double apres = distanceEn(a + (i + 1) * h);
      if (avant + apres < m) m = avant + apres, k = i;
      avant = apres;
    }
    a += k * h;
    b = a + h;
    if (distanceEn(a) < kAtteintEnTour) return lieuEn(a);
    if (distanceEn(b) < kAtteintEnTour) return lieuEn(b);
  }
  if (distanceEn(a) < kAtteint) return lieuEn(a);
  if (distanceEn(b) < kAtteint) return lieuEn(b);
  double s = (a + b) / 2.0;
  double meilleur = s;
  double moindre = kDebutRecherche;
  for (int pas = 0; pas < kPasNewton; ++pas) {
    const AcGeVector2d versCourbe = courbe.pointEn(s) - point;
    const double d = versCourbe.length();
    if (d < moindre) moindre = d, meilleur = s;
    const double f = 2.0 * versCourbe.dotProduct(courbe.tangenteEn(s));
    if (d < kAtteint || std::fabs(f) < kPenteNulle) break;
    s -= d * d / f;
  }
  return lieuEn(meilleur);
}

}  // namespace veltora
