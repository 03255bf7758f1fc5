#include "app/window/dialogs/list_view.h"

#include "app/window/dialogs/dialog_window.h"
#include "app/window/dialogs/text.h"

#include <QAbstractTableModel>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QScrollBar>
#include <QTreeView>
#include <algorithm>

namespace veltora::app {

/// The rows of a list as the toolkit reads them. How many there are changes only by `renew`, so that a list
/// that grows meanwhile harms nothing.
class RowsModel : public QAbstractTableModel {
public:
  RowsModel(ui::List& list, QObject* parent) : QAbstractTableModel(parent), m_list(list) {}
  std::function<void(int row, bool checked)> onCheck;
  std::function<void(int row, int column, const QString& text)> onEdit;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : m_rowCount;
  }
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : m_columnCount;
  }
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
    if (role == Qt::DisplayRole || role == Qt::EditRole)
      return shown(m_list.cell(index.row(), index.column()));
    if (role == Qt::TextAlignmentRole) return QVariant(alignment(index.column()));
    if (role == Qt::CheckStateRole && index.column() == 0 && m_list.checkBoxes())
      return QVariant(m_list.checked(index.row()) ? Qt::Checked : Qt::Unchecked);
    return {};
  }
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    const auto column = static_cast<std::size_t>(section);
    if (orientation != Qt::Horizontal || column >= m_list.columns().size()) return {};
    if (role == Qt::DisplayRole) return shown(ui::plainText(m_list.columns()[column].caption));
    if (role == Qt::TextAlignmentRole) return QVariant(alignment(section));
    return {};
  }
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override {
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    if (m_list.editable(index.column())) flags |= Qt::ItemIsEditable;
    return index.column() == 0 && m_list.checkBoxes() ? flags | Qt::ItemIsUserCheckable : flags;
  }
  bool setData(const QModelIndex& index, const QVariant& value, int role) override {
    if (role == Qt::EditRole) onEdit(index.row(), index.column(), value.toString());
    if (role != Qt::CheckStateRole) return role == Qt::EditRole;
    onCheck(index.row(), value.toInt() == Qt::Checked);
    return true;
  }

  /// Takes what the list is now.
  void renew() {
    const int rows = m_list.rowCount();
    const auto columns = static_cast<int>(m_list.columns().size());
    if (rows != m_rowCount || columns != m_columnCount) {
      beginResetModel();
      m_rowCount = rows;
      m_columnCount = columns;
      endResetModel();
    } else if (rows > 0 && columns > 0) {
      emit dataChanged(index(0, 0), index(rows - 1, columns - 1));
    }
  }
  void renewCell(int row, int column) {
    if (row < m_rowCount && column < m_columnCount) emit dataChanged(index(row, column), index(row, column));
  }

private:
  [[nodiscard]] Qt::Alignment alignment(int section) const {
    const auto column = static_cast<std::size_t>(section);
    const ui::Align align =
        column < m_list.columns().size() ? m_list.columns()[column].align : ui::Align::Left;
    const Qt::Alignment side = align == ui::Align::Right    ? Qt::AlignRight
                               : align == ui::Align::Center ? Qt::AlignHCenter
                                                            : Qt::AlignLeft;
    return side | Qt::AlignVCenter;
  }
  ui::List& m_list;
  int m_rowCount = 0;
  int m_columnCount = 0;
};

namespace {

constexpr int kRowsShown = 8;
constexpr int kCellMargin = 24;
constexpr int kCellChars = 9;  ///< that a column holds at least
constexpr int kRowsMeasured = 30;
constexpr int kNarrowest = 300;
constexpr int kWidest = 820;

/// The table of rows: its columns share its width.
class Table : public QTreeView {
public:
  Table(ui::List& list, QWidget* parent) : QTreeView(parent), m_list(list) {}
  std::function<void()> pressed;

  /// Some rows, and columns wide enough for their titles.
  [[nodiscard]] QSize sizeHint() const override {
    int width = kNarrowest;
    int index = 0;
    for (const ui::List::Column& column : m_list.columns()) {
      if (column.widthPercent >= 1.0)
        width = std::max(width, static_cast<int>(widest(index) * allShares() / column.widthPercent));
      ++index;
    }
    const int row = fontMetrics().height() + 4;
    return {std::min(width, kWidest) + 2 * frameWidth() + verticalScrollBar()->sizeHint().width(),
            header()->sizeHint().height() + kRowsShown * row + 2 * frameWidth()};
  }
  [[nodiscard]] QSize minimumSizeHint() const override {
    return {kNarrowest, header()->sizeHint().height() + 3 * (fontMetrics().height() + 4)};
  }
  void shareWidth() {
    const int width = viewport()->width();
    for (int i = 0; i < header()->count() && static_cast<std::size_t>(i) < m_list.columns().size(); ++i) {
      const double share = m_list.columns()[static_cast<std::size_t>(i)].widthPercent;
      header()->resizeSection(i, std::max(20, static_cast<int>(width * share / allShares())));
    }
  }

protected:
  void resizeEvent(QResizeEvent* event) override {
    QTreeView::resizeEvent(event);
    shareWidth();
  }
  void mousePressEvent(QMouseEvent* event) override {
    pressed();
    QTreeView::mousePressEvent(event);
  }

private:
  /// Of the title and the first rows, pixels.
  [[nodiscard]] int widest(int column) const {
    const std::wstring& title = m_list.columns()[static_cast<std::size_t>(column)].caption;
    int width = std::max(fontMetrics().horizontalAdvance(shown(ui::plainText(title))),
                         fontMetrics().averageCharWidth() * kCellChars);
    for (int row = 0; row < std::min(m_list.rowCount(), kRowsMeasured); ++row)
      width = std::max(width, fontMetrics().horizontalAdvance(shown(m_list.cell(row, column))));
    return width + kCellMargin;
  }
  /// Columns that leave room share it.
  [[nodiscard]] double allShares() const {
    double sum = 0.0;
    for (const ui::List::Column& column : m_list.columns()) sum += column.widthPercent;
    return sum > 1.0 ? std::min(sum, 100.0) : 100.0;
  }
  ui::List& m_list;
};

}  // namespace

