#include "arx/db/dbkeptpen.h"

std::vector<AcGeCurvePiece> AcDbKeptPen::straight(std::span<const AcGePoint3d> points) {
  std::vector<AcGeCurvePiece> pieces;
  for (std::size_t i = 1; i < points.size(); ++i) {
    AcGeCurvePiece& piece = pieces.emplace_back();
    piece.start = points[i - 1];
    piece.end = points[i];
  }
  return pieces;
}

void AcDbKeptPen::edges(std::span<const AcGePoint3d> points) const {
  if (m_renderer) return m_renderer->edges(points);
  const std::vector<AcGeCurvePiece> pieces = straight(points);
  if (!pieces.empty()) m_geometry.curve(pieces);
}

void AcDbKeptPen::polygon(std::span<const std::vector<AcGePoint3d>> rings) const {
  if (m_renderer) return m_renderer->polygon(rings);
  for (const std::vector<AcGePoint3d>& ring : rings) {
    if (ring.empty()) continue;
    std::vector<AcGePoint3d> closed(ring);
    closed.push_back(ring.front());
    edges(closed);
  }
}
