#include "app/window/picture.h"

#include "app/window/view_pen.h"
#include "arx/db/dbblockref.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbspaceindex.h"
#include "arx/db/dbtext.h"
#include "arx/plot/pldraw.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace veltora::app {
namespace {

constexpr int kDarkGrey = 30;
constexpr double kSpeck = 1.0;          // pixels: what is smaller is a dot
constexpr double kSymbol = 4.0;         // likewise of symbols and texts, of which nothing can be told apart
constexpr double kChordError = 0.04;    // mm, a seventh of a pixel
constexpr double kLetters = 0.3;        // of a changed height: how far letters may stand out of it
constexpr double kMostOfPicture = 0.5;  // beyond this share all is drawn anew
constexpr double kLineWidths = 8.0;     // pixels that lines may reach beyond the places of what they draw

AcPlView viewOf(const ViewPlace& place, bool dark) {
  AcPlView view;
  view.paper.width = place.size.width() * ViewPen::kMmPerPixel;
  view.paper.height = place.size.height() * ViewPen::kMmPerPixel;
  if (dark) view.paper.background = {kDarkGrey, kDarkGrey, kDarkGrey};
  view.corner = place.toWorld(QPointF(0, place.size.height()));
  view.chordError = kChordError;
  view.mmPerUnit = ViewPen::kMmPerPixel / place.unitsPerPixel;
  return view;
}

double sizeOf(const AcDbExtents& box) {
  return std::max(box.maxPoint().x - box.minPoint().x, box.maxPoint().y - box.minPoint().y);
}

/// Below this size, in pixels, a thing is a dot. Lines are not, as many short ones may be one long one.
double speckOf(const AcDbEntity& entity) {
  const bool symbol = AcDbBlockReference::cast(&entity) || AcDbText::cast(&entity);
  return symbol ? kSymbol : kSpeck;
}

/// Which pixels hold a dot: a second one there changes nothing that anybody sees.
class Specks {
public:
  explicit Specks(const QSize& size)
      : m_width(size.width()),
        m_height(size.height()),
        m_taken(static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height)) {}
  [[nodiscard]] bool isFree(const QPointF& pixel) const {
    return pixel.x() >= 0 && pixel.y() >= 0 && pixel.x() < m_width && pixel.y() < m_height &&
           !m_taken[placeOf(pixel)];
  }
  void take(const QPointF& pixel) { m_taken[placeOf(pixel)] = true; }

private:
  [[nodiscard]] std::size_t placeOf(const QPointF& pixel) const {
    return static_cast<std::size_t>(pixel.y()) * static_cast<std::size_t>(m_width) +
           static_cast<std::size_t>(pixel.x());
  }
  int m_width;
  int m_height;
  std::vector<bool> m_taken;
};

}  // namespace

QColor backgroundOf(bool dark) { return dark ? QColor(kDarkGrey, kDarkGrey, kDarkGrey) : QColor(Qt::white); }

namespace {

/// Draws what lies in a part of a picture, over the background.
void drawPart(QImage& image, AcDbDatabase& database, const ViewPlace& place, bool dark, bool smooth,
              const QRect& part) {
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing, smooth);
  if (part != image.rect()) painter.setClipRect(part);
  painter.fillRect(part, backgroundOf(dark));
  ViewPen pen(painter, place.size.height());
  AcPlDraw draw(viewOf(place, dark), pen, database.headerReal("LTSCALE", 1.0));
  AcDbSpaceIndex& index = database.spaceIndex();
  const QRectF reach = QRectF(part).adjusted(-kLineWidths, -kLineWidths, kLineWidths, kLineWidths);
  const AcGePoint2d low = place.toWorld(reach.bottomLeft());
  const AcGePoint2d high = place.toWorld(reach.topRight());
  Specks specks(place.size);
  std::vector<std::size_t> places = index.touching({low.x, low.y, high.x, high.y});
  if (!places.empty()) index.drawOrder().arrange(places);
  for (const std::size_t at : places) {
    const AcDbObjectId id = index.entityAt(at);
    const auto* const entity = id.isLive() ? AcDbEntity::cast(id.stub()->object) : nullptr;
    if (!entity) continue;
    const AcDbExtents& box = index.boxAt(at);
    if (box.isEmpty() || !(sizeOf(box) < speckOf(*entity) * place.unitsPerPixel)) {
      draw.entity(*entity);
      continue;
    }
    const QPointF pixel =
        place.toPixel({(box.minPoint().x + box.maxPoint().x) / 2, (box.minPoint().y + box.maxPoint().y) / 2});
    if (!specks.isFree(pixel)) continue;
    const auto ink = draw.inkOf(*entity);
    if (!ink) continue;
    pen.speck(pixel, *ink);
    specks.take(pixel);
  }
}

}  // namespace

