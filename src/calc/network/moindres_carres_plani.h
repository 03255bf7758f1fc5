#pragma once

#include "calc/network/donnees_reseau.h"
#include "calc/network/systeme_normal.h"

#include <string>
#include <vector>

namespace veltora {

/// Whether an angle or a distance has a row in the plan: all points that it names are usable.
bool compteEnPlan(const donneesReseau& reseau, const ObservationReduite& o);

/// One linearised system of the plan.
class systemePlani {
public:
  explicit systemePlani(donneesReseau& reseau) : m_reseau(reseau) {}
  /// Solves, logs and moves the points. Logs an empty solution and moves nothing when there is none.
  /// @return norm of the step; `kEchecCalcul` for a singular system, not a number when a value is none
  double resoudre(std::wstring& journal);
  /// The same without a log, by the sparse factorisation alone.
  double resoudreEnSilence();
  /// Behind a pass that gave no number.
  [[nodiscard]] const arretPasse& arret() const { return m_arret; }
  /// Numbers the unknowns and gathers the rows.
  systemeNormal lineariser();
  /// Points to which some of the unknowns belong, each once.
  [[nodiscard]] std::vector<int> pointsDe(const std::vector<int>& inconnues) const;

private:
  void numeroter();
  /// Whether all rows, and their products, are numbers; says in `m_arret` where they are not.
  bool verifierLignes(const systemeNormal& systeme);
  bool verifierSolution(const std::vector<double>& x);
  [[nodiscard]] systemeNormal::Ligne ligne(const ObservationReduite& o) const;
  void deriver(systemeNormal::Ligne& ligne, int point, double dx, double dy) const;
  void journaliserResidus(std::wstring& journal, const std::vector<double>& v,
                          const systemeNormal& systeme) const;
  void deplacer(const std::vector<double>& x);
  void journaliserPoints(std::wstring& journal) const;

  donneesReseau& m_reseau;
  std::vector<int> m_colonnes;
  arretPasse m_arret;
  int m_inconnus = 0;
};

}  // namespace veltora
