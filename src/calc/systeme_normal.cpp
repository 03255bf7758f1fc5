#include "calc/systeme_normal.h"

#include "base/format.h"

#include <jama/jama_qr.h>
#include <tnt/tnt_array1d.h>
#include <tnt/tnt_array2d.h>
#include <Eigen/SparseCholesky>
#include <algorithm>
#include <cmath>

namespace veltora {
namespace {

// A pivot of the sparse factorisation counts as positive when it keeps this share of its diagonal element.
constexpr double kPivotMinimal = 1e-10;

using MatriceCreuse = Eigen::SparseMatrix<double>;

}  // namespace

std::vector<double> systemeNormal::resoudre() const {
  if (m_inconnues > kInconnuesDenses) {
    std::vector<double> x = resoudreCreux();
    if (!x.empty()) return x;
  }
  return resoudreDense();
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

std::vector<double> systemeNormal::resoudreCreux() const {
  std::vector<Eigen::Triplet<double>> elements;
  Eigen::VectorXd b = Eigen::VectorXd::Zero(m_inconnues);
  for (const Ligne& ligne : m_lignes) {
    for (const auto& [i, a] : ligne.coefficients) {
      const double t = a * ligne.poids;
      for (const auto& [j, c] : ligne.coefficients) {
        if (j <= i) elements.emplace_back(i, j, t * c);
      }
      b[i] += t * ligne.second;
    }
  }
  MatriceCreuse N(m_inconnues, m_inconnues);
  N.setFromTriplets(elements.begin(), elements.end());
  const Eigen::SimplicialLDLT<MatriceCreuse, Eigen::Lower> facteurs(N);
  if (facteurs.info() != Eigen::Success) return {};
  const Eigen::VectorXd diagonale = facteurs.permutationP() * N.diagonal();
  const Eigen::VectorXd pivots = facteurs.vectorD();
  for (Eigen::Index i = 0; i < pivots.size(); ++i) {
    if (!(pivots[i] > kPivotMinimal * diagonale[i]) || !std::isfinite(pivots[i])) return {};
  }
  const Eigen::VectorXd x = facteurs.solve(b);
  return {x.data(), x.data() + x.size()};
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

void journaliserVecteur(std::wstring& journal, const std::vector<double>& x) {
  journal +=
      base::formater(std::wstring(L"\r\nVecteur %s (%d elements)"), L"Solution", static_cast<int>(x.size()));
  for (std::size_t i = 0; i < x.size(); ++i) {
    journal += base::formater(std::wstring(L"\r\n%d | %14.10f |"), static_cast<int>(i), x[i]);
  }
  journal += L"\r\n---------";
}

}  // namespace veltora
