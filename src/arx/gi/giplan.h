#pragma once

#include "arx/gi/gigeometry.h"

/// What is drawn as it lies in the plan view: curves cut into chords, areas as the boxes around them.
class ARX_API AcGiPlan : public AcGiGeometry {
public:
  /// Arcs become chords of a 256th of a turn, off the arc by 0.00008 of its radius (r (1 - cos(pi / 256))); a
  /// ray is followed over 1e9 units, as far as coordinates of drawings reach.
  void curve(std::span<const AcGeCurvePiece> pieces) final;
  void area(std::span<const AcGePoint3d> corners) final;

protected:
  virtual void segment(const AcGePoint2d& from, const AcGePoint2d& to) = 0;
  /// @param box not empty; its z has no meaning here
  virtual void filled(const AcDbExtents& box) = 0;
};
