#pragma once

#include "arx/adesk.h"
#include "arx/ge/gepoint.h"

/// Affine map of the plane: the upper 2x3 part of a homogeneous matrix, applied to column vectors; the third
/// row is 0 0 1.
class ARX_API AcGeMatrix2d {
public:
  /// The identity.
  AcGeMatrix2d() = default;
  /// @param angle radians, counter-clockwise
  static AcGeMatrix2d rotation(double angle, const AcGePoint2d& center = {});
  /// The map of local coordinates in a frame to coordinates outside of it. The axes are taken as they are.
  static AcGeMatrix2d coordSystem(const AcGePoint2d& origin, const AcGeVector2d& e0, const AcGeVector2d& e1);
  /// The map that takes one frame to the other; the identity when the first one is no frame.
  static AcGeMatrix2d alignCoordSys(const AcGePoint2d& fromOrigin, const AcGeVector2d& fromE0,
                                    const AcGeVector2d& fromE1, const AcGePoint2d& toOrigin,
                                    const AcGeVector2d& toE0, const AcGeVector2d& toE1);

  double entry[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

  /// First applies the right operand, then this.
  AcGeMatrix2d operator*(const AcGeMatrix2d& right) const;
  AcGePoint2d operator*(const AcGePoint2d& point) const;
  AcGeVector2d operator*(const AcGeVector2d& vector) const;
  [[nodiscard]] AcGeVector2d translation() const { return {entry[0][2], entry[1][2]}; }
  [[nodiscard]] double det() const;
  [[nodiscard]] AcGeMatrix2d inverse() const;  ///< the identity when the matrix is singular
  /// Whether angles keep their size: the linear part is a scale times a rotation, or times a reflection in a
  /// line.
  /// @param scale  above 0
  /// @param angle  of the rotation, radians, 0 to 2 pi; 0 for a reflection
  /// @param reflex  unit vector along the line of the reflection; (1, 0) for a rotation
  /// @return false, the results unchanged, for any other map and for one that is not finite
  bool isConformal(double& scale, double& angle, bool& isMirror, AcGeVector2d& reflex,
                   const AcGeTol& tol = {}) const;
};
