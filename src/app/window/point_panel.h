#pragma once

#include "arx/ge/gepoint.h"

#include <QWidget>
#include <cstddef>
#include <functional>

class QLabel;
class QSortFilterProxyModel;
class QTableView;

namespace veltora::app {

class PointModel;

/// The points of the current table: sorted by a click on a column, filtered by what their number begins with;
/// a double click shows the place of one.
class PointPanel : public QWidget {
public:
  PointPanel();
  /// Shows the points as they are now.
  void refresh();
  std::function<void(const AcGePoint2d& place)> shownAt;
  [[nodiscard]] QTableView& table() { return *m_table; }

private:
  QLabel* m_title;
  QTableView* m_table;
  PointModel* m_model;
  QSortFilterProxyModel* m_sorted;
  std::size_t m_print = 0;  ///< of the tables when they were shown
};

}  // namespace veltora::app