QImage pictureOf(AcDbDatabase& database, const ViewPlace& place, bool dark, bool smooth) {
  QImage image(place.size, QImage::Format_RGB32);
  drawPart(image, database, place, dark, smooth, image.rect());
  return image;
}

bool drawChanged(QImage& picture, AcDbDatabase& database, const ViewPlace& place, bool dark,
                 const AcDbExtents& changed, bool smooth) {
  if (changed.isEmpty()) return true;
  const QPointF a = place.toPixel({changed.minPoint().x, changed.maxPoint().y});
  const QPointF b = place.toPixel({changed.maxPoint().x, changed.minPoint().y});
  // Letters of the screen's fonts stand out of the boxes that the drawing tells of texts.
  const double letters = kLetters * (b.y() - a.y());
  const double border = kLineWidths + letters;
  const QRectF part = QRectF(a, b).adjusted(-border, -border, border, border) & QRectF(picture.rect());
  if (!(part.width() * part.height() < kMostOfPicture * picture.width() * picture.height())) return false;
  drawPart(picture, database, place, dark, smooth, part.toAlignedRect() & picture.rect());
  return true;
}

void paintHighlighted(QPainter& painter, AcDbDatabase& database, const std::vector<AcDbObjectId>& entities,
                      const ViewPlace& place, const QColor& color) {
  ViewPen pen(painter, place.size.height(), color);
  AcPlView view = viewOf(place, false);
  view.masks = false;  // they would hide what they lie over in the colour of what is chosen
  AcPlDraw draw(view, pen, database.headerReal("LTSCALE", 1.0));
  for (const AcDbObjectId& id : entities) {
    const auto* const entity = id.isLive() ? AcDbEntity::cast(id.stub()->object) : nullptr;
    if (entity) draw.entity(*entity);
  }
}

QPicture recordOf(AcDbDatabase& database, const std::vector<AcDbObjectId>& entities, const ViewPlace& place,
                  const QColor& color) {
  constexpr std::size_t kMost = 5000;
  ViewPlace around = place;
  around.size *= 3;
  QPicture record;
  QPainter painter(&record);
  painter.translate(-place.size.width(), -place.size.height());
  paintHighlighted(
      painter, database,
      {entities.begin(), entities.begin() + static_cast<std::ptrdiff_t>(std::min(kMost, entities.size()))},
      around, color);
  return record;
}

QTransform pixelMapOf(const AcGeMatrix3d& map, const ViewPlace& place) {
  const auto moved = [&](double x, double y) {
    const AcGePoint2d world = place.toWorld({x, y});
    const AcGePoint3d there = map * AcGePoint3d(world.x, world.y, 0.0);
    return place.toPixel({there.x, there.y});
  };
  // From points far apart, so that rounding of large coordinates does not show.
  constexpr double kApart = 1024.0;
  const QPointF origin = moved(0, 0);
  const QPointF right = (moved(kApart, 0) - origin) / kApart;
  const QPointF down = (moved(0, kApart) - origin) / kApart;
  return {right.x(), right.y(), down.x(), down.y(), origin.x(), origin.y()};
}

void paintDragged(QPainter& painter, AcDbDatabase& database, const AcDbEntity& entity, const ViewPlace& place,
                  bool dark) {
  ViewPen pen(painter, place.size.height());
  AcPlDraw draw(viewOf(place, dark), pen, database.headerReal("LTSCALE", 1.0));
  draw.entity(entity);
}

}  // namespace veltora::app
