#pragma once

#include "base/export.h"

#include <Eigen/Dense>
#include <Eigen/SparseCore>
#include <cstddef>
#include <vector>

namespace veltora {

/// L D L^T of a symmetric sparse matrix N, L with ones on its diagonal, in the order of approximate minimum
/// degree. Neighbouring columns of L with (nearly) the same rows are one block, worked upon as a dense matrix
/// (Duff and Reid 1983, The multifrontal solution of indefinite sparse symmetric linear equations; Liu 1992,
/// The multifrontal method for sparse matrix solution). No rows are exchanged for the size of pivots.
/// Columns and rows of arguments and results are those of N. Sums go in the same order on every machine.
class VELTORA_API FacteursParBlocs {
public:
  using Matrice = Eigen::SparseMatrix<double>;
  /// Order and pattern. @param N  its lower half, compressed, each diagonal element with a place
  void analyser(const Matrice& N);
  /// Of a matrix with the analysed pattern. A pivot of 0 or that is no number is held: its column of L stays
  /// empty. @return whether there is none
  bool factoriser(const Matrice& N);
  /// Columns as they are eliminated.
  [[nodiscard]] const std::vector<int>& ordre() const { return m_ordre; }
  /// The element of D that belongs to a column.
  [[nodiscard]] double pivot(int colonne) const { return m_D[rang(colonne)]; }
  /// N^-1 b; b with one column or more.
  [[nodiscard]] Eigen::MatrixXd resoudre(const Eigen::MatrixXd& b) const;
  /// b^T N^-1 b by half a solution, passing over the blocks that b does not reach.
  [[nodiscard]] Eigen::MatrixXd formeInverse(const Eigen::MatrixXd& b) const;

  /// Computes the elements of N^-1 that stand where L has some (Takahashi, Fagan and Chin 1973, Formation of
  /// a sparse bus impedance matrix; by blocks: Erisman and Tinney 1975, On computing certain elements of the
  /// inverse of a sparse matrix).
  void inverser();
  /// Behind `inverser`: an element of N^-1, 0 where L has none.
  [[nodiscard]] double inverse(int i, int j) const;

private:
  /// Columns `debut` to `debut + largeur` of L, its rows below them, and where its values begin: column by
  /// column, those of the square on the diagonal on top of those of `lignes`.
  struct bloc {
    int debut = 0;
    int largeur = 0;
    std::vector<int> lignes;
    std::vector<int> places;  ///< of `lignes` among columns and rows of the parent
    int parent = -1;          ///< the block that the first of `lignes` is a column of
    std::size_t valeurs = 0;
    [[nodiscard]] int hauteur() const { return largeur + static_cast<int>(lignes.size()); }
  };
  using Bloc = Eigen::Map<Eigen::MatrixXd>;
  using BlocConstant = Eigen::Map<const Eigen::MatrixXd>;

  void ordonner(const Matrice& N);
  void formerBlocs(const std::vector<int>& parents, const std::vector<std::vector<int>>& lignes);
  void ajouterBloc(int debut, int finDuGroupe, const std::vector<int>& lignes);
  void lierBlocs();
  void placerValeurs(const Matrice& N);
  static constexpr std::size_t kNulle = static_cast<std::size_t>(-1);
  /// Of an element of L, by ranks, among its values; `kNulle` where its block has none.
  [[nodiscard]] std::size_t place(const bloc& s, int i, int j) const;
  [[nodiscard]] bool eliminer(const bloc& s, Bloc& L);
  void donnerAuParent(const bloc& s, const Eigen::MatrixXd& reste, Eigen::MatrixXd& duParent);
  void inverserBloc(const bloc& s, const Eigen::MatrixXd& duParent, Eigen::MatrixXd& Z) const;
  void avancer(Eigen::MatrixXd& x) const;
  void reculer(Eigen::MatrixXd& x) const;
  [[nodiscard]] Eigen::MatrixXd permuter(const Eigen::MatrixXd& b) const;
  [[nodiscard]] int rang(int colonne) const { return m_rangs[static_cast<std::size_t>(colonne)]; }
  [[nodiscard]] BlocConstant valeurs(const bloc& s) const {
    return {m_L.data() + s.valeurs, s.hauteur(), s.largeur};
  }

  std::vector<int> m_ordre;
  std::vector<int> m_rangs;  ///< the inverse of `m_ordre`
  std::vector<bloc> m_blocs;
  std::vector<int> m_blocDe;          ///< of each column, by rank
  std::vector<std::size_t> m_places;  ///< in `m_L`, of each value of N
  std::vector<double> m_L;
  std::vector<double> m_Z;  ///< as `m_L`
  Eigen::VectorXd m_D;      ///< by rank
};

}  // namespace veltora
