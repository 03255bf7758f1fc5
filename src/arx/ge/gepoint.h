#pragma once

#include <cmath>

// Points, vectors and scales of the host. Plain values; coordinates in drawing units.

/// Tolerances of comparisons: two points closer than `equalPoint` are equal, two unit vectors that differ by
/// less than `equalVector` are parallel.
struct AcGeTol {
  double equalPointTol = 1e-10;
  double equalVectorTol = 1e-10;
  [[nodiscard]] double equalPoint() const { return equalPointTol; }
  [[nodiscard]] double equalVector() const { return equalVectorTol; }
};

struct AcGeVector2d {
  double x = 0.0;
  double y = 0.0;
  constexpr AcGeVector2d() = default;
  constexpr AcGeVector2d(double xx, double yy) : x(xx), y(yy) {}
  [[nodiscard]] double length() const { return std::hypot(x, y); }
  [[nodiscard]] constexpr double lengthSqrd() const { return x * x + y * y; }
  [[nodiscard]] constexpr double dotProduct(const AcGeVector2d& v) const { return x * v.x + y * v.y; }
  /// z of the cross product; positive when `v` lies to the left.
  [[nodiscard]] constexpr double crossProduct(const AcGeVector2d& v) const { return x * v.y - y * v.x; }
  [[nodiscard]] constexpr AcGeVector2d perpVector() const { return {-y, x}; }
  /// Mathematical angle from +X, radians, 0 to 2 pi.
  [[nodiscard]] double angle() const {
    const double a = std::atan2(y, x);
    return a < 0 ? a + 6.283185307179586 : a;
  }
  /// Unit vector; the zero vector stays.
  [[nodiscard]] AcGeVector2d normal() const {
    const double l = length();
    return l > 0 ? AcGeVector2d{x / l, y / l} : *this;
  }
  constexpr AcGeVector2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
  constexpr AcGeVector2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
  constexpr AcGeVector2d operator*(double s) const { return {x * s, y * s}; }
  constexpr AcGeVector2d operator-() const { return {-x, -y}; }
};

struct AcGePoint2d {
  double x = 0.0;
  double y = 0.0;
  constexpr AcGePoint2d() = default;
  constexpr AcGePoint2d(double xx, double yy) : x(xx), y(yy) {}
  [[nodiscard]] double distanceTo(const AcGePoint2d& p) const { return std::hypot(p.x - x, p.y - y); }
  constexpr AcGeVector2d operator-(const AcGePoint2d& p) const { return {x - p.x, y - p.y}; }
  constexpr AcGePoint2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
  constexpr AcGePoint2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
  constexpr AcGePoint2d& set(double xx, double yy) { return x = xx, y = yy, *this; }
  constexpr bool operator==(const AcGePoint2d&) const = default;
  [[nodiscard]] bool isEqualTo(const AcGePoint2d& p, const AcGeTol& tol = {}) const {
    return distanceTo(p) <= tol.equalPoint();
  }
};

struct AcGeVector3d {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  constexpr AcGeVector3d() = default;
  constexpr AcGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}
  static const AcGeVector3d kXAxis;
  static const AcGeVector3d kYAxis;
  static const AcGeVector3d kZAxis;
  [[nodiscard]] double length() const { return std::hypot(x, y, z); }
  [[nodiscard]] constexpr double lengthSqrd() const { return x * x + y * y + z * z; }
  [[nodiscard]] constexpr double dotProduct(const AcGeVector3d& v) const {
    return x * v.x + y * v.y + z * v.z;
  }
  [[nodiscard]] constexpr AcGeVector3d crossProduct(const AcGeVector3d& v) const {
    return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
  }
  [[nodiscard]] AcGeVector3d normal() const {
    const double l = length();
    return l > 0 ? AcGeVector3d{x / l, y / l, z / l} : *this;
  }
  constexpr AcGeVector3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
  constexpr AcGeVector3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
  constexpr AcGeVector3d operator*(double s) const { return {x * s, y * s, z * s}; }
  constexpr AcGeVector3d operator-() const { return {-x, -y, -z}; }
  constexpr bool operator==(const AcGeVector3d&) const = default;
};
inline constexpr AcGeVector3d AcGeVector3d::kXAxis{1, 0, 0};
inline constexpr AcGeVector3d AcGeVector3d::kYAxis{0, 1, 0};
inline constexpr AcGeVector3d AcGeVector3d::kZAxis{0, 0, 1};

struct AcGePoint3d {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  constexpr AcGePoint3d() = default;
  constexpr AcGePoint3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}
  static const AcGePoint3d kOrigin;
  [[nodiscard]] double distanceTo(const AcGePoint3d& p) const {
    return std::hypot(p.x - x, p.y - y, p.z - z);
  }
  constexpr AcGeVector3d operator-(const AcGePoint3d& p) const { return {x - p.x, y - p.y, z - p.z}; }
  constexpr AcGePoint3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
  constexpr AcGePoint3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
  constexpr AcGePoint3d& set(double xx, double yy, double zz) { return x = xx, y = yy, z = zz, *this; }
  [[nodiscard]] constexpr AcGeVector3d asVector() const { return {x, y, z}; }
  constexpr bool operator==(const AcGePoint3d&) const = default;
  [[nodiscard]] bool isEqualTo(const AcGePoint3d& p, const AcGeTol& tol = {}) const {
    return distanceTo(p) <= tol.equalPoint();
  }
};
inline constexpr AcGePoint3d AcGePoint3d::kOrigin{0, 0, 0};

/// Scale factors along the three axes.
struct AcGeScale3d {
  double sx = 1.0;
  double sy = 1.0;
  double sz = 1.0;
  constexpr AcGeScale3d() = default;
  constexpr explicit AcGeScale3d(double s) : sx(s), sy(s), sz(s) {}
  constexpr AcGeScale3d(double x, double y, double z) : sx(x), sy(y), sz(z) {}
  constexpr bool operator==(const AcGeScale3d&) const = default;
};
