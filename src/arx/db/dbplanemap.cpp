#include "arx/db/dbplanemap.h"

#include <cmath>

namespace {

constexpr double kPi = 3.141592653589793;
constexpr double kUnitSnap = 1e-12;  // relative: a rotation's rounding must not change heights and radii
constexpr double kConformal = 1e-9;  // relative difference of the two axes, and of their right angle

bool isFinite(const AcGeVector3d& v) {
  return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

double snapped(double factor) { return std::fabs(factor - 1) <= kUnitSnap ? 1.0 : factor; }

}  // namespace

double acdbRadians(double degrees) { return degrees / 180 * kPi; }
double acdbDegrees(double radians) { return radians / kPi * 180; }

bool acdbIsCurved(double bulge) {
  constexpr double kFlat = 1e-8;
  return std::fabs(bulge) >= kFlat && std::fabs(bulge) <= 1 / kFlat;
}

AcGeVector3d acdbUnitNormal(const AcGeVector3d& normal) {
  if (normal == AcGeVector3d::kZAxis || !isFinite(normal)) return AcGeVector3d::kZAxis;
  const AcGeVector3d unit = normal.normal();
  return unit.lengthSqrd() > 0 && isFinite(unit) ? unit : AcGeVector3d::kZAxis;
}

AcGePoint3d acdbToWorld(const AcGePoint3d& point, const AcGeVector3d& normal) {
  if (normal == AcGeVector3d::kZAxis) return point;
  return AcGeMatrix3d::planeToWorld(acdbUnitNormal(normal)) * point;
}

AcGePoint3d acdbToPlane(const AcGePoint3d& point, const AcGeVector3d& normal) {
  if (normal == AcGeVector3d::kZAxis) return point;
  return AcGeMatrix3d::worldToPlane(acdbUnitNormal(normal)) * point;
}

AcDbPlaneMap::AcDbPlaneMap(const AcGeMatrix3d& matrix, const AcGeVector3d& oldNormal) {
  const AcGeVector3d from = acdbUnitNormal(oldNormal);
  const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(from);
  const AcGeVector3d across = matrix * (toWorld * AcGeVector3d::kXAxis);
  const AcGeVector3d up = matrix * (toWorld * AcGeVector3d::kYAxis);
  const AcGeVector3d lifted = matrix * from;
  const AcGeVector3d face = across.crossProduct(up).normal();
  const double side = face.dotProduct(lifted);
  const double liftedLength = lifted.length();
  valid = isFinite(face) && face.lengthSqrd() > 0.5;
  if (!valid) return;
  upright = std::fabs(std::fabs(side) - liftedLength) <= kConformal * liftedLength;
  normal = upright && liftedLength > 0 ? lifted.normal() : side < 0 ? -face : face;
  if (normal == AcGeVector3d::kZAxis) normal = AcGeVector3d::kZAxis;  // also without negative zeros
  map = AcGeMatrix3d::worldToPlane(normal) * matrix * toWorld;
  const AcGeVector2d x(map.entry[0][0], map.entry[1][0]);
  const AcGeVector2d y(map.entry[0][1], map.entry[1][1]);
  const double lx = x.length();
  const double ly = y.length();
  mirrored = x.crossProduct(y) < 0;
  conformal = std::fabs(lx - ly) <= kConformal * lx && std::fabs(x.dotProduct(y)) <= kConformal * lx * ly;
  factor = snapped(conformal ? lx : std::sqrt(std::fabs(x.crossProduct(y))));
  depth = snapped(lifted.dotProduct(normal));
  turn = x.y == 0 && x.x > 0 ? 0.0 : acdbDegrees(std::atan2(x.y, x.x));
}

double AcDbPlaneMap::turned(double degrees) const {
  if (!mirrored && turn == 0) return degrees;
  double result = std::fmod(mirrored ? turn - degrees : turn + degrees, 360.0);
  if (result < 0) result += 360;
  return result >= 360 ? 0.0 : result;
}
