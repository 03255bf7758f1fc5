#pragma once

#include "calc/network/donnees_reseau.h"
#include "calc/network/systeme_normal.h"

#include <string>
#include <vector>

namespace veltora {

/// Provisional heights, each the mean of what the height differences to usable points give; such a point
/// serves the next ones. @return true when at least one was found
bool altitudesProvisoires(donneesReseau& reseau, std::wstring& journal);

/// Whether an observation has a row in the system of the heights: a height difference between usable points
/// that are not both fixed in height.
bool compteEnAltitude(const donneesReseau& reseau, const ObservationReduite& o);

/// The linear system of the heights: Z(vise) - Z(station) = measured, by least squares (Ghilani, Adjustment
/// Computations, differential leveling). The unknowns are the heights themselves.
class systemeAlti {
public:
  explicit systemeAlti(donneesReseau& reseau) : m_reseau(reseau) {}
  /// Solves, logs and sets the heights. @return norm of the heights; `kEchecCalcul` for a singular system
  double resoudre(std::wstring& journal);
  /// Numbers the unknowns and gathers the rows, once.
  systemeNormal lineariser();

private:
  [[nodiscard]] int colonne(int point) const { return m_colonnes.at(static_cast<std::size_t>(point)); }
  [[nodiscard]] systemeNormal::Ligne ligne(const ObservationReduite& o) const;
  void journaliserResidus(std::wstring& journal, std::vector<double>& v, const systemeNormal& systeme) const;

  donneesReseau& m_reseau;
  std::vector<int> m_colonnes;
};

}  // namespace veltora
