#include "calc/adjustment/mouvements.h"

#include "base/remarque.h"
#include "calc/angles.h"

#include <Eigen/Dense>
#include <cmath>
#include <numeric>

namespace veltora {
namespace {

/// What counts as nothing.
struct seuilsMouvements {
  double immobile;  ///< share of the largest motion
  double contenu;   ///< of a unit motion, what may lie outside those that are free
};
constexpr seuilsMouvements kExacts{1e-7, 1e-4};
constexpr seuilsMouvements kFaibles{1e-2, 5e-2};

/// Columns of V that share a moving point stand in one part.
std::vector<std::vector<Eigen::Index>> parties(const colonnesPonderees& colonnes, const Eigen::MatrixXd& V,
                                               double immobile) {
  std::vector<Eigen::Index> chef(static_cast<std::size_t>(V.cols()));
  std::iota(chef.begin(), chef.end(), 0);
  std::vector<std::array<Eigen::Index, 2>> premier(colonnes.points.size(), {-1, -1});
  for (Eigen::Index k = 0; k < V.cols(); ++k) {
    const double seuil = immobile * V.col(k).cwiseAbs().maxCoeff();
    for (Eigen::Index i = 0; i < V.rows(); ++i) {
      const auto place = colonnes.places()[static_cast<std::size_t>(i)];
      if (place.point < 0 || std::abs(V(i, k)) < seuil) continue;
      Eigen::Index& autre = premier[static_cast<std::size_t>(place.point)].at(place.axe == 2 ? 1 : 0);
      if (autre < 0) autre = k;
      const Eigen::Index vieux = chef[static_cast<std::size_t>(k)];
      const Eigen::Index nouveau = chef[static_cast<std::size_t>(autre)];
      for (Eigen::Index& c : chef)
        if (c == vieux) c = nouveau;
    }
  }
  std::vector<std::vector<Eigen::Index>> toutes(chef.size());
  for (std::size_t k = 0; k < chef.size(); ++k)
    toutes[static_cast<std::size_t>(chef[k])].push_back(static_cast<Eigen::Index>(k));
  std::erase_if(toutes, [](const auto& p) { return p.empty(); });
  return toutes;
}

/// The motions of one part, and the elementary ones that they hold.
class partieMobile {
public:
  partieMobile(const reseauPondere& reseau, const colonnesPonderees& colonnes, const Eigen::MatrixXd& V,
               const seuilsMouvements& seuils)
      : m_reseau(reseau), m_colonnes(colonnes), m_V(V), m_seuils(seuils) {
    const Eigen::VectorXd ampleur = V.rowwise().norm();
    const double seuil = seuils.immobile * ampleur.maxCoeff();
    std::array<double, 2> somme{};
    for (Eigen::Index i = 0; i < V.rows(); ++i) {
      const auto place = colonnes.places()[static_cast<std::size_t>(i)];
      if (place.point < 0 || ampleur[i] < seuil) continue;
      if (m_points.empty() || m_points.back() != place.point) m_points.push_back(place.point);
      m_altitude = place.axe == 2;
    }
    // Whole points: one that slides along an axis holds the other coordinate against all other motions.
    for (const int p : m_points)
      for (std::size_t axe = m_altitude ? 2 : 0; axe < (m_altitude ? 3 : 2); ++axe)
        if (const int c = colonnes.points[static_cast<std::size_t>(p)].at(axe); c >= 0) m_lignes.push_back(c);
    for (const int p : m_points)
      for (std::size_t axe = 0; axe < 2; ++axe) somme.at(axe) += reseau.point(p).c.at(axe);
    for (std::size_t axe = 0; axe < 2; ++axe)
      m_centre.at(axe) = somme.at(axe) / static_cast<double>(m_points.size());
  }

