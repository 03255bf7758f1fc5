#pragma once

#include "arx/ge/gematrix.h"
#include "base/export.h"

#include <vector>

/// Plane similarity that best carries departure points onto final points: X = a x + b y + p, Y = a y - b x +
/// q in four parameters by least squares (Ghilani, Adjustment Computations, two-dimensional conformal
/// transformation). Scale and rotation are the polar form of (a, b).
namespace veltora {

/// A pair is the entry of the same index in both lists, drawing units.
struct couplesHelmert {
  std::vector<AcGePoint2d> depart;
  std::vector<AcGePoint2d> arrivee;
};

/// Fewer pairs are not accepted of a user: two always agree, whatever is wrong with them.
inline constexpr std::size_t kCouplesMinimum = 3;

struct resultatHelmert {
  double echelle = 1.0;
  double rotation = 0.0;     ///< radians, from atan2(b, a)
  AcGeVector2d deplacement;  ///< mean of the final points minus mean of the departure points
  AcGePoint2d ab{1.0, 0.0};  ///< the parameters a and b
};

/// Deviations of the carried points from the final ones; see the report for what is odd in the last.
struct ecartsHelmert {
  double inferieur = 0.0;
  double superieur = 0.0;
  double moyenne = 0.0;
  double quadratique = 0.0;
  double sommeCarres = 0.0;
};

/// Mean of the points, summed in their order. @param points at least one
AcGePoint2d centreDes(const std::vector<AcGePoint2d>& points);

/// Coordinates enter the normal equations as they are, without centring: large ones weaken the determinant's
/// test.
/// @param depart, arrivee  pairs by index, drawing units
/// @param rotation  radians
/// @param ab  the parameters a and b
/// @return false, with the results unchanged, for lists of different length or a determinant below 1e-8
VELTORA_API bool calculerHelmert(const std::vector<AcGePoint2d>& depart,
                                 const std::vector<AcGePoint2d>& arrivee, double& echelle, double& rotation,
                                 AcGeVector2d& deplacement, AcGePoint2d& ab);
/// The same, and the departure points carried by the result, in order.
VELTORA_API bool transformerHelmert(const std::vector<AcGePoint2d>& depart,
                                    const std::vector<AcGePoint2d>& arrivee, std::vector<AcGePoint2d>& portes,
                                    double& echelle, double& rotation, AcGeVector2d& deplacement,
                                    AcGePoint2d& ab);
/// The same on records.
VELTORA_API bool transformerHelmert(const couplesHelmert& couples, std::vector<AcGePoint2d>& portes,
                                    resultatHelmert& resultat);
/// The transformation of entities, about the mean of the departure points. The scale acts on heights too.
VELTORA_API AcGeMatrix3d matriceHelmert(const std::vector<AcGePoint2d>& depart,
                                        const resultatHelmert& resultat);
/// @param portes as many as there are pairs, at least one
VELTORA_API ecartsHelmert calculerEcarts(const std::vector<AcGePoint2d>& portes,
                                         const std::vector<AcGePoint2d>& arrivee);

}  // namespace veltora
