#include "app/window/pointing.h"

#include "app/window/text.h"
#include "arx/db/dbmain.h"
#include "arx/ed/edpick.h"
#include "arx/ed/edprompt.h"
#include "arx/ed/edsets.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace veltora::app {
namespace {

using Kind = base::Request::Kind;

constexpr double kSnapPixels = 10.0;
constexpr double kDragPixels = 4.0;  ///< the mouse is moved on purpose beyond
constexpr int kFinerDigits = 2;      ///< digits that a point has beyond the size of a pixel

double length(const QPointF& d) { return std::hypot(d.x(), d.y()); }

QRectF frameOf(const QPointF& a, const QPointF& b) { return QRectF(a, b).normalized(); }

}  // namespace

void Pointing::setView(AcDbDatabase* database, const ViewPlace& place) {
  m_database = database;
  m_place = place;
}

bool Pointing::wantsPoint() const {
  const base::Request* const asked = m_lines.request();
  if (!asked) return false;
  switch (asked->kind) {
    case Kind::kPoint:
    case Kind::kCorner:
    case Kind::kDistance:
    case Kind::kAngle:
    case Kind::kKey:
      return true;
    default:
      return false;
  }
}

bool Pointing::selects() const {
  const base::Request* const asked = m_lines.request();
  return asked && (asked->kind == Kind::kSelection || m_lines.isIdle());
}

bool Pointing::isPointing() const {
  const base::Request* const asked = m_lines.request();
  return wantsPoint() || m_zooming ||
         (asked && (asked->kind == Kind::kEntity || asked->kind == Kind::kSelection));
}

/// Where the rubber band begins.
std::optional<AcGePoint3d> Pointing::base() const {
  const base::Request* const asked = m_lines.request();
  if (!asked || !asked->from) return std::nullopt;
  return AcGePoint3d((*asked->from)[0], (*asked->from)[1], (*asked->from)[2]);
}

AcGePoint3d Pointing::worldOf(const QPointF& pixel) const {
  const AcGePoint2d world = m_place.toWorld(pixel);
  return {world.x, world.y, 0.0};
}

/// A point as a script gives it. @param exact  with all of its digits, and its height
std::string Pointing::textOf(const AcGePoint3d& point, bool exact) const {
  constexpr int kAllDigits = 17;
  const int decimals =
      std::clamp(static_cast<int>(std::ceil(-std::log10(m_place.unitsPerPixel))) + kFinerDigits, 0, 12);
  const auto number = [&](double value) {
    return exact ? QString::number(value, 'g', kAllDigits) : QString::number(value, 'f', decimals);
  };
  QString text = number(point.x) + ',' + number(point.y);
  if (exact && point.z != 0.0) text += ',' + number(point.z);
  return utf8(text);
}

void Pointing::move(const QPointF& pixel) {
  m_inside = true;
  m_pixel = pixel;
  m_cursor = worldOf(pixel);
  m_snapped.reset();
  if (!wantsPoint() || m_zooming) return;
  const std::optional<AcGePoint3d> from = base();
  if (m_database && !snaps.empty())
    m_snapped = snapAt(*m_database, snaps, m_cursor, kSnapPixels * m_place.unitsPerPixel,
                       from.value_or(acedLastPoint()));
  if (m_snapped) {
    m_cursor = m_snapped->point;
  } else if (ortho && from && m_lines.request()->kind != Kind::kCorner) {
    if (std::fabs(m_cursor.x - from->x) >= std::fabs(m_cursor.y - from->y))
      m_cursor.y = from->y;
    else
      m_cursor.x = from->x;
  }
  if (m_lines.request()->drag) m_lines.request()->drag({m_cursor.x, m_cursor.y, m_cursor.z});
}

void Pointing::press(const QPointF& pixel) {
  move(pixel);
  const base::Request* const asked = m_lines.request();
  if (m_zooming || selects()) {
    m_pressed = pixel;
  } else if (wantsPoint()) {
    // On the axis of another point a coordinate is that point's, with all of its digits.
    const bool exact = m_snapped || (ortho && base());
    m_lines.answer(textOf(m_cursor, exact));
  } else if (asked && asked->kind == Kind::kEntity) {
    m_lines.answer(textOf(m_cursor, false));
  }
}

void Pointing::release(const QPointF& pixel, bool remove) {
  if (!m_pressed) return;
  const QPointF pressed = *std::exchange(m_pressed, std::nullopt);
  if (m_corner)
    rectangle(m_place.toPixel(*std::exchange(m_corner, std::nullopt)), pixel, remove);
  else if (length(pixel - pressed) > kDragPixels)
    rectangle(pressed, pixel, remove);
  else if (m_zooming)
    m_corner = m_place.toWorld(pressed);
  else
    click(pressed, remove);
}