ListView::ListView(DialogWindow& window, ui::List& list)
    : ControlView(window, list), m_list(list), m_rows(new RowsModel(list, &window)) {
  auto* table = new Table(list, &window);
  m_table = table;
  table->setRootIsDecorated(false);
  table->setUniformRowHeights(true);
  table->setItemsExpandable(false);
  // A double click that has a meaning of its own is left to it.
  table->setEditTriggers(list.onDoubleClick
                             ? QAbstractItemView::EditKeyPressed
                             : QAbstractItemView::EditKeyPressed | QAbstractItemView::DoubleClicked);
  table->setModel(m_rows);
  table->header()->setSectionsClickable(true);
  table->header()->setSectionsMovable(false);
  table->header()->setStretchLastSection(false);
  table->header()->setMinimumSectionSize(16);
  table->setTabKeyNavigation(false);
  table->pressed = [this] { m_told = false; };
  place(table, true);
  connectUser();
}

void ListView::connectUser() {
  DialogWindow* const context = &window();
  QObject::connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, context,
                   [this] { selectionMade(); });
  QObject::connect(m_table, &QTreeView::clicked, context, [this](const QModelIndex& index) {
    // A click on what is selected already changes nothing, and is told all the same.
    if (!m_told) window().act(m_list, [this, row = index.row()] { return m_list.userClick(row); });
  });
  QObject::connect(m_table, &QTreeView::doubleClicked, context, [this](const QModelIndex& index) {
    window().act(m_list, [this, row = index.row()] { return m_list.userDoubleClick(row); });
  });
  QObject::connect(m_table->header(), &QHeaderView::sectionClicked, context, [this](int column) {
    window().act(m_list, [this, column] { return m_list.userColumn(column); });
  });
  m_rows->onEdit = [this, context](int row, int column, const QString& text) {
    if (wide(text) == m_list.cell(row, column)) return;
    // Behind the end of the typing: what is told may open a box.
    const auto tell = [this, row, column, typed = wide(text)] {
      window().act(m_list, [this, row, column, typed] { return m_list.userEdit(row, column, typed); });
    };
    QMetaObject::invokeMethod(context, tell, Qt::QueuedConnection);
  };
  m_rows->onCheck = [this](int row, bool checked) {
    window().act(m_list, [this, row, checked] { return m_list.userCheck(row, checked); });
  };
}

std::vector<int> ListView::selectedRows() const {
  std::vector<int> rows;
  for (const QItemSelectionRange& range : m_table->selectionModel()->selection())
    for (int row = range.top(); row <= range.bottom(); ++row) rows.push_back(row);
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  return rows;
}

void ListView::selectionMade() {
  if (window().refreshing()) return;
  m_told = true;
  window().act(m_list, [this, rows = selectedRows()] { return tellSelection(rows); });
}

bool ListView::tellSelection(const std::vector<int>& rows) {
  if (rows.size() == 1) return m_list.userClick(rows.front());
  const std::vector<int> before = m_list.selection();
  std::vector<int> turned;
  std::set_symmetric_difference(before.begin(), before.end(), rows.begin(), rows.end(),
                                std::back_inserter(turned));
  if (turned.size() == 1 && !rows.empty()) return m_list.userClick(turned.front(), true);
  if (rows.size() > 1 && static_cast<int>(rows.size()) == m_list.rowCount()) return m_list.userSelectAll();
  return m_list.userSelect(rows);
}

void ListView::refreshContent() {
  const int scrolled = m_table->verticalScrollBar()->value();
  m_table->setSelectionMode(m_list.selectionMode() == ui::List::Selection::Single
                                ? QAbstractItemView::SingleSelection
                                : QAbstractItemView::ExtendedSelection);
  const int columns = m_rows->columnCount();
  m_rows->renew();
  if (m_rows->columnCount() != columns) static_cast<Table*>(m_table)->shareWidth();
  showSelection();
  m_table->verticalScrollBar()->setValue(scrolled);
}

void ListView::showSelection() {
  const std::vector<int> rows = m_list.selection();
  if (rows == selectedRows()) return;
  const int last = std::max(0, m_rows->columnCount() - 1);
  QItemSelection selection;
  for (std::size_t i = 0; i < rows.size();) {
    std::size_t end = i + 1;
    while (end < rows.size() && rows[end] == rows[end - 1] + 1) ++end;
    selection.select(m_rows->index(rows[i], 0), m_rows->index(rows[end - 1], last));
    i = end;
  }
  m_table->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  if (!rows.empty())
    m_table->selectionModel()->setCurrentIndex(m_rows->index(rows.front(), 0), QItemSelectionModel::NoUpdate);
}

void ListView::refreshCell(int row, int column) { m_rows->renewCell(row, column); }

}  // namespace veltora::app
