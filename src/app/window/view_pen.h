#pragma once

#include "arx/plot/plpen.h"

#include <QFont>
#include <QLineF>
#include <QList>
#include <QPainter>
#include <optional>

namespace veltora::app {

/// A pen of the host that paints on the screen. Its paper is the widget: a pixel is `kMmPerPixel`.
class ViewPen : public AcPlPen {
public:
  static constexpr double kMmPerPixel = 25.4 / 96.0;
  /// @param height  of what is painted on, pixels  @param highlight  everything in this colour, and wider
  ViewPen(QPainter& painter, int height, std::optional<QColor> highlight = std::nullopt);
  ~ViewPen() override { flush(); }

  void layer(const std::string&) override {}
  void line(std::span<const AcGePoint2d> points, const AcPlStroke& stroke) override;
  void fill(std::span<const std::vector<AcGePoint2d>> rings, const AcPlColor& color) override;
  void text(const AcPlText& text) override;
  void clip(std::span<const AcGePoint2d> ring) override;
  /// There is no file.
  bool finish(std::string&, std::string&) override { return true; }
  /// What is smaller than a pixel. @param pixel  from the upper left corner
  void speck(const QPointF& pixel, const AcPlColor& color);

private:
  [[nodiscard]] QPointF pixelOf(const AcGePoint2d& place) const {
    return {place.x / kMmPerPixel + m_shift, m_height - place.y / kMmPerPixel + m_shift};
  }
  [[nodiscard]] QColor colorOf(const AcPlColor& color) const;
  [[nodiscard]] QPen penOf(const AcPlStroke& stroke) const;
  void flush();

  QPainter& m_painter;
  int m_height;
  double m_shift;  ///< pixels: where the middle of a whole pixel lies for the painter
  std::optional<QColor> m_highlight;
  QFont m_font;
  AcPlStroke m_stroke;     ///< of the lines gathered
  QList<QLineF> m_lines;   ///< not painted yet
  AcPlColor m_speckColor;  ///< likewise
  QList<QPointF> m_specks;
  bool m_clipped = false;
};

}  // namespace veltora::app
