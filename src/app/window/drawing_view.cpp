#include "app/window/drawing_view.h"

#include "arx/ap/acdocman.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbspaceindex.h"
#include "arx/ed/eddrag.h"
#include "arx/ed/edgraphics.h"
#include "arx/ed/edjig.h"
#include "arx/ed/edsets.h"
#include "arx/plot/plcolor.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace veltora::app {
namespace {

constexpr double kWheelStep = 1.25;     ///< factor of a notch
constexpr double kNotch = 120.0;        ///< what a notch of the wheel tells
constexpr double kMargin = 1.04;        ///< of the whole drawing
constexpr qint64 kFast = 25;            ///< ms: a picture that takes less is drawn at every step
constexpr int kRest = 70;               ///< ms without a move after which the picture is drawn anew
constexpr int kSmoothRest = 200;        ///< ms after which it is drawn without steps
constexpr qint64 kMostForSmooth = 150;  ///< ms of a picture; without steps it takes up to a third longer
constexpr qint64 kOneMove = 800;        ///< ms: moves that follow sooner belong together
constexpr std::size_t kMostFormer = 50;
constexpr double kFinest = 1e-13;  ///< share of a coordinate that doubles still tell apart
constexpr double kLeastUnits = 1e-9;
constexpr double kMostUnits = 1e15;

bool isPlace(const AcGePoint2d& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

/// Held to scales at which places differ.
double limited(double unitsPerPixel, const AcGePoint2d& center) {
  const double reach = std::max(std::fabs(center.x), std::fabs(center.y));
  const double least = std::min(std::max(kLeastUnits, reach * kFinest), kMostUnits);
  return std::clamp(unitsPerPixel, least, kMostUnits);
}

}  // namespace

DrawingView::DrawingView(WindowLines& lines) : m_pointing(lines) {
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setCursor(Qt::CrossCursor);
  setMinimumSize(200, 150);
  m_place.size = size();
  m_rest.setSingleShot(true);
  connect(&m_rest, &QTimer::timeout, this, [this] {
    m_rests = true;
    update();
  });
  m_smoothRest.setSingleShot(true);
  connect(&m_smoothRest, &QTimer::timeout, this, &DrawingView::smoothen);
  m_pointing.framed = [this](const AcGePoint2d& a, const AcGePoint2d& b) {
    const double aspect = static_cast<double>(width()) / std::max(1, height());
    const double tall = std::max(std::fabs(b.y - a.y), std::fabs(b.x - a.x) / aspect);
    if (tall > 0.0) zoomTo({(a.x + b.x) / 2, (a.y + b.y) / 2}, tall);
  };
  m_pointing.chosen = [this] { update(); };
}

Adesk::UInt64 DrawingView::revision() const {
  return m_database ? m_database->spaceIndex().touches() + m_database->namesVersion() : 0;
}

void DrawingView::hostChanged() {
  AcDbDatabase* const working = acdbHostApplicationServices()->workingDatabase();
  const AcEdView view = acedView();
  std::erase_if(m_seen, [](const AcDbDatabase* seen) { return !acDocManager->document(seen); });
  if (working != m_database) {
    m_database = working;
    m_picture = {};
    m_chosenEntities.clear();
    m_former.clear();
    if (m_database) adoptHostView();
    // A drawing is opened as a whole; later its view is the one that it was left with.
    if (m_database && m_seen.insert(m_database).second) zoomExtents();
  } else if (m_database && (view.center.x != m_hostCenter.x || view.center.y != m_hostCenter.y ||
                            view.height != m_hostHeight)) {
    remember();
    adoptHostView();
  }
  m_pointing.setView(m_database, m_place);
  update();
}

void DrawingView::asked() {
  m_pointing.asked();
  update();
}

void DrawingView::adoptHostView() {
  const AcEdView view = acedView();
  m_place.center = view.center;
  if (!isPlace(m_place.center)) m_place.center = {0.0, 0.0};
  m_place.unitsPerPixel = limited(view.height / std::max(1, height()), m_place.center);
  storeView();
}

/// Tells the host what is shown. Neither a step of U nor a reason to save.
void DrawingView::storeView() {
  if (!m_database) return;
  AcDbUndoLog& log = m_database->undoLog();
  const bool recorded = log.recording();
  const bool current = m_picturedRevision == revision();
  const bool sameNames = m_picturedNames == m_database->namesVersion();
  log.setRecording(false);
  acedSetView(m_place.center, m_place.height());
  acedSetViewAspect(static_cast<double>(std::max(1, width())) / std::max(1, height()));
  log.setRecording(recorded);
  if (sameNames) m_picturedNames = m_database->namesVersion();
  if (current) m_picturedRevision = revision();  // the host's view is no part of the picture
  const AcEdView view = acedView();
  m_hostCenter = view.center;
  m_hostHeight = view.height;
}

void DrawingView::show(const ViewPlace& place) {
  ViewPlace shown = place;
  if (!isPlace(shown.center) || !std::isfinite(shown.unitsPerPixel)) return;
  shown.unitsPerPixel = limited(shown.unitsPerPixel, shown.center);
  m_place = shown;
  m_whole = false;
  storeView();
  m_pointing.setView(m_database, m_place);
  m_rests = false;
  m_rest.start(kRest);
  m_smoothRest.stop();
  update();
}

void DrawingView::remember() {
  if (!m_sinceRemembered.isValid() || m_sinceRemembered.elapsed() > kOneMove) m_former.push_back(m_place);
  if (m_former.size() > kMostFormer) m_former.erase(m_former.begin());
  m_sinceRemembered.start();
}

void DrawingView::zoomPrevious() {
  if (m_former.empty()) return;
  ViewPlace former = m_former.back();
  m_former.pop_back();
  former.unitsPerPixel *= static_cast<double>(former.size.height()) / std::max(1, height());
  former.size = size();
  m_sinceRemembered.invalidate();
  show(former);
}

void DrawingView::zoomTo(const AcGePoint2d& center, double tall) {
  m_sinceRemembered.invalidate();
  remember();
  show({center, tall / std::max(1, height()), size()});
}

void DrawingView::zoomExtents() {
  if (!m_database) return;
  const AcDbExtents whole = m_database->spaceIndex().wholeBox();
  if (whole.isEmpty()) return;
  const AcGePoint3d& low = whole.minPoint();
  const AcGePoint3d& high = whole.maxPoint();
  const double aspect = static_cast<double>(std::max(1, width())) / std::max(1, height());
  const double tall = std::max(high.y - low.y, (high.x - low.x) / aspect) * kMargin;
  zoomTo({(low.x + high.x) / 2, (low.y + high.y) / 2}, tall > 0.0 ? tall : m_place.height());
  m_whole = true;
}

void DrawingView::commandAwaited() {
  if (!m_database) return;
  AcDbSpaceIndex& index = m_database->spaceIndex();
  const bool filled = m_empty == m_database && index.living() > 0;
  m_empty = index.living() == 0 ? m_database : nullptr;
  if (!filled) return;
  const AcDbExtents whole = index.wholeBox();
  const AcGePoint2d low = m_place.toWorld(QPointF(0, height()));
  const AcGePoint2d high = m_place.toWorld(QPointF(width(), 0));
  if (!whole.isEmpty() && (whole.maxPoint().x < low.x || whole.minPoint().x > high.x ||
                           whole.maxPoint().y < low.y || whole.minPoint().y > high.y))
    zoomExtents();
}

void DrawingView::zoomBy(double factor, const QPointF& fixed) {
  remember();
  const AcGePoint2d kept = m_place.toWorld(fixed);
  ViewPlace next = m_place;
  next.unitsPerPixel *= factor;
  const AcGePoint2d there = next.toWorld(fixed);
  next.center = {next.center.x + kept.x - there.x, next.center.y + kept.y - there.y};
  show(next);
}

void DrawingView::setDark(bool dark) {
  m_dark = dark;
  update();
}

bool DrawingView::isDrawn() const {
  return !m_picture.isNull() && m_pictured == m_place && m_picturedRevision == revision() &&
         m_picturedDark == m_dark;
}

void DrawingView::drawAnew() {
  QElapsedTimer clock;
  clock.start();
  const std::optional<AcDbExtents> change = m_database->spaceIndex().takeChange();
  const bool samePlace = !m_picture.isNull() && m_pictured == m_place && m_picturedDark == m_dark;
  if (samePlace && change && m_picturedNames == m_database->namesVersion() &&
      drawChanged(m_picture, *m_database, m_place, m_dark, *change, m_smooth)) {
    m_picturedRevision = revision();
    m_chosenEntities.clear();
    return;
  }
  m_picture = pictureOf(*m_database, m_place, m_dark);
  m_smooth = false;
  m_picturedNames = m_database->namesVersion();
  m_cost = clock.elapsed();
  m_pictured = m_place;
  m_picturedRevision = revision();
  m_picturedDark = m_dark;
  m_chosenEntities.clear();
  if (m_cost <= kMostForSmooth) m_smoothRest.start(kSmoothRest);
}

void DrawingView::smoothen() {
  if (!m_database || !isDrawn() || m_smooth) return;
  m_picture = pictureOf(*m_database, m_place, m_dark, true);
  m_smooth = true;
  update();
}

void DrawingView::paintPicture(QPainter& painter) {
  const bool moves = !m_rests && m_picturedRevision == revision() && m_picturedDark == m_dark &&
                     !m_picture.isNull() && m_cost > kFast;
  if (!isDrawn() && !moves) drawAnew();
  if (m_pictured == m_place) return painter.drawImage(0, 0, m_picture);
  // The picture as it was, where it belongs now.
  painter.fillRect(rect(), backgroundOf(m_dark));
  const QPointF corner = m_place.toPixel(m_pictured.toWorld(QPointF(0, 0)));
  const double scale = m_pictured.unitsPerPixel / m_place.unitsPerPixel;
  painter.drawImage(QRectF(corner, QSizeF(m_picture.size()) * scale), m_picture);
}

void DrawingView::paintVectors(QPainter& painter) const {
  for (const AcEdTransientVector& vector : acedTransientGraphics()) {
    const AcPlColor color = acplIndexColor(vector.color >= 1 && vector.color <= 255 ? vector.color : 7);
    const bool standsOut = vector.color == 7 || vector.color < 1;
    painter.setPen(
        QPen(standsOut ? (m_dark ? Qt::white : Qt::black) : QColor(color.red, color.green, color.blue),
             vector.highlight ? 3 : 1));
    painter.drawLine(m_place.toPixel({vector.from.x, vector.from.y}),
                     m_place.toPixel({vector.to.x, vector.to.y}));
  }
}

/// What is chosen for the next command, and what a command's selection holds so far.
void DrawingView::paintChosen(QPainter& painter) {
  std::vector<AcDbObjectId> chosen = acedSelectionSets().pickFirst;
  if (const AcEdSelectionSet* growing = acedSelectionSets().growing) chosen = growing->entities();
  if (chosen.empty()) return;
  if (chosen != m_chosenEntities || m_chosenPlace != m_place) {
    m_chosen = QImage(m_place.size, QImage::Format_ARGB32_Premultiplied);
    m_chosen.fill(Qt::transparent);
    QPainter over(&m_chosen);
    paintHighlighted(over, *m_database, chosen, m_place, QColor(255, 140, 0));
    m_chosenEntities = std::move(chosen);
    m_chosenPlace = m_place;
  }
  painter.drawImage(0, 0, m_chosen);
}

/// What a command is about to map, where it would come to lie; drawn once for a prompt.
void DrawingView::paintDraggedSet(QPainter& painter) {
  const AcEdDraggedSet* const dragged = acedDraggedSet();
  if (!dragged) {
    m_draggedEntities.clear();
    return;
  }
  if (m_draggedEntities != dragged->entities || m_draggedPlace != m_place) {
    m_draggedRecord = recordOf(*m_database, dragged->entities, m_place, QColor(255, 140, 0));
    m_draggedEntities = dragged->entities;
    m_draggedPlace = m_place;
  }
  painter.save();
  painter.setTransform(pixelMapOf(dragged->map, m_place), true);
  painter.drawPicture(0, 0, m_draggedRecord);
  painter.restore();
}

void DrawingView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (!m_database || m_place.size.isEmpty()) return painter.fillRect(rect(), backgroundOf(m_dark));
  paintPicture(painter);
  paintChosen(painter);
  paintVectors(painter);
  if (const AcDbEntity* const dragged = acedDragged())
    paintDragged(painter, *m_database, *dragged, m_place, m_dark);
  paintDraggedSet(painter);
  m_pointing.paint(painter);
}

