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
  /// Solves, logs and moves the points. @return norm of the step; `kEchecCalcul` for a singular system
  double resoudre(std::wstring& journal);
  /// Numbers the unknowns and gathers the rows.
  systemeNormal lineariser();
  /// Points to which some of the unknowns belong, each once.
  [[nodiscard]] std::vector<int> pointsDe(const std::vector<int>& inconnues) const;

private:
  void numeroter();
  [[nodiscard]] systemeNormal::Ligne ligne(const ObservationReduite& o) const;
  void deriver(systemeNormal::Ligne& ligne, int point, double dx, double dy) const;
  void journaliserResidus(std::wstring& journal, const std::vector<double>& v,
                          const systemeNormal& systeme) const;
  void deplacer(std::wstring& journal, const std::vector<double>& x);

  donneesReseau& m_reseau;
  std::vector<int> m_colonnes;
  int m_inconnus = 0;
};

}  // namespace veltora
