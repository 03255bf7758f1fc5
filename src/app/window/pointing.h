#pragma once

#include "app/window/snapping.h"
#include "app/window/view_place.h"
#include "app/window/window_lines.h"
#include "arx/db/dbid.h"

#include <functional>
#include <string>

class QMouseEvent;
class QPainter;

namespace veltora::app {

/// What the mouse means to the question that waits: points, entities, windows and crossings become the lines
/// that a script would answer with. When no command waits, entities are chosen for the next one.
class Pointing {
public:
  explicit Pointing(WindowLines& lines) : m_lines(lines) {}

  /// The drawing and the place that are shown; null for none.
  void setView(AcDbDatabase* database, const ViewPlace& place);
  void move(const QPointF& pixel);
  void press(const QPointF& pixel);
  /// @param remove  what is chosen leaves the choice
  void release(const QPointF& pixel, bool remove);
  /// The cursor has left the view.
  void leave() { m_inside = false; }
  /// Another question waits.
  void asked();
  /// Gives up a rectangle that was begun. @return false when there is none
  bool escape();
  /// The next two points are corners of the part that is to be shown.
  void beginZoomWindow();
  void paint(QPainter& painter) const;

  /// Where the cursor is, snapped and held to the axes.
  [[nodiscard]] const AcGePoint3d& cursor() const { return m_cursor; }
  [[nodiscard]] const std::optional<Snapped>& snapped() const { return m_snapped; }
  [[nodiscard]] bool wantsPoint() const;
  /// The question takes points or entities, or a rectangle is begun.
  [[nodiscard]] bool isPointing() const;

  std::vector<AcEdSnap> snaps;  ///< in force
  bool ortho = false;
  /// A part of the drawing was framed to be shown.
  std::function<void(const AcGePoint2d& a, const AcGePoint2d& b)> framed;
  /// What is chosen changed.
  std::function<void()> chosen;

private:
  [[nodiscard]] bool selects() const;
  [[nodiscard]] std::optional<AcGePoint3d> base() const;
  [[nodiscard]] std::string textOf(const AcGePoint3d& point, bool exact) const;
  [[nodiscard]] AcGePoint3d worldOf(const QPointF& pixel) const;
  void rectangle(const QPointF& from, const QPointF& to, bool remove);
  void click(const QPointF& pixel, bool remove);
  void choose(const std::vector<AcDbObjectId>& entities, bool remove);
  void paintRectangle(QPainter& painter) const;
  void paintRubber(QPainter& painter) const;
  void paintMarker(QPainter& painter) const;

  WindowLines& m_lines;
  AcDbDatabase* m_database = nullptr;
  ViewPlace m_place;
  bool m_inside = false;
  QPointF m_pixel;
  AcGePoint3d m_cursor;
  std::optional<Snapped> m_snapped;
  std::optional<QPointF> m_pressed;     ///< where the button went down
  std::optional<AcGePoint2d> m_corner;  ///< of a rectangle that was begun by a click
  bool m_zooming = false;
};

}  // namespace veltora::app
