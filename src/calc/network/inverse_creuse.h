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
    std::vector<double> somme;
    std::vector<double> tampon(static_cast<std::size_t>(m_Z.cols()));
    for (Eigen::Index j = m_Z.cols() - 1; j >= 0; --j) {
      const int debut = L.outerIndexPtr()[j];
      const auto n = static_cast<std::size_t>(L.outerIndexPtr()[j + 1] - debut);
      const double* const l = L.valuePtr() + debut;
      const int* const lignes = L.innerIndexPtr() + debut;
      somme.assign(n, 0.0);
      for (std::size_t a = 0; a < n; ++a) ajouterColonne(a, n, lignes, l, somme, tampon);
      double diagonale = 1.0 / D[j];
      for (std::size_t a = 0; a < n; ++a) {
        diagonale += l[a] * somme[a];
        m_Z.valuePtr()[debut + static_cast<int>(a)] = -somme[a];
      }
      m_diagonale[j] = diagonale;
    }
  }
  /// Of the permuted matrix; 0 where L has no element.
  [[nodiscard]] double operator()(Eigen::Index i, Eigen::Index j) const {
    return i == j ? m_diagonale[i] : m_Z.coeff(std::max(i, j), std::min(i, j));
  }

private:
  /// somme += Z l over the rows of one column of L, as far as column k = lignes[a] of Z (both halves of the
  /// matrix) has part in it. The rows behind k all stand in that column.
  void ajouterColonne(std::size_t a, std::size_t n, const int* lignes, const double* l,
                      std::vector<double>& somme, std::vector<double>& tampon) const {
    const int k = lignes[a];
    const int debut = m_Z.outerIndexPtr()[k];
    const int fin = m_Z.outerIndexPtr()[k + 1];
    const std::size_t reste = n - a - 1;
    const double* z = m_Z.valuePtr() + debut;
    if (static_cast<std::size_t>(fin - debut) != reste) {
      const int* ligne = m_Z.innerIndexPtr() + debut;
      const double* valeur = z;
      for (std::size_t i = 0; i < reste; ++i, ++ligne, ++valeur) {
        while (*ligne != lignes[a + 1 + i]) {
          ++ligne;
          ++valeur;
        }
        tampon[i] = *valeur;
      }
      z = tampon.data();
    }
    const double facteur = l[a];
    double total = somme[a] + m_diagonale[k] * facteur;
    double* const s = somme.data() + a + 1;
    const double* const suite = l + a + 1;
    for (std::size_t i = 0; i < reste; ++i) {
      s[i] += z[i] * facteur;
      total += z[i] * suite[i];
    }
    somme[a] = total;
  }
  MatriceCreuse m_Z;
  Eigen::VectorXd m_diagonale;
};

}  // namespace veltora
