#pragma once

#include "calc/adjustment/lignes_ponderees.h"

#include <Eigen/Dense>
#include <memory>
#include <vector>

namespace veltora {

/// The normal equations of a weighted network at its present coordinates, their datum and their inverse.
///
/// A    derivatives of the measures, C their covariances (blocks), P = C^-1, l = measured less computed
/// N    A^T P A, sparse
/// J    the unknowns whose pivot vanishes: each is held at 0, which is one datum out of many
/// V    the motions that no measure notices, one a column, one for each of J (N V = 0)
/// B    V where the coordinates are `libre`, 0 elsewhere
/// The solution on the datum of the free coordinates is S x with S = I - V (B^T V)^-1 B^T, its cofactors
/// S Q S^T (Baarda 1973, S-transformations and criterion matrices).
class VELTORA_API systemePondere {
public:
  explicit systemePondere(const reseauPondere& reseau);
  ~systemePondere();

  /// A group of measures with covariances between them, mostly one.
  struct groupe {
    std::vector<int> mesures;
    Eigen::MatrixXd C;
    Eigen::MatrixXd P;
  };
  [[nodiscard]] const std::vector<groupe>& groupes() const { return m_groupes; }
  [[nodiscard]] const colonnesPonderees& colonnes() const { return m_colonnes; }
  [[nodiscard]] const lignePonderee& ligne(int mesure) const {
    return m_lignes[static_cast<std::size_t>(mesure)];
  }
  /// The column of a term, -1 for what is fixed.
  [[nodiscard]] int colonne(const lignePonderee::terme& t) const;

  /// Derives anew at the present coordinates, factorises. @return false when a value is no number
  bool factoriser();
  /// Multiplies the weights of each measure, for robust estimation; to be called before `factoriser`.
  void facteursDePoids(const std::vector<double>& facteurs);
  /// Step of the unknowns, on the datum. @param l  measured less computed, one a measure
  [[nodiscard]] Eigen::VectorXd resoudre(const std::vector<double>& l) const;
  /// N^-1 b on the datum J, b with one column or more.
  [[nodiscard]] Eigen::MatrixXd inverseFois(const Eigen::MatrixXd& b) const;
  /// b^T N^-1 b on the datum J.
  [[nodiscard]] Eigen::MatrixXd formeInverse(const Eigen::MatrixXd& b) const;
  /// v^T P v
  [[nodiscard]] double somme(const std::vector<double>& v) const;

  /// Motions that no measure notices; columns over the unknowns.
  [[nodiscard]] const Eigen::MatrixXd& mouvements() const { return m_V; }
  /// Whether the free coordinates hold all of them.
  [[nodiscard]] bool datumDefini() const { return m_datumDefini; }
  /// Motions that the free coordinates do not hold either.
  [[nodiscard]] Eigen::MatrixXd mouvementsSansDatum() const;

  /// Computes the elements of the inverse where N has some.
  void inverser();
  /// A cofactor on the datum J: for what the datum does not touch, as A Q A^T. 0 for a column of -1. Of
  /// columns that one measure or block joins; 0 elsewhere.
  [[nodiscard]] double cofacteurBrut(int i, int j) const;
  /// On the datum that was asked for.
  [[nodiscard]] double cofacteur(int i, int j) const;
  /// The same of any two columns, by solving.
  [[nodiscard]] Eigen::VectorXd colonneDeQ(int j) const;

private:
  struct facteurs;
  template <class Work>
  void parcourirProduits(Work travail) const;
  void formerStructure();
  void former();
  void grouper(const reseauPondere& reseau);
  bool chercherDatum();
  void formerDatum();
  bool factoriserAvecAncres();
  [[nodiscard]] Eigen::MatrixXd produitDatum() const;
  [[nodiscard]] Eigen::MatrixXd sansAncres(const Eigen::MatrixXd& b) const;

  const reseauPondere& m_reseau;
  colonnesPonderees m_colonnes;
  std::vector<lignePonderee> m_lignes;
  std::vector<groupe> m_groupes;
  std::vector<char> m_ancre;
  bool m_datumConnu = false;
  bool m_datumDefini = true;
  Eigen::MatrixXd m_V;
  Eigen::MatrixXd m_B;
  Eigen::MatrixXd m_T;  ///< V (B^T V)^-1
  Eigen::MatrixXd m_U;  ///< Q B
  Eigen::MatrixXd m_W;  ///< B^T Q B
  std::unique_ptr<facteurs> m_facteurs;
};

}  // namespace veltora
