#include "calc/adjustment/epoques.h"

#include "base/format.h"
#include "calc/adjustment/lois.h"
#include "calc/adjustment/reseau_compense.h"
#include "calc/adjustment/systeme_pondere.h"
#include "calc/network/donnees_reseau.h"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>

namespace veltora {
namespace {

constexpr double kRisque = 0.05;
constexpr Eigen::Index kCoordonneesMax = 1500;
constexpr double kRangNul = 1e-9;  // eigenvalue over the largest

/// Q^+ and its rank.
Eigen::MatrixXd pseudoInverse(const Eigen::MatrixXd& Q, int& rang) {
  const Eigen::SelfAdjointEigenSolver<Eigen::MatrixXd> e(Q);
  Eigen::VectorXd inverses = e.eigenvalues();
  const double seuil = kRangNul * inverses.cwiseAbs().maxCoeff();
  rang = 0;
  for (double& x : inverses) {
    rang += x > seuil ? 1 : 0;
    x = x > seuil ? 1.0 / x : 0.0;
  }
  return e.eigenvectors() * inverses.asDiagonal() * e.eigenvectors().transpose();
}

class comparateur {
public:
  comparateur(const reseauCompense& a, const reseauCompense& b, comparaisonEpoques& resultat)
      : m_a(a), m_b(b), m_resultat(resultat) {}

  std::wstring comparer() {
    m_redondance = m_a.test.redondance + m_b.test.redondance;
    if (m_a.test.redondance <= 0 || m_b.test.redondance <= 0)
      return L"une époque n'a pas de mesures surabondantes";
    m_resultat.m0 = std::sqrt((m_a.bilan.somme + m_b.bilan.somme) / m_redondance);
    chercherCommuns();
    if (m_colonnesA.empty()) return L"les deux époques n'ont aucun point calculé en commun";
    if (static_cast<Eigen::Index>(m_colonnesA.size()) > kCoordonneesMax)
      return L"trop de points communs pour comparer les époques";
    rassembler();
    localiser();
    return {};
  }

private:
  void chercherCommuns() {
    for (std::size_t i = 0; i < m_a.points.size(); ++i) {
      const int j = m_b.reseau.chercher(m_a.reseau.points[i].nom);
      if (j < 0) continue;
      pointCompare p;
      p.nom = m_a.reseau.points[i].nom;
      const statistiquePoint& autre = m_b.points[static_cast<std::size_t>(j)];
      p.plan = m_a.points[i].calculePlan && autre.calculePlan;
      p.altitude = m_a.points[i].calculeZ && autre.calculeZ;
      for (std::size_t axe = 0; axe < 3; ++axe) {
        if (!(axe < 2 ? p.plan : p.altitude)) continue;
        m_colonnesA.push_back(m_a.systeme->colonnes().points[i].at(axe));
        m_colonnesB.push_back(m_b.systeme->colonnes().points[static_cast<std::size_t>(j)].at(axe));
        m_ecarts.push_back(m_b.reseau.point(j).c.at(axe) - m_a.reseau.points[i].c.at(axe));
        m_places.emplace_back(m_resultat.points.size(), axe);
      }
      if (p.plan || p.altitude) m_resultat.points.push_back(p);
    }
  }

  static void ajouterQ(const systemePondere& systeme, const std::vector<int>& colonnes, Eigen::MatrixXd& Q) {
    for (std::size_t i = 0; i < colonnes.size(); ++i) {
      const Eigen::VectorXd q = systeme.colonneDeQ(colonnes[i]);
      for (std::size_t j = 0; j < colonnes.size(); ++j)
        Q(static_cast<Eigen::Index>(j), static_cast<Eigen::Index>(i)) += q[colonnes[j]];
    }
  }

  void rassembler() {
    const auto n = static_cast<Eigen::Index>(m_colonnesA.size());
    m_Q = Eigen::MatrixXd::Zero(n, n);
    ajouterQ(*m_a.systeme, m_colonnesA, m_Q);
    ajouterQ(*m_b.systeme, m_colonnesB, m_Q);
    m_d = Eigen::Map<const Eigen::VectorXd>(m_ecarts.data(), n);
    const Eigen::MatrixXd& V = m_a.systeme->mouvements();
    m_G.resize(n, V.cols());
    for (Eigen::Index i = 0; i < n; ++i) m_G.row(i) = V.row(m_colonnesA[static_cast<std::size_t>(i)]);
    if (m_b.defauts != m_a.defauts) m_G.resize(n, 0);
  }

  /// d and Q on the datum of the points that stay.
  void transformer(Eigen::VectorXd& d, Eigen::MatrixXd& Q) const {
    d = m_d;
    Q = m_Q;
    if (m_G.cols() == 0) return;
    Eigen::MatrixXd stables = m_G;
    for (Eigen::Index i = 0; i < stables.rows(); ++i)
      if (bouge(i)) stables.row(i).setZero();
    const Eigen::MatrixXd S =
        Eigen::MatrixXd::Identity(m_d.size(), m_d.size()) -
        m_G * (stables.transpose() * stables).completeOrthogonalDecomposition().pseudoInverse() *
            stables.transpose();
    d = S * m_d;
    Q = S * m_Q * S.transpose();
  }