void DrawingView::resizeEvent(QResizeEvent*) {
  // What is in the middle stays there, at its size; the whole drawing stays whole.
  m_place.size = size();
  if (m_whole) return zoomExtents();
  storeView();
  m_pointing.setView(m_database, m_place);
}

void DrawingView::wheelEvent(QWheelEvent* event) {
  const double notches = event->angleDelta().y() / kNotch;
  if (notches != 0.0) zoomBy(std::pow(kWheelStep, -notches), event->position());
  event->accept();
}

void DrawingView::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::MiddleButton) {
    remember();
    m_grabbed = event->position();
    setCursor(Qt::ClosedHandCursor);
  } else if (event->button() == Qt::LeftButton) {
    m_pointing.press(event->position());
  } else if (event->button() == Qt::RightButton && confirmed) {
    confirmed();
  }
  update();
}

void DrawingView::mouseMoveEvent(QMouseEvent* event) {
  if (m_grabbed) {
    const QPointF by = event->position() - *m_grabbed;
    m_grabbed = event->position();
    ViewPlace next = m_place;
    next.center = {next.center.x - by.x() * next.unitsPerPixel, next.center.y + by.y() * next.unitsPerPixel};
    show(next);
  }
  m_pointing.move(event->position());
  if (moved) moved();
  update();
}

void DrawingView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::MiddleButton) {
    m_grabbed.reset();
    setCursor(Qt::CrossCursor);
  } else if (event->button() == Qt::LeftButton) {
    m_pointing.release(event->position(), event->modifiers() & Qt::ShiftModifier);
  }
  update();
}

void DrawingView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::MiddleButton) zoomExtents();
  if (event->button() == Qt::LeftButton) m_pointing.press(event->position());
}

void DrawingView::leaveEvent(QEvent*) {
  m_pointing.leave();
  update();
}

void DrawingView::keyPressEvent(QKeyEvent* event) {
  if (typed) typed(event);
}

}  // namespace veltora::app
