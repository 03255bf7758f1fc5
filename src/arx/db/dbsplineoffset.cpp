#include "arx/db/dbsplineoffset.h"

#include "arx/db/dbspline.h"

#include <algorithm>
#include <cmath>
#include <memory>

// O(t) = P(t) + d T(t) x n      with the unit tangent T = P' / |P'|, the normal n and the distance d
// O'   = P' + d T' x n          T' = (P'' - T (T . P'')) / |P'|
// Between two places, the cubic with both points and both derivatives (Hermite) differs from O by a share of
// the fourth power of the range.

namespace {

constexpr double kOff = 1e-6;     // of the distance: greatest error of a parallel
constexpr double kPlane = 1e-6;   // of the curve's size: farther out of the plane it has no parallel
constexpr double kSmooth = 1e-6;  // radians: a sharper turn is a corner
constexpr int kDeepest = 14;      // halvings of one piece

struct Place {
  double param = 0.0;
  AcGePoint3d point;
  AcGeVector3d derivative;  // by the parameter
  AcGeVector3d tangent;     // of the curve itself
};

class Parallel {
public:
  Parallel(const AcGeVector3d& normal, double offset) : m_normal(normal), m_offset(offset) {}

  // Goes on along a piece. @return false when the parallel turns round
  bool follow(const AcGeCurvePiece& piece) {
    m_piece = &piece;
    m_range = piece.endParam - piece.startParam;
    const Place from = at(0.0);
    const Place to = at(1.0);
    if (m_places.empty() || m_places.back().tangent.crossProduct(from.tangent).length() > kSmooth ||
        m_places.back().tangent.dotProduct(from.tangent) < 0) {
      finish();
      m_places.push_back(from);
    }
    return m_range > 0 && go(from, 0.0, to, 1.0, 0);
  }
  void finish() {
    if (m_places.size() > 1) m_curves.push_back(spline());
    m_places.clear();
  }
  [[nodiscard]] std::vector<std::unique_ptr<AcDbCurve>>& curves() { return m_curves; }

private:
  [[nodiscard]] Place at(double t) const {
    AcGeVector3d first = m_piece->derivativeAt(t);
    AcGeVector3d second;
    if (m_piece->bezier)
      second = m_piece->bezier->jetAt(t).second;
    else if (m_piece->isArc)
      second = (m_piece->center - m_piece->pointAt(t)) * (m_piece->sweep * m_piece->sweep);
    const double speed = first.length();
    const AcGeVector3d tangent = first.normal();
    const AcGeVector3d turn = (second - tangent * tangent.dotProduct(second)) * (1.0 / speed);
    const AcGeVector3d along = first + turn.crossProduct(m_normal) * m_offset;
    return {m_piece->paramAt(t), m_piece->pointAt(t) + tangent.crossProduct(m_normal) * m_offset,
            along * (1.0 / m_range), tangent};
  }
  bool go(const Place& from, double t0, const Place& to, double t1, int depth) {
    if (!(from.derivative.dotProduct(from.tangent) > 0) || !(to.derivative.dotProduct(to.tangent) > 0))
      return false;
    if (depth == kDeepest || isNear(from, t0, to, t1)) {
      m_places.push_back(to);
      return true;
    }
    const double t = (t0 + t1) / 2;
    const Place middle = at(t);
    return go(from, t0, middle, t, depth + 1) && go(middle, t, to, t1, depth + 1);
  }
  [[nodiscard]] bool isNear(const Place& from, double t0, const Place& to, double t1) const {
    const double h = to.param - from.param;
    for (const double s : {0.25, 0.5, 0.75}) {
      const AcGeVector3d cubic = (to.point - from.point) * (s * s * (3 - 2 * s)) +
                                 from.derivative * (h * s * (1 - s) * (1 - s)) -
                                 to.derivative * (h * s * s * (1 - s));
      if ((from.point + cubic).distanceTo(at(t0 + (t1 - t0) * s).point) > kOff * std::fabs(m_offset))
        return false;
    }
    return true;
  }
  // Doubled knots: the derivative has no jump.
  [[nodiscard]] std::unique_ptr<AcDbCurve> spline() const {
    AcGeNurbs nurbs;
    nurbs.knots.assign(4, m_places.front().param);
    nurbs.controls.push_back(m_places.front().point);
    for (std::size_t i = 1; i < m_places.size(); ++i) {
      const Place& a = m_places[i - 1];
      const Place& b = m_places[i];
      const double third = (b.param - a.param) / 3;
      nurbs.controls.push_back(a.point + a.derivative * third);
      nurbs.controls.push_back(b.point - b.derivative * third);
      nurbs.knots.insert(nurbs.knots.end(), 2, b.param);
    }
    nurbs.controls.push_back(m_places.back().point);
    nurbs.knots.insert(nurbs.knots.end(), 2, m_places.back().param);
    return std::make_unique<AcDbSpline>(std::move(nurbs));
  }

  AcGeVector3d m_normal;
  double m_offset;
  const AcGeCurvePiece* m_piece = nullptr;
  double m_range = 1.0;
  std::vector<Place> m_places;
  std::vector<std::unique_ptr<AcDbCurve>> m_curves;
};

bool liesIn(const std::vector<AcGeCurvePiece>& pieces, const AcGeVector3d& normal) {
  AcDbExtents box;
  for (const AcGeCurvePiece& piece : pieces) piece.addToExtents({}, box);
  const double slack = kPlane * box.minPoint().distanceTo(box.maxPoint());
  for (const AcGeCurvePiece& piece : pieces) {
    for (const AcGeBezierCurve3d& part : piece.beziers(false)) {
      for (std::size_t i = 0; i < part.size(); ++i)
        if (std::fabs(normal.dotProduct(part.control(i) - pieces.front().start)) > slack) return false;
    }
  }
  return true;
}

}  // namespace

Acad::ErrorStatus acdbOffsetSpline(const AcDbCurve& curve, const AcGeVector3d& normal, double offset,
                                   std::vector<AcDbCurve*>& curves) {
  const std::vector<AcGeCurvePiece> pieces = curve.pieces();
  if (!std::isfinite(offset) || offset == 0.0 || pieces.empty() || !liesIn(pieces, normal))
    return Acad::eInvalidInput;
  Parallel parallel(normal, offset);
  for (const AcGeCurvePiece& piece : pieces)
    if (!parallel.follow(piece)) return Acad::eInvalidInput;
  parallel.finish();
  for (const auto& made : parallel.curves())
    if (AcDbSpline::cast(made.get())->numControlPoints() == 0) return Acad::eInvalidInput;
  for (auto& made : parallel.curves()) {
    static_cast<void>(made->setPropertiesFrom(&curve));
    curves.push_back(made.release());
  }
  return Acad::eOk;
}
