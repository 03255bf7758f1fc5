#include "app/window/view_pen.h"

#include "app/window/text.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace veltora::app {
namespace {

constexpr int kFontSize = 48;         // pixels, scaled to what is wanted
constexpr double kLegible = 4.0;      // pixels of a capital: below, a text is a stroke
constexpr double kLetterWidth = 0.8;  // mean, of a capital's height
constexpr double kHighlightWidth = 3.0;
constexpr qsizetype kMostGathered = 20000;

}  // namespace

ViewPen::ViewPen(QPainter& painter, int height, std::optional<QColor> highlight)
    : m_painter(painter),
      m_height(height),
      m_shift(painter.testRenderHint(QPainter::Antialiasing) ? 0.5 : 0.0),
      m_highlight(std::move(highlight)),
      m_font("DejaVu Sans") {
  m_font.setPixelSize(kFontSize);
  m_font.setHintingPreference(QFont::PreferNoHinting);
}

QColor ViewPen::colorOf(const AcPlColor& color) const {
  return m_highlight ? *m_highlight : QColor(color.red, color.green, color.blue);
}

QPen ViewPen::penOf(const AcPlStroke& stroke) const {
  // The usual weight is one pixel, the thinnest line that screens show well.
  const double width = std::max(1.0, std::round(stroke.width / kMmPerPixel));
  QPen pen(colorOf(stroke.color), m_highlight ? std::max(width, kHighlightWidth) : width);
  pen.setCapStyle(width > 1.0 ? Qt::RoundCap : Qt::SquareCap);
  pen.setJoinStyle(Qt::RoundJoin);
  if (stroke.dashes.empty()) return pen;
  QList<qreal> dashes;
  for (const double dash : stroke.dashes) dashes.append(std::max(dash / kMmPerPixel, 1.0) / pen.widthF());
  pen.setCapStyle(Qt::FlatCap);
  pen.setDashPattern(dashes);
  pen.setDashOffset(stroke.phase / kMmPerPixel / pen.widthF());
  return pen;
}

void ViewPen::flush() {
  if (!m_lines.isEmpty()) {
    m_painter.setPen(penOf(m_stroke));
    m_painter.drawLines(m_lines);
    m_lines.clear();
  }
  if (!m_specks.isEmpty()) {
    const bool smooth = m_painter.testRenderHint(QPainter::Antialiasing);
    m_painter.setRenderHint(QPainter::Antialiasing, false);
    m_painter.setPen(colorOf(m_speckColor));
    m_painter.drawPoints(m_specks.constData(), static_cast<int>(m_specks.size()));
    m_painter.setRenderHint(QPainter::Antialiasing, smooth);
    m_specks.clear();
  }
}

void ViewPen::line(std::span<const AcGePoint2d> points, const AcPlStroke& stroke) {
  if (!m_specks.isEmpty() || m_lines.size() > kMostGathered || m_stroke != stroke) flush();
  m_stroke = stroke;
  if (points.size() == 2 && points[0] == points[1]) {
    m_lines.append(QLineF(pixelOf(points[0]), pixelOf(points[0])));
    return;
  }
  if (!stroke.dashes.empty()) {  // one by one, so that the pattern runs through the corners
    QPolygonF run;
    for (const AcGePoint2d& point : points) run.append(pixelOf(point));
    m_painter.setPen(penOf(stroke));
    m_painter.drawPolyline(run);
    return;
  }
  for (std::size_t i = 1; i < points.size(); ++i)
    m_lines.append(QLineF(pixelOf(points[i - 1]), pixelOf(points[i])));
}

void ViewPen::fill(std::span<const std::vector<AcGePoint2d>> rings, const AcPlColor& color) {
  flush();
  QPainterPath path;
  path.setFillRule(Qt::OddEvenFill);
  for (const std::vector<AcGePoint2d>& ring : rings) {
    QPolygonF corners;
    for (const AcGePoint2d& corner : ring) corners.append(pixelOf(corner));
    path.addPolygon(corners);
  }
  m_painter.fillPath(path, colorOf(color));
}

void ViewPen::text(const AcPlText& text) {
  const double height = text.up.length() / kMmPerPixel;
  if (height < kLegible) {
    const double count = static_cast<double>(shown(text.text).size());
    const AcGePoint2d from = text.base + text.up * 0.5;
    const AcGePoint2d ends[] = {from, from + text.along * (kLetterWidth * count)};
    AcPlStroke stroke;
    stroke.color = text.color;
    return line(ends, stroke);
  }
  flush();
  // Capitals of the font at this size are kFontSize * kAcPlCapital pixels high.
  const double scale = 1.0 / (kFontSize * kAcPlCapital * kMmPerPixel);
  const QPointF base = pixelOf(text.base);
  m_painter.save();
  m_painter.setTransform(QTransform(text.along.x * scale, -text.along.y * scale, -text.up.x * scale,
                                    text.up.y * scale, base.x(), base.y()),
                         true);
  m_painter.setFont(m_font);
  m_painter.setPen(colorOf(text.color));
  m_painter.drawText(QPointF(0, 0), shown(text.text));
  m_painter.restore();
}

void ViewPen::clip(std::span<const AcGePoint2d> ring) {
  flush();
  if (m_clipped) m_painter.restore();
  m_clipped = !ring.empty();
  if (!m_clipped) return;
  QPolygonF corners;
  for (const AcGePoint2d& corner : ring) corners.append(pixelOf(corner));
  QPainterPath path;
  path.addPolygon(corners);
  m_painter.save();
  m_painter.setClipPath(path, Qt::IntersectClip);
}

void ViewPen::speck(const QPointF& pixel, const AcPlColor& color) {
  if (!m_lines.isEmpty() || m_specks.size() > kMostGathered || m_speckColor != color) flush();
  m_speckColor = color;
  m_specks.append(pixel);
}

}  // namespace veltora::app
