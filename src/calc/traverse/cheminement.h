#pragma once

#include "calc/traverse/tolerances_polygonale.h"

#include <complex>
#include <cstddef>
#include <string>
#include <vector>

namespace veltora {

struct polygonaleFermeeObs;
struct polygonaleOuverteObs;

/// How a traverse closes.
struct fermetureCheminement {
  double angulaire = 0.0;  ///< excess of the sum of the angles, radians
  double ecart = 0.0;      ///< planimetric misclosure, drawing units
  double longueur = 0.0;

  /// Within both tolerances. False for what is no number.
  [[nodiscard]] bool tient(const tolerancesPolygonale& tolerances, std::size_t nombreAngles) const;
  /// 0 for what closes exactly, 1 for one misclosure at its tolerance.
  [[nodiscard]] double note(const tolerancesPolygonale& tolerances, std::size_t nombreAngles) const;
};

/// A traverse of either kind, reduced to what decides how it closes. Vectors are complex numbers: north along
/// the real axis, east along the imaginary one, so that a factor of modulus one turns them clockwise.
class cheminement {
public:
  using vecteur = std::complex<double>;

  explicit cheminement(const polygonaleFermeeObs& obs);
  explicit cheminement(const polygonaleOuverteObs& obs);

  bool ouverte = false;
  double depart = 0.0;   ///< bearing as given, radians; closed: of the first leg, open: from the back sight
  double arrivee = 0.0;  ///< open: bearing that closes, radians
  vecteur but;           ///< from the departure to where the last leg should end
  std::vector<double> angles;          ///< radians, at stations 0, 1, ...; open: the closing angle comes last
  std::vector<double> distances;       ///< of the leg from station i to station i+1
  std::vector<std::wstring> stations;  ///< one more than legs
  std::vector<int> lignes;             ///< of the file, leg by leg; 0 for none

  /// By what the sum of the angles exceeds what it should be, radians. Whole turns count in a closed traverse
  /// and not in an open one, whose bearing of arrival may lie in any turn.
  [[nodiscard]] double exces() const;
  /// An excess less its whole turns where they do not count.
  [[nodiscard]] double sansTours(double exces) const;
  /// Bearings of the departure and of every leg, this excess spread as the computations do.
  [[nodiscard]] std::vector<double> gisements(double exces) const;
  /// Where the legs lead on these bearings, one more than legs.
  [[nodiscard]] std::vector<vecteur> sommets(const std::vector<double>& gisements) const;
  [[nodiscard]] double longueur() const;
  [[nodiscard]] fermetureCheminement fermeture() const;
  /// No infinity, nothing that is no number.
  [[nodiscard]] bool fini() const;
};

}  // namespace veltora
