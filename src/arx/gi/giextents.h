#pragma once

#include "arx/gi/gigeometry.h"

#include <unordered_map>

/// The box around what is drawn: exact for curves, areas and blocks with few parts or little nested. A nested
/// block of many parts is measured once and stands in as a box after that, so that deep nesting costs no more
/// than its blocks have parts.
class ARX_API AcGiExtents : public AcGiGeometry {
public:
  /// @param matrix places what is looked at
  explicit AcGiExtents(const AcGeMatrix3d& matrix = {});
  /// Empty while nothing with a size was looked at.
  [[nodiscard]] const AcDbExtents& box() const { return m_box; }
  /// Something was seen that reaches without end, which the box leaves out.
  [[nodiscard]] bool isEndless() const { return m_endless; }
  void curve(std::span<const AcGeCurvePiece> pieces) override;
  void area(std::span<const AcGePoint3d> corners) override;
  /// At the four corners of its rows and columns: their box holds what lies between.
  void block(const AcGiBlockPlace& place) override;

private:
  void add(const AcGiBlockPlace& place, const AcGeMatrix3d& matrix);
  AcDbExtents m_box;
  bool m_endless = false;
  std::unordered_map<const AcGiDrawable*, AcDbExtents> m_boxes;  // of nested blocks, in their coordinates
};
