#include "arx/db/dbspline.h"

#include "arx/db/dbplanemap.h"
#include "arx/db/dbsections.h"
#include "arx/db/dbsplineoffset.h"

#include <algorithm>
#include <cmath>

ACDB_DEFINE_MEMBERS(AcDbSpline, AcDbCurve, "SPLINE")

namespace {

constexpr int kClosed = 1;
constexpr int kRational = 4;
constexpr double kSameEnds = 1e-9;   // units: ends this near close the curve
constexpr double kRounding = 8e-15;  // and this share of their coordinates

bool isPlace(const AcGePoint3d& p) {
  constexpr double kFarthest = 1e100;
  return std::fabs(p.x) <= kFarthest && std::fabs(p.y) <= kFarthest && std::fabs(p.z) <= kFarthest;
}

void setPart(AcGeVector3d& v, int axis, double value) { (axis == 0 ? v.x : axis == 1 ? v.y : v.z) = value; }

// A coordinate of the point begun last; x begins one, and what stands in front of all has no meaning.
void takeInList(std::vector<AcGePoint3d>& list, int axis, double value) {
  if (axis == 0) list.emplace_back().x = value;
  if (axis == 0 || list.empty()) return;
  (axis == 1 ? list.back().y : list.back().z) = value;
}

}  // namespace

void AcDbSpline::Shape::takePoint(int code, double value) {
  const int axis = code >= 210 ? code / 10 - 21 : code / 10 - 1;
  const int kind = code % 10;
  if (code >= 210) {
    if (!normal) normal.emplace();
    setPart(*normal, axis, value);
  } else if (kind < 2) {
    takeInList(kind == 0 ? nurbs.controls : fit, axis, value);
  } else {
    std::optional<AcGeVector3d>& tangent = kind == 2 ? startTangent : endTangent;
    if (!tangent) tangent.emplace();
    setPart(*tangent, axis, value);
  }
}

bool AcDbSpline::Shape::take(int code, double value) {
  if (!means(code)) return false;
  switch (code) {
    case 70:
    case 71:
      (code == 70 ? flags : nurbs.degree) = std::fabs(value) < 1e6 ? static_cast<int>(value) : 0;
      return true;
    case 72:
    case 73:
    case 74:
      return true;  // counts, which the points themselves tell
    case 40:
      nurbs.knots.push_back(value);
      return true;
    case 41:
      nurbs.weights.push_back(value);
      return true;
    case 42:
    case 43:
    case 44:
      tolerances[code - 42] = value;
      return true;
    default:
      takePoint(code, value);
      return true;
  }
}

bool AcDbSpline::Shape::isUsable() const {
  for (const auto& direction : {normal, startTangent, endTangent})
    if (direction && !isPlace({direction->x, direction->y, direction->z})) return false;
  if (!std::all_of(fit.begin(), fit.end(), isPlace)) return false;
  if (!nurbs.controls.empty()) return nurbs.isUsable();
  if (!nurbs.weights.empty() || nurbs.degree < 1 || nurbs.degree > AcGeBezierCurve3d::kHighestDegree)
    return false;
  const std::vector<AcGeSplineSpan> all = spans();
  return !all.empty() &&
         std::all_of(all.begin(), all.end(), [](const AcGeSplineSpan& s) { return s.curve.isFinite(); });
}

std::vector<AcGeSplineSpan> AcDbSpline::Shape::spans() const {
  if (!nurbs.controls.empty()) return nurbs.spans();
  const auto usable = [](const std::optional<AcGeVector3d>& v) {
    return v && v->lengthSqrd() > 0 ? v : std::optional<AcGeVector3d>();
  };
  return acgeSplineThrough(fit, usable(startTangent), usable(endTangent), (flags & kClosed) != 0);
}

Acad::ErrorStatus AcDbSpline::setNurbs(AcGeNurbs nurbs) {
  if (!nurbs.isUsable()) return Acad::eInvalidInput;
  Shape shape;
  shape.nurbs = std::move(nurbs);
  if (!shape.nurbs.weights.empty()) shape.flags |= kRational;
  const auto all = shape.spans();
  if (all.front().curve.start().distanceTo(all.back().curve.end()) == 0) shape.flags |= kClosed;
  return change(m_shape, shape);
}

