#include "app/window/dialogs/block_picture.h"

#include "app/window/dialogs/text.h"
#include "arx/db/dbmain.h"
#include "arx/gi/giextents.h"
#include "arx/plot/pldraw.h"
#include "base/paths.h"

#include <QFileInfo>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace veltora::app {
namespace {

constexpr double kDotsPerMm = 4.0;
constexpr double kMarginMm = 2.0;

QColor inkOf(const AcPlColor& color) { return {color.red, color.green, color.blue}; }

/// Draws on a picture of the toolkit.
class PainterPen : public AcPlPen {
public:
  PainterPen(QPainter& painter, double height) : m_painter(painter), m_height(height) {
    painter.setRenderHint(QPainter::Antialiasing);
  }
  void layer(const std::string&) override {}
  void line(std::span<const AcGePoint2d> points, const AcPlStroke& stroke) override {
    QPen pen(inkOf(stroke.color), std::max(1.0, stroke.width * kDotsPerMm));
    QList<qreal> dashes;
    for (const double dash : stroke.dashes) dashes << std::max(0.1, dash * kDotsPerMm / pen.widthF());
    if (!dashes.isEmpty() && dashes.size() % 2 == 0) pen.setDashPattern(dashes);
    m_painter.strokePath(pathOf(points), pen);
  }
  void fill(std::span<const std::vector<AcGePoint2d>> rings, const AcPlColor& color) override {
    QPainterPath path;
    for (const std::vector<AcGePoint2d>& ring : rings) {
      path.addPath(pathOf(ring));
      path.closeSubpath();
    }
    m_painter.fillPath(path, inkOf(color));
  }
  void text(const AcPlText& text) override {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(100);
    const double size = 1.0 / (100.0 * kAcPlCapital);
    const double dots = kDotsPerMm * size;
    m_painter.save();
    m_painter.setTransform(QTransform(text.along.x * dots, -text.along.y * dots, -text.up.x * dots,
                                      text.up.y * dots, text.base.x * kDotsPerMm,
                                      (m_height - text.base.y) * kDotsPerMm));
    m_painter.setFont(font);
    m_painter.setPen(inkOf(text.color));
    m_painter.drawText(0, 0, shown(text.text));
    m_painter.restore();
  }
  void clip(std::span<const AcGePoint2d> ring) override {
    m_painter.setClipPath(pathOf(ring));
    m_painter.setClipping(!ring.empty());
  }
  bool finish(std::string&, std::string&) override { return true; }

private:
  [[nodiscard]] QPainterPath pathOf(std::span<const AcGePoint2d> points) const {
    QPainterPath path;
    for (std::size_t i = 0; i < points.size(); ++i) {
      const QPointF at(points[i].x * kDotsPerMm, (m_height - points[i].y) * kDotsPerMm);
      if (i == 0)
        path.moveTo(at);
      else
        path.lineTo(at);
    }
    return path;
  }
  QPainter& m_painter;
  double m_height;
};

/// The box around what stands in a space; empty when nothing has a size.
AcDbExtents boxOf(AcDbObjectId space) {
  const AcDbObjectPointer<AcDbBlockTableRecord> record(space);
  AcGiExtents extents;
  for (const AcDbObjectId& id : record->entities()) {
    const auto* const entity = id.isLive() ? AcDbEntity::cast(id.stub()->object) : nullptr;
    if (entity) extents.show(*entity);
  }
  return extents.box();
}

QPixmap drawingPicture(AcDbDatabase& drawing, QSize size, QString& reason) {
  const AcDbExtents box = boxOf(drawing.modelSpaceId());
  const double width = box.isEmpty() ? 0.0 : box.maxPoint().x - box.minPoint().x;
  const double height = box.isEmpty() ? 0.0 : box.maxPoint().y - box.minPoint().y;
  if (box.isEmpty() || !std::isfinite(width) || !std::isfinite(height)) {
    reason = QStringLiteral("dessin vide");
    return {};
  }
  AcPlView view;
  view.paper.width = size.width() / kDotsPerMm;
  view.paper.height = size.height() / kDotsPerMm;
  const double scale = std::min((view.paper.width - 2 * kMarginMm) / std::max(width, 1e-9),
                                (view.paper.height - 2 * kMarginMm) / std::max(height, 1e-9));
  view.mmPerUnit = std::min(scale, 1e6);
  view.corner = {box.minPoint().x + width / 2 - view.paper.width / 2 / view.mmPerUnit,
                 box.minPoint().y + height / 2 - view.paper.height / 2 / view.mmPerUnit};
  QPixmap picture(size);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  PainterPen pen(painter, view.paper.height);
  acplPlot(drawing, drawing.modelSpaceId(), view, pen);
  return picture;
}

}  // namespace

QPixmap pictureOf(const std::wstring& path, QSize size, QString& reason) {
  const QString file = shown(path);
  if (path.empty()) {
    reason = QStringLiteral("aucun dessin");
    return {};
  }
  const QString kind = QFileInfo(file).suffix().toLower();
  if (kind == QLatin1String("dxf") || kind == QLatin1String("dwg")) {
    AcDbDatabase drawing(false);
    if (drawing.readDwgFile(path.c_str()) == Acad::eOk) return drawingPicture(drawing, size, reason);
    reason = QStringLiteral("dessin illisible");
    return {};
  }
  const QPixmap picture(file);
  if (picture.isNull())
    reason = QFileInfo::exists(file) ? QStringLiteral("image illisible") : QStringLiteral("image absente");
  else
    return picture.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  return {};
}

}  // namespace veltora::app
