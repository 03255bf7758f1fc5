#pragma once

#include "arx/db/dblines.h"
#include "arx/db/dbpl.h"
#include "base/box_index.h"

#include <vector>

namespace veltora {

/// Where many lines cut one polyline: what `AcDbEntity::intersectWith` of the polyline gives, asked only of
/// the segments near each line. Keeps a copy of the vertices.
class VELTORA_API regionIndexee {
public:
  explicit regionIndexee(const AcDbPolyline& region);
  /// The points in which a line cuts the border. A vertex counts once; of a straight stretch of the border
  /// that lies on the line, of one or several segments, the two ends count.
  /// @param mode  as in `AcDbEntity::intersectWith`, of the polyline with the line; the polyline is never
  /// extended
  [[nodiscard]] AcGePoint3dArray couper(const AcDbLine& ligne, AcDb::Intersect mode);

private:
  struct sommet {
    AcGePoint2d point;
    double courbure = 0.0;  ///< bulge of the segment behind it
  };
  [[nodiscard]] std::size_t suivant(std::size_t rang) const { return (rang + 1) % m_sommets.size(); }
  AcDbPolyline& segment(std::size_t rang);
  bool estSur(const AcDbLine& ligne, std::size_t rang);
  void ajouterBouts(const AcDbLine& ligne, std::size_t rang, AcGePoint3dArray& points);

  std::vector<sommet> m_sommets;
  std::size_t m_segments = 0;
  bool m_fermee = false;
  AcDbPolyline m_segment;  ///< the segment that is looked at, as a polyline of two vertices
  base::BoxIndex m_index;
  double m_marge = 0.0;  ///< around what is looked for, more than the intersection tolerates
};

}  // namespace veltora
