#include "calc/network/systeme_normal.h"

#include "base/format.h"
#include "calc/network/inverse_creuse.h"

#include <jama/jama_qr.h>
#include <tnt/tnt_array1d.h>
#include <tnt/tnt_array2d.h>
#include <Eigen/SparseCholesky>
#include <algorithm>
#include <cmath>
#include <numeric>

namespace veltora {
namespace {

// A pivot of the sparse factorisation counts as positive when it keeps this share of its diagonal element.
constexpr double kPivotMinimal = 1e-10;

bool positifs(const Facteurs& facteurs, const MatriceCreuse& N) {
  if (facteurs.info() != Eigen::Success) return false;
  const Eigen::VectorXd diagonale = facteurs.permutationP() * N.diagonal();
  const Eigen::VectorXd pivots = facteurs.vectorD();
  for (Eigen::Index i = 0; i < pivots.size(); ++i) {
    if (!(pivots[i] > kPivotMinimal * diagonale[i]) || !std::isfinite(pivots[i])) return false;
  }
  return true;
}

}  // namespace

/// Lower half of N, and b.
struct systemeCreux {
  MatriceCreuse N;
  Eigen::VectorXd b;
};

std::vector<std::vector<int>> systemeNormal::parties() const {
  std::vector<int> chef(static_cast<std::size_t>(m_inconnues));
  std::iota(chef.begin(), chef.end(), 0);
  const auto trouver = [&chef](int i) {
    while (chef[static_cast<std::size_t>(i)] != i) {
      int& suivant = chef[static_cast<std::size_t>(i)];
      i = suivant = chef[static_cast<std::size_t>(suivant)];
    }
    return i;
  };
  for (const Ligne& ligne : m_lignes) {
    for (const auto& [i, a] : ligne.coefficients) {
      chef[static_cast<std::size_t>(trouver(i))] = trouver(ligne.coefficients.front().first);
    }
  }
  std::vector<std::vector<int>> membres(static_cast<std::size_t>(m_inconnues));
  for (int i = 0; i < m_inconnues; ++i) membres[static_cast<std::size_t>(trouver(i))].push_back(i);
  std::erase_if(membres, [](const std::vector<int>& partie) { return partie.empty(); });
  return membres;
}

std::vector<double> systemeNormal::resoudre() const {
  if (m_inconnues <= kInconnuesDenses) return resoudreDense();
  const std::vector<std::vector<int>> toutes = parties();
  std::vector<systemeNormal> systemes;
  std::vector<std::pair<std::size_t, int>> places(static_cast<std::size_t>(m_inconnues));
  for (std::size_t p = 0; p < toutes.size(); ++p) {
    systemes.emplace_back(static_cast<int>(toutes[p].size()));
    for (std::size_t k = 0; k < toutes[p].size(); ++k)
      places[static_cast<std::size_t>(toutes[p][k])] = {p, static_cast<int>(k)};
  }
  for (Ligne ligne : m_lignes) {
    if (ligne.coefficients.empty()) continue;
    const std::size_t partie = places[static_cast<std::size_t>(ligne.coefficients.front().first)].first;
    for (auto& [i, a] : ligne.coefficients) i = places[static_cast<std::size_t>(i)].second;
    systemes[partie].ajouter(std::move(ligne));
  }
  std::vector<double> x(static_cast<std::size_t>(m_inconnues));
  for (std::size_t p = 0; p < toutes.size(); ++p) {
    std::vector<double> y;
    if (systemes[p].m_inconnues > kInconnuesDenses) y = systemes[p].resoudreCreux();
    if (y.empty()) y = systemes[p].resoudreDense();
    if (y.empty()) return {};
    for (std::size_t k = 0; k < y.size(); ++k) x[static_cast<std::size_t>(toutes[p][k])] = y[k];
  }
  return x;
}

std::vector<double> systemeNormal::resoudreDense() const {
  TNT::Array2D<double> N(m_inconnues, m_inconnues, 0.0);
  TNT::Array1D<double> b(m_inconnues, 0.0);
  for (const Ligne& ligne : m_lignes) {
    for (const auto& [i, a] : ligne.coefficients) {
      const double t = a * ligne.poids;
      for (const auto& [j, c] : ligne.coefficients) N[i][j] += t * c;
      b[i] += t * ligne.second;
    }
  }
  const JAMA::QR<double> qr(N);
  const TNT::Array1D<double> x = qr.solve(b);
  std::vector<double> resultat(static_cast<std::size_t>(x.dim()));
  for (int i = 0; i < x.dim(); ++i) resultat[static_cast<std::size_t>(i)] = x[i];
  return resultat;
}

systemeCreux systemeNormal::creux() const {
  std::vector<Eigen::Triplet<double>> elements;
  systemeCreux resultat;
  resultat.b = Eigen::VectorXd::Zero(m_inconnues);
  for (const Ligne& ligne : m_lignes) {
    for (const auto& [i, a] : ligne.coefficients) {
      const double t = a * ligne.poids;
      for (const auto& [j, c] : ligne.coefficients) {
        if (j <= i) elements.emplace_back(i, j, t * c);
      }
      resultat.b[i] += t * ligne.second;
    }
  }
  resultat.N.resize(m_inconnues, m_inconnues);
  resultat.N.setFromTriplets(elements.begin(), elements.end());
  return resultat;
}

std::vector<double> systemeNormal::resoudreCreux() const {
  const systemeCreux systeme = creux();
  const Facteurs facteurs(systeme.N);
  if (!positifs(facteurs, systeme.N)) return {};
  const Eigen::VectorXd x = facteurs.solve(systeme.b);
  return {x.data(), x.data() + x.size()};
}

std::vector<int> systemeNormal::inconnuesFaibles() const {
  MatriceCreuse N = creux().N;
  const Eigen::VectorXd diagonale = N.diagonal();
  // A little more on the diagonal lets the factorisation pass the pivots that are lost.
  for (Eigen::Index i = 0; i < N.rows(); ++i) {
    N.coeffRef(i, i) = diagonale[i] == 0.0 ? 1.0 : diagonale[i] * (1.0 + kPivotMinimal * 1e-3);
  }
  const Facteurs facteurs(N);
  std::vector<int> faibles;
  if (facteurs.info() != Eigen::Success) return faibles;
  const Eigen::VectorXd pivots = facteurs.permutationPinv() * Eigen::VectorXd(facteurs.vectorD());
  for (Eigen::Index i = 0; i < pivots.size(); ++i) {
    if (diagonale[i] == 0.0 || pivots[i] <= kPivotMinimal * diagonale[i]) {
      faibles.push_back(static_cast<int>(i));
    }
  }
  return faibles;
}

std::vector<double> systemeNormal::produit(const std::vector<double>& x) const {
  std::vector<double> v;
  v.reserve(m_lignes.size());
  for (const Ligne& ligne : m_lignes) {
    double somme = 0.0;
    for (const auto& [j, a] : ligne.coefficients) somme += a * x[static_cast<std::size_t>(j)];
    v.push_back(somme);
  }
  return v;
}

struct facteursSysteme : Facteurs {
  using Facteurs::Facteurs;
};

controleSysteme::controleSysteme(systemeNormal systeme) : m_systeme(std::move(systeme)) {
  if (m_systeme.inconnues() == 0) return;
  const MatriceCreuse N = m_systeme.creux().N;
  auto facteurs = std::make_unique<facteursSysteme>(N);
  if (positifs(*facteurs, N)) m_facteurs = std::move(facteurs);
}

controleSysteme::~controleSysteme() = default;

std::vector<double> controleSysteme::redondances() const {
  const InverseCreuse inverse(*m_facteurs);
  const auto& rang = m_facteurs->permutationP().indices();
  std::vector<double> parts;
  parts.reserve(m_systeme.lignes().size());
  for (const systemeNormal::Ligne& ligne : m_systeme.lignes()) {
    double levier = 0.0;
    for (const auto& [i, a] : ligne.coefficients)
      for (const auto& [j, c] : ligne.coefficients) levier += a * c * inverse(rang[i], rang[j]);
    parts.push_back(1.0 - ligne.poids * levier);
  }
  return parts;
}

std::vector<double> controleSysteme::influences(std::size_t rangee) const {
  const std::vector<systemeNormal::Ligne>& lignes = m_systeme.lignes();
  Eigen::VectorXd a = Eigen::VectorXd::Zero(m_systeme.inconnues());
  for (const auto& [i, coefficient] : lignes[rangee].coefficients) a[i] += coefficient;
  const Eigen::VectorXd y = m_facteurs->solve(a);
  std::vector<double> parts = m_systeme.produit({y.data(), y.data() + y.size()});
  for (std::size_t j = 0; j < parts.size(); ++j)
    parts[j] = (j == rangee ? 1.0 : 0.0) - parts[j] * lignes[j].poids;
  return parts;
}

double norme(const std::vector<double>& x) {
  double somme = 0.0;
  for (const double element : x) somme += element * element;
  return std::sqrt(somme);
}

void journaliserVecteur(std::wstring& journal, const std::vector<double>& x) {
  journal += base::formater(std::wstring(L"\r\nVecteur %s (%d elements)"), L"Vecteur Solution",
                            static_cast<int>(x.size()));
  for (std::size_t i = 0; i < x.size(); ++i) {
    journal += base::formater(std::wstring(L"\r\n%d | %14.10f |"), static_cast<int>(i), x[i]);
  }
  journal += L"\r\n---------";
}

}  // namespace veltora
