#pragma once

#include "arx/gi/girenderer.h"

/// Takes the look of what is kept as file text to any geometry: a renderer gets edges and fills, one that
/// asks where things lie gets the edges of both as curves.
class AcDbKeptPen {
public:
  explicit AcDbKeptPen(AcGiGeometry& geometry) : m_geometry(geometry), m_renderer(geometry.renderer()) {}
  [[nodiscard]] AcGiGeometry& geometry() const { return m_geometry; }
  /// Null for a geometry that asks where things lie.
  [[nodiscard]] AcGiRenderer* renderer() const { return m_renderer; }
  /// The pieces of a line through these points.
  [[nodiscard]] static std::vector<AcGeCurvePiece> straight(std::span<const AcGePoint3d> points);
  void edges(std::span<const AcGePoint3d> points) const;
  void polygon(std::span<const std::vector<AcGePoint3d>> rings) const;

private:
  AcGiGeometry& m_geometry;
  AcGiRenderer* m_renderer;
};