Acad::ErrorStatus AcDbSpline::setFitPoints(std::vector<AcGePoint3d> points) {
  Shape shape;
  shape.fit = std::move(points);
  return shape.isUsable() ? change(m_shape, shape) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbSpline::getControlPointAt(int index, AcGePoint3d& point) const {
  if (index < 0 || index >= numControlPoints()) return Acad::eInvalidIndex;
  point = m_shape.nurbs.controls[static_cast<std::size_t>(index)];
  return Acad::eOk;
}

Acad::ErrorStatus AcDbSpline::getFitPointAt(int index, AcGePoint3d& point) const {
  if (index < 0 || index >= numFitPoints()) return Acad::eInvalidIndex;
  point = m_shape.fit[static_cast<std::size_t>(index)];
  return Acad::eOk;
}

double AcDbSpline::weightAt(int index) const {
  const std::vector<double>& weights = m_shape.nurbs.weights;
  return index >= 0 && index < static_cast<int>(weights.size()) ? weights[static_cast<std::size_t>(index)]
                                                                : 1.0;
}

std::vector<AcGeCurvePiece> AcDbSpline::pieces() const {
  std::vector<AcGeCurvePiece> result;
  for (AcGeSplineSpan& span : m_shape.spans()) {
    AcGeCurvePiece piece;
    piece.start = span.curve.start();
    piece.end = span.curve.end();
    piece.startParam = span.from;
    piece.endParam = span.to;
    piece.bezier = std::make_shared<const AcGeBezierCurve3d>(std::move(span.curve));
    result.push_back(std::move(piece));
  }
  return result;
}

bool AcDbSpline::isClosed() const {
  const std::vector<AcGeSplineSpan> all = m_shape.spans();
  if (all.empty()) return false;
  const AcGePoint3d from = all.front().curve.start();
  const double size = std::max({std::fabs(from.x), std::fabs(from.y), std::fabs(from.z)});
  return from.distanceTo(all.back().curve.end()) <= kSameEnds + kRounding * size;
}

Acad::ErrorStatus AcDbSpline::transformBy(const AcGeMatrix3d& matrix) {
  Shape shape = m_shape;
  if (shape.nurbs.controls.empty() && !matrix.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
  for (AcGePoint3d& point : shape.nurbs.controls) point = matrix * point;
  for (AcGePoint3d& point : shape.fit) point = matrix * point;
  for (auto* tangent : {&shape.startTangent, &shape.endTangent})
    if (*tangent) **tangent = matrix * **tangent;
  if (shape.normal && shape.normal->lengthSqrd() > 0) {
    const AcDbPlaneMap plane(matrix, *shape.normal);
    const double length = shape.normal->length();
    const bool same = (plane.normal * length - *shape.normal).length() <= 1e-15 * length;
    if (plane.valid && !same) shape.normal = plane.normal * length;
  }
  const bool empty = shape.nurbs.controls.empty() && shape.fit.empty();
  return empty || shape.isUsable() ? change(m_shape, shape) : Acad::eCannotScaleNonUniformly;
}

// In the plane that the file tells; else, as for plane curves drawn in the plan view, in that of +Z.
Acad::ErrorStatus AcDbSpline::getOffsetCurves(double offset, std::vector<AcDbCurve*>& curves) const {
  return acdbOffsetSpline(*this, acdbUnitNormal(m_shape.normal.value_or(AcGeVector3d::kZAxis)), offset,
                          curves);
}

bool AcDbSpline::Shape::means(int code) {
  const bool point = code >= 10 && code <= 33 && code % 10 <= 3;
  return point || (code >= 40 && code <= 44) || (code >= 70 && code <= 74) || code == 210 || code == 220 ||
         code == 230;
}

bool AcDbSpline::isGivenBy(std::span<const DxfTag> tags) {
  Shape shape;
  return acdbTakeNumbers(tags, "AcDbSpline",
                         [&](int code, double value) { return shape.take(code, value); }) &&
         shape.isUsable();
}

bool AcDbSpline::takeGroup(AcDbDxfReader& in) {
  return Shape::means(in.code()) && m_shape.take(in.code(), in.real());
}

void AcDbSpline::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);
  readSection(in, "AcDbSpline");
}

void AcDbSpline::dxfOutFields(AcDbDxfWriter& out) const {
  const AcGeNurbs& nurbs = m_shape.nurbs;
  AcDbEntity::dxfOutFields(out);
  out.subclass("AcDbSpline");
  if (m_shape.normal) out.vector(210, *m_shape.normal);
  out.integer(70, m_shape.flags);
  out.integer(71, nurbs.degree);
  out.integer(72, static_cast<Adesk::Int64>(nurbs.knots.size()));
  out.integer(73, static_cast<Adesk::Int64>(nurbs.controls.size()));
  out.integer(74, static_cast<Adesk::Int64>(m_shape.fit.size()));
  for (int i = 0; i < 3; ++i)
    if (m_shape.tolerances[i]) out.real(42 + i, *m_shape.tolerances[i]);
  if (m_shape.startTangent) out.vector(12, *m_shape.startTangent);
  if (m_shape.endTangent) out.vector(13, *m_shape.endTangent);
  for (const double knot : nurbs.knots) out.real(40, knot);
  for (const double weight : nurbs.weights) out.real(41, weight);
  for (const AcGePoint3d& point : nurbs.controls) out.point(10, point);
  for (const AcGePoint3d& point : m_shape.fit) out.point(11, point);
  writeExtras(out, "AcDbSpline");
}

void AcDbSpline::exchangeFields(AcDbSpline& other) {
  std::swap(m_shape, other.m_shape);
  AcDbCurve::exchangeFields(other);
}
