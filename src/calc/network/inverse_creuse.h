#pragma once

#include <Eigen/SparseCholesky>
#include <algorithm>
#include <cstddef>
#include <vector>

namespace veltora {

using MatriceCreuse = Eigen::SparseMatrix<double>;
/// L D L^T of the lower half of a symmetric matrix, in an order of its own (`permutationP`).
using Facteurs = Eigen::SimplicialLDLT<MatriceCreuse, Eigen::Lower>;

/// The elements of the inverse of L D L^T that stand where L has some, and its diagonal, column by column
/// from the last: Z = D^-1 + (I - L^T) Z, of which each element needs only elements behind it within the same
/// pattern (Takahashi, Fagan and Chin 1973, Formation of a sparse bus impedance matrix).
class InverseCreuse {
public:
  explicit InverseCreuse(const Facteurs& facteurs)
      : m_Z(facteurs.matrixL().nestedExpression()), m_diagonale(m_Z.cols()) {
    const MatriceCreuse L = m_Z;
    const Eigen::VectorXd D = facteurs.vectorD();
    Eigen::VectorXd l = Eigen::VectorXd::Zero(m_Z.cols());
    Eigen::VectorXd somme = l;
    std::vector<char> dans(static_cast<std::size_t>(m_Z.cols()), 0);  // rows of the column of L
    const auto marque = [&dans](Eigen::Index ligne) -> char& {
      return dans[static_cast<std::size_t>(ligne)];
    };
    for (Eigen::Index j = m_Z.cols() - 1; j >= 0; --j) {
      for (MatriceCreuse::InnerIterator e(L, j); e; ++e) {
        l[e.row()] = e.value();
        marque(e.row()) = 1;
      }
      for (MatriceCreuse::InnerIterator e(L, j); e; ++e) ajouterColonne(e.row(), l, dans, somme);
      m_diagonale[j] = 1.0 / D[j];
      for (MatriceCreuse::InnerIterator e(m_Z, j); e; ++e) {
        m_diagonale[j] += l[e.row()] * somme[e.row()];
        e.valueRef() = -somme[e.row()];
      }
      for (MatriceCreuse::InnerIterator e(L, j); e; ++e) {
        l[e.row()] = somme[e.row()] = 0.0;
        marque(e.row()) = 0;
      }
    }
  }
  /// Of the permuted matrix; 0 where L has no element.
  [[nodiscard]] double operator()(Eigen::Index i, Eigen::Index j) const {
    return i == j ? m_diagonale[i] : m_Z.coeff(std::max(i, j), std::min(i, j));
  }

private:
  /// somme += Z l in the marked rows, as far as column k of Z (both halves of the matrix) has part in it.
  void ajouterColonne(Eigen::Index k, const Eigen::VectorXd& l, const std::vector<char>& dans,
                      Eigen::VectorXd& somme) const {
    somme[k] += m_diagonale[k] * l[k];
    for (MatriceCreuse::InnerIterator e(m_Z, k); e; ++e) {
      if (dans[static_cast<std::size_t>(e.row())] == 0) continue;
      somme[e.row()] += e.value() * l[k];
      somme[k] += e.value() * l[e.row()];
    }
  }
  MatriceCreuse m_Z;
  Eigen::VectorXd m_diagonale;
};

}  // namespace veltora
