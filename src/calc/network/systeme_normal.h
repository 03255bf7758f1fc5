#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace veltora {

struct systemeCreux;

/// Linearised observations with few unknowns each, all of weight P (diagonal), and their normal
/// equations N x = b, where N = A^T P A and b = A^T P L (Gauss; Ghilani, Adjustment Computations,
/// principles of least squares).
class systemeNormal {
public:
  /// One row: (column, coefficient), right-hand side, weight. A column that stands twice counts with the sum.
  struct Ligne {
    std::vector<std::pair<int, double>> coefficients;
    double second = 0.0;
    double poids = 1.0;
  };
  explicit systemeNormal(int inconnues) : m_inconnues(inconnues) {}
  void ajouter(Ligne ligne) { m_lignes.push_back(std::move(ligne)); }
  [[nodiscard]] const std::vector<Ligne>& lignes() const { return m_lignes; }
  [[nodiscard]] int inconnues() const { return m_inconnues; }

  /// Small systems go to the dense QR by Householder's reflections (Householder 1958; Golub and Van Loan,
  /// Matrix Computations, orthogonalization). Above `kInconnuesDenses` unknowns each part that shares no
  /// observation with the others is solved by itself, with the same result to the last bit; a part that is
  /// still large by a sparse factorisation of the same equations, unless a pivot is not clearly positive,
  /// when the QR decides after all.
  /// @return empty when a diagonal of R is exactly 0
  [[nodiscard]] std::vector<double> resoudre() const;
  [[nodiscard]] std::vector<double> resoudreDense() const;
  /// @return empty when a pivot is not clearly positive
  [[nodiscard]] std::vector<double> resoudreCreux() const;
  /// Unknowns that the others leave undetermined: those whose pivot is lost in the rounding.
  [[nodiscard]] std::vector<int> inconnuesFaibles() const;
  /// v = A x
  [[nodiscard]] std::vector<double> produit(const std::vector<double>& x) const;

  static constexpr int kInconnuesDenses = 100;  ///< 50 points with X and Y

private:
  friend class controleSysteme;
  [[nodiscard]] systemeCreux creux() const;
  /// Unknowns of each part, ascending.
  [[nodiscard]] std::vector<std::vector<int>> parties() const;
  int m_inconnues;
  std::vector<Ligne> m_lignes;
};

/// How the residuals of a system show the errors of its rows: each is the sum of all errors, with the
/// elements of its row of R = I - A N^-1 A^T P (Baarda 1968, A testing procedure for use in geodetic
/// networks).
class controleSysteme {
public:
  explicit controleSysteme(systemeNormal systeme);
  ~controleSysteme();
  /// False without unknowns or when a pivot is not clearly positive; then nothing else is to be asked.
  [[nodiscard]] bool defini() const { return m_facteurs != nullptr; }
  /// The diagonal of R: the share of its own error that a row shows, from 0 (nothing else controls it) to 1.
  [[nodiscard]] std::vector<double> redondances() const;
  /// A row of R.
  [[nodiscard]] std::vector<double> influences(std::size_t rangee) const;

private:
  systemeNormal m_systeme;
  std::unique_ptr<struct facteursSysteme> m_facteurs;
};

/// Stands for the norm of a solution that could not be computed.
inline constexpr double kEchecCalcul = -1e+38;

double norme(const std::vector<double>& x);

/// The log's lines of a solution vector, each behind "\r\n".
void journaliserVecteur(std::wstring& journal, const std::vector<double>& x);

}  // namespace veltora
