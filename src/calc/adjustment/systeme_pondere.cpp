#include "calc/adjustment/systeme_pondere.h"

#include "calc/adjustment/facteurs_par_blocs.h"

#include <Eigen/Dense>
#include <cmath>

namespace veltora {
namespace {

// A pivot that keeps less of its diagonal element than this is lost in the rounding: no measure determines
// it.
constexpr double kPivotNul = 1e-12;
// The share of the motions that the free coordinates must hold, of the largest one.
constexpr double kDatumNul = 1e-9;
// Motions looked for one by one; more are found at once, without those in front of them being held.
constexpr int kMouvementsMax = 60;

}  // namespace

struct systemePondere::facteurs {
  FacteursParBlocs::Matrice N;
  std::vector<int> places;  ///< in the values of N, of each product
  FacteursParBlocs ldlt;
  bool analyse = false;
  bool regulier = false;  ///< no pivot vanishes
};

systemePondere::systemePondere(const reseauPondere& reseau)
    : m_reseau(reseau),
      m_colonnes(reseau),
      m_lignes(reseau.mesures.size()),
      m_ancre(static_cast<std::size_t>(m_colonnes.nombre), 0),
      m_facteurs(std::make_unique<facteurs>()) {
  grouper(reseau);
}

systemePondere::~systemePondere() = default;

void systemePondere::grouper(const reseauPondere& reseau) {
  std::vector<char> enBloc(reseau.mesures.size(), 0);
  for (const blocCovariance& bloc : reseau.blocs) {
    const auto n = static_cast<Eigen::Index>(bloc.mesures.size());
    std::vector<Eigen::Index> gardees;
    groupe g;
    for (Eigen::Index i = 0; i < n; ++i) {
      const int mesure = bloc.mesures[static_cast<std::size_t>(i)];
      enBloc[static_cast<std::size_t>(mesure)] = 1;
      if (reseau.mesures[static_cast<std::size_t>(mesure)].ecarte) continue;
      gardees.push_back(i);
      g.mesures.push_back(mesure);
    }
    const auto k = static_cast<Eigen::Index>(gardees.size());
    g.C.resize(k, k);
    for (Eigen::Index i = 0; i < k; ++i)
      for (Eigen::Index j = 0; j < k; ++j)
        g.C(i, j) = bloc.C[static_cast<std::size_t>(gardees[static_cast<std::size_t>(i)] * n +
                                                    gardees[static_cast<std::size_t>(j)])];
    if (k > 0) m_groupes.push_back(std::move(g));
  }
  for (std::size_t i = 0; i < reseau.mesures.size(); ++i) {
    if (enBloc[i] || reseau.mesures[i].ecarte) continue;
    const double s = reseau.mesures[i].ecart;
    m_groupes.push_back({{static_cast<int>(i)}, Eigen::MatrixXd::Constant(1, 1, s * s), {}});
  }
  for (groupe& g : m_groupes) g.P = g.C.inverse();
}

void systemePondere::facteursDePoids(const std::vector<double>& facteursPoids) {
  for (groupe& g : m_groupes) {
    Eigen::VectorXd f(g.C.rows());
    for (Eigen::Index i = 0; i < f.size(); ++i)
      f[i] = std::sqrt(facteursPoids[static_cast<std::size_t>(g.mesures[static_cast<std::size_t>(i)])]);
    g.P = f.asDiagonal() * g.C.inverse() * f.asDiagonal();
  }
}

int systemePondere::colonne(const lignePonderee::terme& t) const {
  if (t.point < 0) return m_colonnes.orientations[static_cast<std::size_t>(t.axe)];
  return m_colonnes.points[static_cast<std::size_t>(t.point)].at(static_cast<std::size_t>(t.axe));
}

/// Every product of two derivatives that N sums up: its row, its column, its value. Always in one order.
template <class Work>
void systemePondere::parcourirProduits(Work travail) const {
  for (const groupe& g : m_groupes) {
    for (std::size_t a = 0; a < g.mesures.size(); ++a) {
      for (std::size_t b = 0; b < g.mesures.size(); ++b) {
        const double p = g.P(static_cast<Eigen::Index>(a), static_cast<Eigen::Index>(b));
        for (const lignePonderee::terme& s : ligne(g.mesures[a])) {
          const int i = colonne(s);
          if (i < 0) continue;
          for (const lignePonderee::terme& t : ligne(g.mesures[b])) {
            const int j = colonne(t);
            if (j >= 0 && i >= j) travail(i, j, s.a * p * t.a);
          }
        }
      }
    }
  }
}

/// The pattern of N, and where each product goes in it.
void systemePondere::formerStructure() {
  std::vector<Eigen::Triplet<double>> elements;
  for (int i = 0; i < m_colonnes.nombre; ++i) elements.emplace_back(i, i, 0.0);
  parcourirProduits([&](int i, int j, double) { elements.emplace_back(i, j, 0.0); });
  FacteursParBlocs::Matrice& N = m_facteurs->N;
  N.resize(m_colonnes.nombre, m_colonnes.nombre);
  N.setFromTriplets(elements.begin(), elements.end());
  m_facteurs->places.clear();
  parcourirProduits([&](int i, int j, double) {
    const int* const debut = N.innerIndexPtr() + N.outerIndexPtr()[j];
    const int* const fin = N.innerIndexPtr() + N.outerIndexPtr()[j + 1];
    m_facteurs->places.push_back(static_cast<int>(std::lower_bound(debut, fin, i) - N.innerIndexPtr()));
  });
}

/// N, with 1 alone on the diagonal of what is held.
void systemePondere::former() {
  FacteursParBlocs::Matrice& N = m_facteurs->N;
  if (!m_facteurs->analyse) formerStructure();
  std::fill(N.valuePtr(), N.valuePtr() + N.nonZeros(), 0.0);
  std::size_t rang = 0;
  parcourirProduits([&](int i, int j, double valeur) {
    const int place = m_facteurs->places[rang++];
    const bool tenu = m_ancre[static_cast<std::size_t>(i)] || m_ancre[static_cast<std::size_t>(j)];
    if (!tenu) N.valuePtr()[place] += valeur;
  });
  for (int i = 0; i < m_colonnes.nombre; ++i)
    if (m_ancre[static_cast<std::size_t>(i)]) N.coeffRef(i, i) = 1.0;
}

bool systemePondere::factoriserAvecAncres() {
  former();
  facteurs& f = *m_facteurs;
  const Eigen::VectorXd diagonale = f.N.diagonal();
  if (!diagonale.allFinite()) return false;
  if (!f.analyse) f.ldlt.analyser(f.N);
  f.analyse = true;
  f.regulier = f.ldlt.factoriser(f.N);
  return true;
}

/// Holds the unknowns whose pivots vanish, from the first one on: those behind it are worth nothing.
bool systemePondere::chercherDatum() {
  facteurs& f = *m_facteurs;
  Eigen::VectorXd pleine;
  for (int essai = 0; essai <= m_colonnes.nombre; ++essai) {
    if (!factoriserAvecAncres()) return false;
    if (essai == 0) pleine = f.N.diagonal();
    int faible = -1;
    for (const int i : f.ldlt.ordre()) {
      if (m_ancre[static_cast<std::size_t>(i)]) continue;
      const double part = pleine[i] > 0.0 ? f.ldlt.pivot(i) / pleine[i] : 0.0;
      if (!(part > kPivotNul) || !std::isfinite(part)) {
        faible = i;
        m_ancre[static_cast<std::size_t>(i)] = 1;
        if (essai < kMouvementsMax) break;
      }
    }
    if (faible < 0) return f.regulier;
  }
  return false;
}

void systemePondere::formerDatum() {
  std::vector<int> J;
  for (int i = 0; i < m_colonnes.nombre; ++i)
    if (m_ancre[static_cast<std::size_t>(i)]) J.push_back(i);
  const auto d = static_cast<Eigen::Index>(J.size());
  m_V = Eigen::MatrixXd::Zero(m_colonnes.nombre, d);
  if (d == 0) return;
  // The columns of N that were put out of it.
  for (const groupe& g : m_groupes) {
    for (std::size_t a = 0; a < g.mesures.size(); ++a)
      for (std::size_t b = 0; b < g.mesures.size(); ++b)
        for (const lignePonderee::terme& t : ligne(g.mesures[b])) {
          const int j = colonne(t);
          if (j < 0 || !m_ancre[static_cast<std::size_t>(j)]) continue;
          const Eigen::Index k = std::lower_bound(J.begin(), J.end(), j) - J.begin();
          const double p = g.P(static_cast<Eigen::Index>(a), static_cast<Eigen::Index>(b));
          for (const lignePonderee::terme& s : ligne(g.mesures[a]))
            if (const int i = colonne(s); i >= 0) m_V(i, k) -= s.a * p * t.a;
        }
  }
  m_V = inverseFois(m_V);
  for (Eigen::Index k = 0; k < d; ++k) m_V(J[static_cast<std::size_t>(k)], k) = 1.0;
  m_B = m_V;
  for (int i = 0; i < m_colonnes.nombre; ++i) {
    const auto place = m_colonnes.places()[static_cast<std::size_t>(i)];
    if (place.point < 0 ||
        m_reseau.point(place.point).statut.at(static_cast<std::size_t>(place.axe)) != statutCoordonnee::libre)
      m_B.row(i).setZero();
  }
  const Eigen::MatrixXd M = produitDatum();
  const Eigen::JacobiSVD<Eigen::MatrixXd> svd(M);
  m_datumDefini = svd.singularValues()[d - 1] > kDatumNul * std::max(svd.singularValues()[0], 1e-300);
  if (!m_datumDefini) return;
  m_T = m_V * M.inverse();
  m_U = inverseFois(m_B);
  m_W = m_B.transpose() * m_U;
}

/// B^T V, the motions reduced to one size.
Eigen::MatrixXd systemePondere::produitDatum() const { return m_B.transpose() * m_V; }

Eigen::MatrixXd systemePondere::mouvementsSansDatum() const {
  if (m_V.cols() == 0 || m_datumDefini) return Eigen::MatrixXd::Zero(m_colonnes.nombre, 0);
  const Eigen::JacobiSVD<Eigen::MatrixXd> svd(produitDatum(), Eigen::ComputeFullV);
  const Eigen::VectorXd s = svd.singularValues();
  std::vector<Eigen::Index> libres;
  for (Eigen::Index k = 0; k < s.size(); ++k)
    if (!(s[k] > kDatumNul * std::max(s[0], 1e-300))) libres.push_back(k);
  Eigen::MatrixXd sans(m_colonnes.nombre, static_cast<Eigen::Index>(libres.size()));
  for (std::size_t k = 0; k < libres.size(); ++k)
    sans.col(static_cast<Eigen::Index>(k)) = m_V * svd.matrixV().col(libres[k]);
  return sans;
}

bool systemePondere::factoriser() {
  for (const groupe& g : m_groupes)
    for (const int i : g.mesures)
      m_lignes[static_cast<std::size_t>(i)] =
          deriver(m_reseau, m_reseau.mesures[static_cast<std::size_t>(i)]);
  if (!m_datumConnu) {
    m_datumConnu = true;
    if (!chercherDatum()) return false;
  } else if (!factoriserAvecAncres() || !m_facteurs->regulier) {
    return false;
  }
  formerDatum();
  return true;
}

Eigen::MatrixXd systemePondere::sansAncres(const Eigen::MatrixXd& b) const {
  Eigen::MatrixXd tenu = b;
  for (int i = 0; i < m_colonnes.nombre; ++i)
    if (m_ancre[static_cast<std::size_t>(i)]) tenu.row(i).setZero();
  return tenu;
}

Eigen::MatrixXd systemePondere::inverseFois(const Eigen::MatrixXd& b) const {
  return m_facteurs->ldlt.resoudre(sansAncres(b));
}

Eigen::MatrixXd systemePondere::formeInverse(const Eigen::MatrixXd& b) const {
  return m_facteurs->ldlt.formeInverse(sansAncres(b));
}

Eigen::VectorXd systemePondere::resoudre(const std::vector<double>& l) const {
  Eigen::VectorXd b = Eigen::VectorXd::Zero(m_colonnes.nombre);
  for (const groupe& g : m_groupes) {
    for (std::size_t a = 0; a < g.mesures.size(); ++a) {
      double pl = 0.0;
      for (std::size_t k = 0; k < g.mesures.size(); ++k)
        pl += g.P(static_cast<Eigen::Index>(a), static_cast<Eigen::Index>(k)) *
              l[static_cast<std::size_t>(g.mesures[k])];
      for (const lignePonderee::terme& t : ligne(g.mesures[a]))
        if (const int i = colonne(t); i >= 0) b[i] += t.a * pl;
    }
  }
  Eigen::VectorXd x = inverseFois(b);
  if (m_V.cols() == 0 || !m_datumDefini) return x;
  // The datum rests on the coordinates as given, not on those of the last pass.
  Eigen::VectorXd total = x;
  for (int i = 0; i < m_colonnes.nombre; ++i) {
    const auto place = m_colonnes.places()[static_cast<std::size_t>(i)];
    if (place.point < 0) continue;
    const auto axe = static_cast<std::size_t>(place.axe);
    const pointPondere& p = m_reseau.point(place.point);
    if (p.statut.at(axe) == statutCoordonnee::libre) total[i] += p.c.at(axe) - p.donnee.at(axe);
  }
  x -= m_T * (m_B.transpose() * total);
  return x;
}

double systemePondere::somme(const std::vector<double>& v) const {
  double somme = 0.0;
  for (const groupe& g : m_groupes)
    for (std::size_t a = 0; a < g.mesures.size(); ++a)
      for (std::size_t b = 0; b < g.mesures.size(); ++b)
        somme += v[static_cast<std::size_t>(g.mesures[a])] *
                 g.P(static_cast<Eigen::Index>(a), static_cast<Eigen::Index>(b)) *
                 v[static_cast<std::size_t>(g.mesures[b])];
  return somme;
}

void systemePondere::inverser() {
  if (m_colonnes.nombre > 0) m_facteurs->ldlt.inverser();
}

double systemePondere::cofacteurBrut(int i, int j) const {
  if (i < 0 || j < 0 || m_ancre[static_cast<std::size_t>(i)] || m_ancre[static_cast<std::size_t>(j)])
    return 0.0;
  return m_facteurs->ldlt.inverse(i, j);
}

double systemePondere::cofacteur(int i, int j) const {
  if (i < 0 || j < 0) return 0.0;
  const double q = cofacteurBrut(i, j);
  if (m_V.cols() == 0 || !m_datumDefini) return q;
  return q - m_T.row(i).dot(m_U.row(j)) - m_U.row(i).dot(m_T.row(j)) + (m_T.row(i) * m_W).dot(m_T.row(j));
}

Eigen::VectorXd systemePondere::colonneDeQ(int j) const {
  Eigen::VectorXd q = inverseFois(Eigen::VectorXd::Unit(m_colonnes.nombre, j));
  if (m_ancre[static_cast<std::size_t>(j)]) q.setZero();
  if (m_V.cols() == 0 || !m_datumDefini) return q;
  q -= m_T * m_U.row(j).transpose() + m_U * m_T.row(j).transpose() - m_T * (m_W * m_T.row(j).transpose());
  return q;
}

}  // namespace veltora