  [[nodiscard]] std::wstring texte() const {
    std::vector<std::wstring> noms;
    for (const int p : m_points) noms.push_back(m_reseau.point(p).nom);
    return base::enumerer(noms) + L" : " + (m_altitude ? L"translation en Z" : plan());
  }

private:
  [[nodiscard]] std::wstring plan() const {
    std::vector<std::wstring> dits;
    Eigen::MatrixXd libres = restreindre(m_V);
    const Eigen::VectorXd X = elementaire(1, 0, 0, 0);
    const Eigen::VectorXd Y = elementaire(0, 1, 0, 0);
    if (m_points.size() == 1) return libres.cols() > 1 ? L"rien ne le place en plan" : unSeul(libres.col(0));
    if (contient(libres, X)) dits.emplace_back(L"translation en X");
    if (contient(libres, Y)) dits.emplace_back(L"translation en Y");
    const auto deplacements = static_cast<Eigen::Index>(dits.size());
    // About which centre they turn does not matter: translations are added to both.
    Eigen::MatrixXd avec(libres.rows(), libres.cols() + 2);
    avec << libres, X, Y;
    if (libres.cols() > deplacements && contient(avec, elementaire(0, 0, 1, 0)))
      dits.emplace_back(L"rotation");
    if (libres.cols() > deplacements && contient(avec, elementaire(0, 0, 0, 1)))
      dits.emplace_back(L"échelle");
    if (static_cast<Eigen::Index>(dits.size()) < libres.cols()) dits.emplace_back(L"déformation");
    std::wstring tout;
    for (const std::wstring& d : dits) tout += (tout.empty() ? L"" : L", ") + d;
    return tout;
  }

  /// One point on one locus.
  [[nodiscard]] std::wstring unSeul(const Eigen::VectorXd& v) const {
    const double x = v.size() > 0 ? v[0] : 0.0;
    const double y = v.size() > 1 ? v[1] : 0.0;
    double grades = std::atan2(x, y) * 200.0 / kPi;
    if (grades < 0.0) grades += 200.0;
    return L"une mesure manque, il glisse vers le gisement " + std::to_wstring(std::lround(grades)) +
           L" grades";
  }

  [[nodiscard]] Eigen::MatrixXd restreindre(const Eigen::MatrixXd& V) const {
    Eigen::MatrixXd r(static_cast<Eigen::Index>(m_lignes.size()), V.cols());
    for (std::size_t i = 0; i < m_lignes.size(); ++i)
      r.row(static_cast<Eigen::Index>(i)) = V.row(m_lignes[i]);
    return r;
  }

  [[nodiscard]] Eigen::VectorXd elementaire(double tx, double ty, double rotation, double echelle) const {
    Eigen::VectorXd e(static_cast<Eigen::Index>(m_lignes.size()));
    for (std::size_t i = 0; i < m_lignes.size(); ++i) {
      const auto place = m_colonnes.places()[static_cast<std::size_t>(m_lignes[i])];
      const pointPondere& p = m_reseau.point(place.point);
      const double x = p.c[0] - m_centre[0];
      const double y = p.c[1] - m_centre[1];
      e[static_cast<Eigen::Index>(i)] =
          place.axe == 0 ? tx + rotation * y + echelle * x : ty - rotation * x + echelle * y;
    }
    return e.normalized();
  }

  [[nodiscard]] bool contient(const Eigen::MatrixXd& libres, const Eigen::VectorXd& e) const {
    const Eigen::VectorXd x = libres.colPivHouseholderQr().solve(e);
    return (libres * x - e).norm() < m_seuils.contenu;
  }

  const reseauPondere& m_reseau;
  const colonnesPonderees& m_colonnes;
  const Eigen::MatrixXd& m_V;
  seuilsMouvements m_seuils;
  std::vector<Eigen::Index> m_lignes;
  std::vector<int> m_points;
  std::array<double, 2> m_centre{};
  bool m_altitude = false;
};

}  // namespace

std::vector<std::wstring> direMouvements(const reseauPondere& reseau, const colonnesPonderees& colonnes,
                                         const Eigen::MatrixXd& V, bool faibles) {
  const seuilsMouvements& seuils = faibles ? kFaibles : kExacts;
  std::vector<std::wstring> textes;
  for (const std::vector<Eigen::Index>& partie : parties(colonnes, V, seuils.immobile)) {
    Eigen::MatrixXd libres(V.rows(), static_cast<Eigen::Index>(partie.size()));
    for (std::size_t k = 0; k < partie.size(); ++k)
      libres.col(static_cast<Eigen::Index>(k)) = V.col(partie[k]);
    textes.push_back(partieMobile(reseau, colonnes, libres, seuils).texte());
  }
  return textes;
}

}  // namespace veltora
