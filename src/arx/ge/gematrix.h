#pragma once

#include "arx/adesk.h"
#include "arx/ge/gepoint.h"

/// Affine map of space: rows of the upper 3x4 part of a homogeneous matrix, applied to column vectors.
class ARX_API AcGeMatrix3d {
public:
  /// The identity.
  AcGeMatrix3d();
  static AcGeMatrix3d translation(const AcGeVector3d& vector);
  /// @param angle radians, counter-clockwise seen from the tip of `axis`
  static AcGeMatrix3d rotation(double angle, const AcGeVector3d& axis,
                               const AcGePoint3d& center = AcGePoint3d::kOrigin);
  static AcGeMatrix3d scaling(double factor, const AcGePoint3d& center = AcGePoint3d::kOrigin);
  static AcGeMatrix3d scaling(const AcGeScale3d& factors, const AcGePoint3d& center = AcGePoint3d::kOrigin);
  /// World from the object coordinate system of an entity with this normal (arbitrary axis rule of drawing
  /// files).
  static AcGeMatrix3d planeToWorld(const AcGeVector3d& normal);
  static AcGeMatrix3d worldToPlane(const AcGeVector3d& normal);

  double entry[3][4];

  /// First applies the right operand, then this.
  AcGeMatrix3d operator*(const AcGeMatrix3d& right) const;
  AcGePoint3d operator*(const AcGePoint3d& point) const;
  AcGeVector3d operator*(const AcGeVector3d& vector) const;
  [[nodiscard]] AcGeMatrix3d inverse() const;  ///< the identity when the matrix is singular
  [[nodiscard]] double det() const;
  /// Largest factor by which lengths along the three axes grow.
  [[nodiscard]] double scale() const;
  /// Lengths grow alike in all directions, within `tol`.
  [[nodiscard]] bool isUniScaledOrtho(const AcGeTol& tol = {1e-9, 1e-9}) const;
};

/// Axis-parallel box; empty until the first point is added.
class ARX_API AcDbExtents {
public:
  AcDbExtents() = default;
  AcDbExtents(const AcGePoint3d& low, const AcGePoint3d& high) : m_min(low), m_max(high) {}
  void addPoint(const AcGePoint3d& point);
  void addExt(const AcDbExtents& other);
  [[nodiscard]] const AcGePoint3d& minPoint() const { return m_min; }
  [[nodiscard]] const AcGePoint3d& maxPoint() const { return m_max; }
  [[nodiscard]] bool isEmpty() const { return m_min.x > m_max.x; }
  void transformBy(const AcGeMatrix3d& matrix);

private:
  AcGePoint3d m_min{1e300, 1e300, 1e300};
  AcGePoint3d m_max{-1e300, -1e300, -1e300};
};
