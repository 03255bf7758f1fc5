#pragma once

#include "base/export.h"
#include "base/growable_array.h"
#include "base/numbers.h"
#include "base/uncopyable.h"
#include "calc/network/formules_poids.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// What a network of points and its observations are. X east, Y north, metres; angles in radians, bearings
/// clockwise from +Y.
namespace veltora {

/// Of a metre and of a radian: the units in which residuals are printed.
inline constexpr double kMillimetres = 1000.0;
inline constexpr double kMilligrades = 63661.97723675814;  // 200000/pi

struct VELTORA_API pointACalculer {
  double X = base::Z_ABSENT;  ///< Z_ABSENT means unknown, likewise Y and Z
  double Y = base::Z_ABSENT;
  double Z = base::Z_ABSENT;
  bool planiConnue = false;    ///< X and Y are fixed
  bool altiConnue = false;     ///< Z is fixed
  std::wstring nom;            ///< a new point: "_Pnt # " and its running number
  double vo = base::Z_ABSENT;  ///< orientation of the station
  std::int64_t numero = 0;     ///< running number

  pointACalculer();
  [[nodiscard]] bool enPlan() const { return estDonnee(X) && estDonnee(Y); }
  [[nodiscard]] bool enAltitude() const { return estDonnee(Z); }

private:
  static bool estDonnee(double valeur) { return std::isfinite(valeur) && valeur != base::Z_ABSENT; }
};

/// One observation. An angle is read as: bearing(station to vise) = bearing(station to reference) + mesure; a
/// height difference is Z(vise) - Z(station).
struct ObservationReduite {
  enum Type : signed char { kAngle = 0, kDistance = 1, kDenivelee = 2, kAucun = 3 };
  double poids = base::Z_ABSENT;  ///< fixed weight; Z_ABSENT means that the formulas give it
  double mesure = 0.0;            ///< radians or metres
  signed char type = kAucun;
  int station = -1;  ///< index of a point; -1 in a record not yet set, likewise vise
  int vise = -1;
  int reference = -1;  ///< back sight; -1 for "NORD", when `mesure` is a bearing
};

/// Where a pass met a value that is no number: zero distance, coordinates out of all proportion.
struct arretPasse {
  int point = -1;        ///< unknown point
  int observation = -1;  ///< -1 when all rows have values and the solution has none
};

/// Points and observations of a network. An observation that names a point outside the array raises
/// `std::invalid_argument` where the index is first read.
class VELTORA_API donneesReseau : private Uncopyable {
public:
  base::CArray<pointACalculer> points;
  formulesPoids formules;
  base::CArray<int> utilisable;  ///< one for each point: 1 once it has coordinates to compute with
  base::CArray<ObservationReduite> observations;
  /// How many angles the file gave in each unit (by `modeAngle`).
  std::array<int, 3> anglesParUnite{};
  /// What the last reduction dropped, each with the equivalent observation that was kept.
  std::vector<std::pair<ObservationReduite, ObservationReduite>> equivalentes;

  [[nodiscard]] const pointACalculer& point(int index) const { return points.GetAt(index); }
  /// Gives `utilisable` one entry for each point; new ones are 0.
  void preparerUtilisable();
  /// Sorts by type and drops equivalent observations, the later ones.
  /// @param journal  gets lines behind "\r\n"
  void reduireObservations(std::wstring& journal);
  /// Weight of an observation: fixed, or by the formulas, which must be compiled.
  double poidsObservation(const ObservationReduite& observation);
  /// Value of a type 0 or 1 observation from the current coordinates.
  [[nodiscard]] double valeurCalculee(const ObservationReduite& observation) const;
};

}  // namespace veltora
