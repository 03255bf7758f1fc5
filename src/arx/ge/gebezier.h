#pragma once

#include "arx/ge/gematrix.h"

#include <array>
#include <cstddef>
#include <utility>
#include <vector>

/// A rational Bezier curve over the parameters 0 to 1, the common form of splines, ellipses and straight
/// lines: what is computed on general curves is computed on these. Points are kept relative to an origin near
/// by, so that nothing is lost at national coordinates.
///
/// Formulas: L. Piegl, W. Tiller, The NURBS Book, 2nd edition, chapters 1 (evaluation by de Casteljau's
/// corners), 4 (derivatives of rational curves) and 7 (conic arcs).
class ARX_API AcGeBezierCurve3d {
public:
  static constexpr int kHighestDegree = 25;
  /// A control point multiplied by its weight, relative to the origin.
  struct Node {
    AcGeVector3d p;
    double w = 1.0;
  };
  /// Place, first and second derivative by the parameter.
  struct Jet {
    AcGePoint3d point;
    AcGeVector3d first;
    AcGeVector3d second;
  };

  AcGeBezierCurve3d() = default;
  /// @param nodes  2 to 26 of them, weights above 0
  AcGeBezierCurve3d(const AcGePoint3d& origin, std::vector<Node> nodes)
      : m_origin(origin), m_nodes(std::move(nodes)) {}
  static AcGeBezierCurve3d line(const AcGePoint3d& from, const AcGePoint3d& to);
  /// The arc center + x cos a + y sin a from one angle on.
  /// @param sweep  radians, signed, at most a quarter turn
  static AcGeBezierCurve3d conicArc(const AcGePoint3d& center, const AcGeVector3d& x, const AcGeVector3d& y,
                                    double start, double sweep);

  [[nodiscard]] int degree() const { return static_cast<int>(m_nodes.size()) - 1; }
  [[nodiscard]] AcGePoint3d pointAt(double t) const { return jetAt(t).point; }
  [[nodiscard]] Jet jetAt(double t) const;
  [[nodiscard]] AcGePoint3d control(std::size_t index) const {
    return m_origin + m_nodes[index].p * (1.0 / m_nodes[index].w);
  }
  [[nodiscard]] AcGePoint3d start() const { return control(0); }
  [[nodiscard]] AcGePoint3d end() const { return control(m_nodes.size() - 1); }
  [[nodiscard]] std::size_t size() const { return m_nodes.size(); }
  /// Both halves, each over 0 to 1 again.
  [[nodiscard]] std::pair<AcGeBezierCurve3d, AcGeBezierCurve3d> halves() const;
  /// Box of the control points: holds the curve.
  [[nodiscard]] AcDbExtents hull() const;
  /// Greatest distance of a control point from the chord; that from the start where there is no chord.
  [[nodiscard]] double sag() const;
  /// Parameter of the nearest point, found by halving what can hold it and by Newton's rule.
  [[nodiscard]] double closest(const AcGePoint3d& point) const;
  /// Twice the oriented area between the curve and its chord: the integral of (P - start) x dP.
  [[nodiscard]] AcGeVector3d doubleAreaOverChord() const;
  /// Adds the exact box of what a matrix makes of the curve.
  void addToExtents(const AcGeMatrix3d& matrix, AcDbExtents& extents) const;
  [[nodiscard]] bool isFinite() const;

private:
  AcGePoint3d m_origin;
  std::vector<Node> m_nodes;
};
