#pragma once

#include "arx/gi/gigeometry.h"

#include <unordered_map>

/// What one search in a drawing may look at, over all the things it looks at: blocks in blocks multiply, so
/// that a small file can show more than any time allows.
class ARX_API AcGiSearch {
public:
  /// @param budget curves and areas that may be looked at in all
  explicit AcGiSearch(std::size_t budget) : m_budget(budget) {}
  /// Takes one from the budget. @return false when it is spent
  bool spend();
  /// Something was left out for it.
  [[nodiscard]] bool isSpent() const { return m_spent; }
  /// The box of a block in its own coordinates, measured once; null for one that reaches without end.
  [[nodiscard]] const AcDbExtents* boxOf(const AcGiDrawable& block);

private:
  struct Measured {
    AcDbExtents box;
    bool endless = false;
  };
  std::size_t m_budget;
  bool m_spent = false;
  std::unordered_map<const AcGiDrawable*, Measured> m_blocks;
};

/// What is drawn as it lies in the plan view: curves cut into chords, areas as the boxes around them.
class ARX_API AcGiPlan : public AcGiGeometry {
public:
  /// @param search shared by the looks of one search, which it outlives
  explicit AcGiPlan(AcGiSearch& search) : m_search(search) {}
  /// Arcs become chords of a 256th of a turn, off the arc by 0.00008 of its radius (r (1 - cos(pi / 256)));
  /// those of a spline are off by 0.0001 of the size of its stretch. A ray is followed over 1e9 units, as far
  /// as coordinates of drawings reach.
  void curve(std::span<const AcGeCurvePiece> pieces) final;
  void area(std::span<const AcGePoint3d> corners) final;
  /// A block within a block is entered when its box may matter.
  void block(const AcGiBlockPlace& place) final;

protected:
  virtual void segment(const AcGePoint2d& from, const AcGePoint2d& to) = 0;
  /// @param box not empty; its z has no meaning here
  virtual void filled(const AcDbExtents& box) = 0;
  /// Whether what lies in this box can change what was found so far.
  virtual bool matters(const AcDbExtents& box) = 0;

private:
  bool spend();
  AcGiSearch& m_search;
};
