#pragma once

#include "arx/ge/gematrix2d.h"
#include "arx/ge/gepoint.h"
#include "base/export.h"

namespace veltora {

/// Up to this s, in drawing units, a place on a clothoid counts as its origin.
inline constexpr double kInflexion = 1e-12;

/// A clothoid: a curve whose curvature grows linearly with its length, A^2 = R s. A value.
///
/// Lengths in drawing units, angles in radians. s is the length from the origin of the curve, where the
/// curvature is 0; the drawn piece lies between two values of s. In the local frame the curve leaves the
/// origin along +X and turns to the left.
class VELTORA_API clothoide {
public:
  double startParam = 0.0;  ///< s at the start of the drawn piece
  double endParam = 0.0;    ///< s at its end
  double paramA = 0.0;

  /// World position of the curve's origin.
  [[nodiscard]] const AcGePoint2d& offset() const { return m_offset; }
  /// Of the tangent at the origin.
  [[nodiscard]] double angleRot() const { return m_angleRot; }
  /// The curve turns the other way.
  [[nodiscard]] bool mirrored() const { return m_mirrored; }
  void setOffset(const AcGePoint2d& offset);
  void setAngleRot(double angle);
  void setMirrored(bool mirrored);

  /// The world from the local frame, and back.
  [[nodiscard]] const AcGeMatrix2d& matriceVersMonde() const;
  [[nodiscard]] const AcGeMatrix2d& matriceVersLocal() const;

  /// Point at s of the clothoid with parameter A. @return false, `point` unchanged, for A = 0
  static bool pointLocal(double s, double a, AcGePoint2d& point);
  /// World point at s; the curve's origin for A = 0.
  [[nodiscard]] AcGePoint2d pointEn(double s) const;
  /// Direction in which s grows, in the world; of any length near 1.
  [[nodiscard]] AcGeVector2d tangenteEn(double s) const;
  [[nodiscard]] AcGeVector2d tangenteUnitaireEn(double s) const { return tangenteEn(s).normal(); }
  /// From the tangent at the origin, s / (2 R); 0 for s up to 1e-12.
  [[nodiscard]] double angleTangent(double s) const;
  /// A^2 / s: infinite at the origin.
  [[nodiscard]] double rayonEn(double s) const { return paramA * paramA / s; }
  /// World centre of curvature; the point itself for s up to 1e-12.
  [[nodiscard]] AcGePoint2d centreEn(double s) const;
  /// Where the tangents at both ends meet. @return false, `point` unchanged, when they are parallel
  bool intersectionTangentes(AcGePoint2d& point) const;

  /// Makes the clothoid between two points that are told by their radii and the meeting point of their
  /// tangents. The start has the larger radius when the first has it, so that `startParam` exceeds `endParam`
  /// when the second one has it.
  ///
  /// Which side of its chord the curve takes follows a rule of its own: see `orienterVers`. Where the radii
  /// do not fit the points, the curve begins at p1 and runs towards p2 without ending there. No such curve
  /// exists for equal radii, coinciding points and points in a line, which are not looked for here (see
  /// `raisonSansClothoide`): the fields are then 0 or not finite.
  /// @param r1, r2  radii at p1 and p2, 0 for a straight end
  /// @return false, nothing changed, when both are at most 1e-12
  bool definirParRayons(double r1, double r2, const AcGePoint2d& p1, const AcGePoint2d& p2,
                        const AcGePoint2d& pi);
  /// Moves and turns the curve so that its point q1 comes to p1 and its point q2 in the direction of p2.
  /// Prints "Erreur CL1 !!!" and leaves it as it is when that is not possible.
  void ajusterSurCorde(const AcGePoint2d& q1, const AcGePoint2d& p1, const AcGePoint2d& q2,
                       const AcGePoint2d& p2);
  /// Places the curve so that its point at s lies at `point` and its tangent there has the angle. Prints
  /// "Erreur CL2 !!!" and leaves offset and angle 0 when that is not possible.
  void ajusterEnPoint(double s, const AcGePoint2d& point, double angle);
  /// Turns the curve over its chord, its ends staying where they are.
  void retournerSurCorde();
  /// Turns the curve over its chord when its tangents meet on the other side of it than `pi`.
  void orienterVers(const AcGePoint2d& pi);

  /// Whether the curve has a length and all its numbers are finite, the radii at its ends included.
  [[nodiscard]] bool estTracable() const;

private:
  void actualiserMatrices() const;
  /// @return false, nothing changed, when the map turns no curve into a curve
  bool prendreMatrice(const AcGeMatrix2d& matrice);

  AcGePoint2d m_offset;
  double m_angleRot = 0.0;
  bool m_mirrored = false;
  mutable bool matriceValide = false;
  mutable AcGeMatrix2d versMonde;
  mutable AcGeMatrix2d versLocal;
};

/// Why there is no clothoid with these data of `definirParRayons`.
/// @return French, without capital and full stop; null when there is one
VELTORA_API const wchar_t* raisonSansClothoide(double r1, double r2, const AcGePoint2d& p1,
                                               const AcGePoint2d& p2, const AcGePoint2d& pi);

}  // namespace veltora
