#pragma once

#include "app/window/picture.h"
#include "app/window/pointing.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>
#include <set>

namespace veltora::app {

/// Shows the current drawing and takes the mouse. What it shows and the view of the host, which picks and
/// ZOOM go by, are kept the same; moving about with the mouse is no change of the drawing.
class DrawingView : public QWidget {
public:
  explicit DrawingView(WindowLines& lines);

  /// Takes over what the host changed: the current drawing, its view, its contents.
  void hostChanged();
  /// Another question waits.
  void asked();
  void zoomExtents();
  /// The host waits for a command: what has come into a drawing that was empty is shown when it lies out of
  /// view.
  void commandAwaited();
  /// Shows what was shown before.
  void zoomPrevious();
  void zoomTo(const AcGePoint2d& center, double height);
  /// @param factor  above 1 shows more  @param fixed  pixel that keeps its place in the drawing
  void zoomBy(double factor, const QPointF& fixed);
  void setDark(bool dark);
  [[nodiscard]] bool isDark() const { return m_dark; }
  [[nodiscard]] const ViewPlace& place() const { return m_place; }
  [[nodiscard]] Pointing& pointing() { return m_pointing; }

  /// The cursor stands elsewhere.
  std::function<void()> moved;
  /// A key was pressed that the view has no use for.
  std::function<void(QKeyEvent*)> typed;
  /// The right button: the answer is an empty line.
  std::function<void()> confirmed;

protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

private:
  void adoptHostView();
  void show(const ViewPlace& place);
  void remember();
  void storeView();
  [[nodiscard]] Adesk::UInt64 revision() const;
  void drawAnew();
  /// Draws the picture anew without steps, when nothing has moved for a while and it costs little.
  void smoothen();
  [[nodiscard]] bool isDrawn() const;
  void paintPicture(QPainter& painter);
  void paintVectors(QPainter& painter) const;
  void paintChosen(QPainter& painter);
  void paintDraggedSet(QPainter& painter);

  Pointing m_pointing;
  AcDbDatabase* m_database = nullptr;
  const AcDbDatabase* m_empty = nullptr;  ///< nothing stood in it when the last command was awaited
  ViewPlace m_place;
  AcGePoint2d m_hostCenter;  ///< of the host's view, when it was taken over or set last
  double m_hostHeight = 0.0;
  std::vector<ViewPlace> m_former;
  std::set<const AcDbDatabase*> m_seen;  ///< open drawings that were shown before
  QElapsedTimer m_sinceRemembered;
  bool m_dark = true;
  bool m_whole = false;  ///< all of the drawing is shown, and nothing else was asked for since

  QImage m_picture;
  ViewPlace m_pictured;
  Adesk::UInt64 m_picturedRevision = 0;
  Adesk::UInt64 m_picturedNames = 0;
  bool m_picturedDark = true;
  qint64 m_cost = 0;      ///< of the picture, ms
  bool m_smooth = false;  ///< the picture is
  bool m_rests = true;
  QTimer m_rest;
  QTimer m_smoothRest;
  QImage m_chosen;  ///< what is chosen, as it lies over the picture
  ViewPlace m_chosenPlace;
  std::vector<AcDbObjectId> m_chosenEntities;
  QPicture m_draggedRecord;  ///< what a command is about to map, as it lies
  ViewPlace m_draggedPlace;
  std::vector<AcDbObjectId> m_draggedEntities;
  std::optional<QPointF> m_grabbed;  ///< where the middle button took hold
};

}  // namespace veltora::app