  [[nodiscard]] bool bouge(Eigen::Index coordonnee) const {
    return m_resultat.points[m_places[static_cast<std::size_t>(coordonnee)].first].bouge;
  }

  /// d^T Q^+ d / m0^2 of some coordinates. @param rang  gets that of Q
  [[nodiscard]] double tester(const Eigen::VectorXd& d, const Eigen::MatrixXd& Q,
                              const std::vector<Eigen::Index>& choix, int& rang) const {
    const auto n = static_cast<Eigen::Index>(choix.size());
    Eigen::VectorXd dChoix(n);
    Eigen::MatrixXd QChoix(n, n);
    for (Eigen::Index i = 0; i < n; ++i) {
      dChoix[i] = d[choix[static_cast<std::size_t>(i)]];
      for (Eigen::Index j = 0; j < n; ++j)
        QChoix(i, j) = Q(choix[static_cast<std::size_t>(i)], choix[static_cast<std::size_t>(j)]);
    }
    return dChoix.dot(pseudoInverse(QChoix, rang) * dChoix) / (m_resultat.m0 * m_resultat.m0);
  }

  void localiser() {
    for (std::size_t tour = 0; tour <= m_resultat.points.size(); ++tour) {
      Eigen::VectorXd d;
      Eigen::MatrixXd Q;
      transformer(d, Q);
      std::vector<Eigen::Index> stables;
      for (Eigen::Index i = 0; i < d.size(); ++i)
        if (!bouge(i)) stables.push_back(i);
      int rang = 0;
      const double T = stables.empty() ? 0.0 : tester(d, Q, stables, rang);
      const double limite = rang > 0 ? quantileF(1.0 - kRisque, rang, m_redondance) : 1.0;
      if (tour == 0) {
        m_resultat.test = rang > 0 ? T / rang : 0.0;
        m_resultat.limite = limite;
      }
      const std::size_t pire = testerPoints(d, Q);
      if (rang == 0 || T / rang <= limite || pire == m_resultat.points.size()) return;
      m_resultat.points[pire].bouge = true;
    }
  }

  /// Each point by itself. @return the worst of those that stay
  std::size_t testerPoints(const Eigen::VectorXd& d, const Eigen::MatrixXd& Q) {
    std::size_t pire = m_resultat.points.size();
    const double risque = kRisque / static_cast<double>(m_resultat.points.size());
    std::vector<std::vector<Eigen::Index>> coordonnees(m_resultat.points.size());
    for (Eigen::Index i = 0; i < d.size(); ++i) {
      const auto [point, axe] = m_places[static_cast<std::size_t>(i)];
      m_resultat.points[point].d.at(axe) = d[i];
      coordonnees[point].push_back(i);
    }
    for (std::size_t p = 0; p < m_resultat.points.size(); ++p) {
      int rang = 0;
      const double T = tester(d, Q, coordonnees[p], rang);
      pointCompare& point = m_resultat.points[p];
      point.test = rang > 0 ? T / rang / quantileF(1.0 - risque, rang, m_redondance) : 0.0;
      if (!point.bouge && (pire == m_resultat.points.size() || point.test > m_resultat.points[pire].test))
        pire = p;
    }
    return pire;
  }

  const reseauCompense& m_a;
  const reseauCompense& m_b;
  comparaisonEpoques& m_resultat;
  std::vector<int> m_colonnesA;
  std::vector<int> m_colonnesB;
  std::vector<double> m_ecarts;
  std::vector<std::pair<std::size_t, std::size_t>> m_places;
  Eigen::MatrixXd m_Q;
  Eigen::VectorXd m_d;
  Eigen::MatrixXd m_G;
  int m_redondance = 0;
};

}  // namespace

std::wstring comparerEpoques(const reseauCompense& premiere, const reseauCompense& seconde,
                             comparaisonEpoques& resultat) {
  resultat = {};
  return comparateur(premiere, seconde, resultat).comparer();
}

std::vector<std::wstring> lignesEpoques(const comparaisonEpoques& c) {
  std::vector<std::wstring> lignes{
      base::formater(
          L"Congruence des époques : test %.2f, limite %.2f à 5 %% : %s (m0 commun %.3f)", c.test, c.limite,
          std::wstring(c.congruents() ? L"aucun déplacement décelé" : L"des points ont bougé"), c.m0),
      base::formater(L"%-12s%10s%10s%10s%8s", L"Point", L"dX mm", L"dY mm", L"dZ mm", L"test")};
  const auto mm = [](bool donne, double d) {
    return donne ? base::formater(L"%10.1f", d * kMillimetres) : base::formater(L"%10s", L"-");
  };
  for (const pointCompare& p : c.points)
    lignes.push_back(base::formater(L"%-12s", p.nom) + mm(p.plan, p.d[0]) + mm(p.plan, p.d[1]) +
                     mm(p.altitude, p.d[2]) + base::formater(L"%8.2f", p.test) +
                     (p.bouge ? L"  a bougé" : L""));
  return lignes;
}

}  // namespace veltora
