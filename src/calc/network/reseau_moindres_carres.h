#pragma once

#include "base/export.h"
#include "base/growable_array.h"
#include "base/numbers.h"
#include "base/uncopyable.h"
#include "calc/network/formules_poids.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// A network of points adjusted from angles, distances and height differences. X east, Y north, metres;
/// angles in radians, bearings clockwise from +Y.
namespace veltora {

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

/// The network. An observation that names a point outside the array raises `std::invalid_argument` where the
/// index is first read. Log lines are added behind "\r\n".
class VELTORA_API reseauMoindresCarres : private Uncopyable {
public:
  base::CArray<pointACalculer> points;
  formulesPoids formules;
  base::CArray<int> utilisable;  ///< one for each point: 1 once it has coordinates to compute with
  base::CArray<ObservationReduite> observations;

  /// What the last reduction dropped, each with the equivalent observation that was kept.
  std::vector<std::pair<ObservationReduite, ObservationReduite>> equivalentes;
  /// Norm of the last step of either solve: 0 when there was nothing to solve, -1e38 when the system was
  /// singular, not a number when an observation has no direction (zero distance).
  double dernierPas = 0.0;

  /// One planimetric pass: with `premierPassage` first the reduction of observations and the provisional
  /// points.
  /// @return true when the step's norm was above 1e-8, so that another pass is wanted
  bool calculerPlani(std::wstring& journal, bool premierPassage);
  /// The heights: provisional values, then one linear solve. @return true when it moved any height
  bool calculerAlti(std::wstring& journal);

  /// Usable unknown points that the observations leave undetermined together with others, with the
  /// singularity that rounding hides from the exact test of the solve.
  std::vector<int> pointsIndetermines();

  /// Weight of an observation: fixed, or by the formulas, which must be compiled.
  double poidsObservation(const ObservationReduite& observation);
  /// Value of a type 0 or 1 observation from the current coordinates.
  [[nodiscard]] double valeurCalculee(const ObservationReduite& observation) const;

private:
  void preparerUtilisable();
  /// Sorts by type and drops equivalent observations, the later ones.
  void reduireObservations(std::wstring& journal);
  /// @return false when no point is fixed
  bool calculerPointsProvisoires(std::wstring& journal);
  /// Provisional heights. @return true when at least one was found
  bool passesAltitudes(std::wstring& journal);
  [[nodiscard]] const pointACalculer& point(int index) const { return points.GetAt(index); }
  friend class systemePlani;
  friend class systemeAlti;
};

/// The log's line, behind "\r\n", of a point that got coordinates.
std::wstring solutionTrouvee(const pointACalculer& p);

struct bilanIteration {
  int passes = 0;            ///< behind the first one, which gives the provisional points
  bool convergence = false;  ///< the last step was small enough, or there was nothing to compute
};

/// The iteration of the button "Calculer X,Y": a first pass, then passes until one asks for no other, or 100.
/// @param journal gets the text of the last pass behind what it holds
/// @param premiere gets the text of the first pass; null for none
VELTORA_API bilanIteration iterer(reseauMoindresCarres& reseau, std::wstring& journal,
                                  std::wstring* premiere = nullptr);

}  // namespace veltora
