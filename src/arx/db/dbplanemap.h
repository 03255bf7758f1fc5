#pragma once

#include "arx/ge/gematrix.h"

/// What a matrix does to an entity that is kept in the coordinates of its own plane: the plane's new normal,
/// and the map between the coordinates of the old and the new plane.
struct AcDbPlaneMap {
  AcGeVector3d normal;    ///< unit vector
  AcGeMatrix3d map;       ///< old plane coordinates to new ones; z is the elevation
  double factor = 1.0;    ///< of lengths in the plane, exactly 1 when within 1e-12 of it
  double depth = 1.0;     ///< of lengths along the normal
  double turn = 0.0;      ///< degrees by which the X axis turns, exactly 0 for a translation
  bool mirrored = false;  ///< counter-clockwise becomes clockwise
  bool conformal = true;  ///< circles of the plane stay circles, within 1e-9
  bool upright = true;    ///< what stands on the plane stands on the new one
  bool valid = true;      ///< false when the plane collapses

  AcDbPlaneMap(const AcGeMatrix3d& matrix, const AcGeVector3d& oldNormal);
  /// Angle of a direction in the plane, degrees, for a conformal map.
  [[nodiscard]] double turned(double degrees) const;
};

/// The one conversion between the degrees of drawing files and radians.
[[nodiscard]] double acdbRadians(double degrees);
[[nodiscard]] double acdbDegrees(double radians);
/// A usable normal: of unit length, +Z in place of the zero vector or one that is not finite.
[[nodiscard]] AcGeVector3d acdbUnitNormal(const AcGeVector3d& normal);
/// From the coordinates of the plane to the world and back; without any rounding for the normal +Z.
[[nodiscard]] AcGePoint3d acdbToWorld(const AcGePoint3d& point, const AcGeVector3d& normal);
[[nodiscard]] AcGePoint3d acdbToPlane(const AcGePoint3d& point, const AcGeVector3d& normal);

/// Whether a bulge is drawn as an arc: not when it is so flat that its sagitta is below the rounding of its
/// radius, nor so round that the circle outgrows its chord a hundred million times.
[[nodiscard]] bool acdbIsCurved(double bulge);