/// To the right what lies wholly within counts, to the left what is touched too.
void Pointing::rectangle(const QPointF& from, const QPointF& to, bool remove) {
  const AcGePoint3d a = worldOf(from);
  const AcGePoint3d b = worldOf(to);
  if (std::exchange(m_zooming, false)) {
    if (framed) framed({a.x, a.y}, {b.x, b.y});
    return;
  }
  const bool crossing = to.x() < from.x();
  const base::Request* const asked = m_lines.request();
  if (asked && asked->kind == Kind::kSelection)
    m_lines.answer((crossing ? "C " : "F ") + textOf(a, false) + ' ' + textOf(b, false));
  else if (m_lines.isIdle() && m_database)
    choose(AcEdPicker(*m_database).window(a, b, crossing), remove);
}

void Pointing::click(const QPointF& pixel, bool remove) {
  if (!m_database) return;
  const auto hit = AcEdPicker(*m_database).pick(worldOf(pixel), acedPickAperture());
  const base::Request* const asked = m_lines.request();
  if (!hit)
    m_corner = m_place.toWorld(pixel);
  else if (asked && asked->kind == Kind::kSelection)
    m_lines.answer(textOf(worldOf(pixel), false));
  else if (m_lines.isIdle())
    choose({hit->entity}, remove);
}

/// For the next command.
void Pointing::choose(const std::vector<AcDbObjectId>& entities, bool remove) {
  std::vector<AcDbObjectId>& first = acedSelectionSets().pickFirst;
  AcEdSelectionSet set;
  for (const AcDbObjectId id : first) set.add(id);
  for (const AcDbObjectId id : entities) {
    if (remove)
      set.remove(id);
    else
      set.add(id);
  }
  first = set.entities();
  if (chosen) chosen();
}

void Pointing::asked() {
  m_pressed.reset();
  if (!m_zooming) m_corner.reset();
  m_snapped.reset();
  if (m_inside) move(m_pixel);
}

bool Pointing::escape() {
  const bool begun = m_corner || m_zooming;
  m_corner.reset();
  m_pressed.reset();
  m_zooming = false;
  return begun;
}

void Pointing::beginZoomWindow() {
  escape();
  m_zooming = true;
}

void Pointing::paint(QPainter& painter) const {
  if (!m_inside) return;
  paintRectangle(painter);
  paintRubber(painter);
  paintMarker(painter);
}

void Pointing::paintRectangle(QPainter& painter) const {
  std::optional<QPointF> from;
  if (m_corner) from = m_place.toPixel(*m_corner);
  if (!from && m_pressed && length(m_pixel - *m_pressed) > kDragPixels) from = m_pressed;
  if (!from) return;
  const bool crossing = !m_zooming && m_pixel.x() < from->x();
  const QColor color = crossing ? QColor(0, 170, 60) : QColor(40, 110, 230);
  QColor inside = color;
  inside.setAlpha(50);
  painter.setPen(QPen(color, 1, crossing ? Qt::DashLine : Qt::SolidLine));
  painter.setBrush(inside);
  painter.drawRect(frameOf(*from, m_pixel));
  painter.setBrush(Qt::NoBrush);
}

void Pointing::paintRubber(QPainter& painter) const {
  const std::optional<AcGePoint3d> from = base();
  if (!from || !wantsPoint()) return;
  const QPointF start = m_place.toPixel({from->x, from->y});
  const QPointF end = m_place.toPixel({m_cursor.x, m_cursor.y});
  painter.setPen(QPen(QColor(230, 150, 0), 1, Qt::DashLine));
  if (m_lines.request()->kind == Kind::kCorner)
    painter.drawRect(frameOf(start, end));
  else
    painter.drawLine(start, end);
}

void Pointing::paintMarker(QPainter& painter) const {
  if (!m_snapped) return;
  constexpr double kHalf = 6.0;
  const QPointF at = m_place.toPixel({m_snapped->point.x, m_snapped->point.y});
  const QRectF box(at - QPointF(kHalf, kHalf), at + QPointF(kHalf, kHalf));
  painter.setPen(QPen(QColor(0, 190, 90), 2));
  switch (m_snapped->snap) {
    case AcEdSnap::kMiddle:
      painter.drawPolygon(QPolygonF({box.bottomLeft(), box.bottomRight(), at - QPointF(0, kHalf)}));
      break;
    case AcEdSnap::kCenter:
    case AcEdSnap::kNode:
      painter.drawEllipse(box);
      break;
    case AcEdSnap::kIntersection:
      painter.drawLine(box.topLeft(), box.bottomRight());
      painter.drawLine(box.topRight(), box.bottomLeft());
      break;
    case AcEdSnap::kPerpendicular:
      painter.drawPolyline(QPolygonF({box.topLeft(), box.bottomLeft(), box.bottomRight()}));
      break;
    default:
      painter.drawRect(box);
  }
  const auto named = std::ranges::find(snapNames(), m_snapped->snap, &SnapName::snap);
  if (named != snapNames().end()) painter.drawText(box.bottomRight() + QPointF(4, 12), named->word);
}

}  // namespace veltora::app
