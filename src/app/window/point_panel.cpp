#include "app/window/point_panel.h"

#include "app/window/text.h"
#include "base/text.h"
#include "points/infos_topo.h"

#include <QAbstractTableModel>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>

namespace veltora::app {
namespace {

enum Column { kNumber, kX, kY, kZ, kCode, kColumns };
constexpr int kDecimals = 3;

}  // namespace

/// A copy of what the panel shows, so that the table may change while it is on the screen.
class PointModel : public QAbstractTableModel {
public:
  struct Row {
    QString number;
    double x;
    double y;
    double z;
    int code;
  };
  using QAbstractTableModel::QAbstractTableModel;
  void setRows(std::vector<Row> rows) {
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
  }
  [[nodiscard]] const Row& at(int row) const { return m_rows[static_cast<std::size_t>(row)]; }
  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
  }
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : kColumns;
  }
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    static const QStringList titles = {"Numéro", "X", "Y", "Z", "Code"};
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? QVariant(titles[section]) : QVariant();
  }
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
    const Row& row = at(index.row());
    if (role == Qt::TextAlignmentRole)
      return static_cast<int>(Qt::AlignVCenter |
                              (index.column() == kNumber ? Qt::AlignLeft : Qt::AlignRight));
    if (role == Qt::UserRole) return sortKey(row, index.column());
    if (role != Qt::DisplayRole) return {};
    switch (index.column()) {
      case kNumber:
        return row.number;
      case kX:
        return QString::number(row.x, 'f', kDecimals);
      case kY:
        return QString::number(row.y, 'f', kDecimals);
      case kZ:
        return row.z == Z_ABSENT ? QString() : QString::number(row.z, 'f', kDecimals);
      default:
        return row.code;
    }
  }

private:
  static QVariant sortKey(const Row& row, int column) {
    const double values[] = {0.0, row.x, row.y, row.z};
    if (column == kNumber) return row.number;
    return column == kCode ? QVariant(row.code) : QVariant(values[column]);
  }
  std::vector<Row> m_rows;
};

namespace {

/// Numbers sort by their size: 9 in front of 10.
class Sorted : public QSortFilterProxyModel {
public:
  using QSortFilterProxyModel::QSortFilterProxyModel;

protected:
  [[nodiscard]] bool lessThan(const QModelIndex& a, const QModelIndex& b) const override {
    if (a.column() != kNumber) return QSortFilterProxyModel::lessThan(a, b);
    const QString left = a.data(Qt::UserRole).toString();
    const QString right = b.data(Qt::UserRole).toString();
    bool first = false;
    bool second = false;
    const double m = left.toDouble(&first);
    const double n = right.toDouble(&second);
    if (first && second) return m < n;
    return first != second ? first : QString::compare(left, right, Qt::CaseInsensitive) < 0;
  }
};

}  // namespace

PointPanel::PointPanel()
    : m_title(new QLabel),
      m_table(new QTableView),
      m_model(new PointModel(this)),
      m_sorted(new Sorted(this)) {
  m_sorted->setSourceModel(m_model);
  m_sorted->setSortRole(Qt::UserRole);
  m_sorted->setFilterKeyColumn(kNumber);
  m_table->setObjectName("points");
  m_table->setModel(m_sorted);
  m_table->setSortingEnabled(true);
  m_table->sortByColumn(-1, Qt::AscendingOrder);
  m_table->setSelectionBehavior(QTableView::SelectRows);
  m_table->verticalHeader()->hide();
  m_table->horizontalHeader()->setStretchLastSection(true);
  auto* const filter = new QLineEdit;
  filter->setObjectName("filtre");
  filter->setPlaceholderText("Numéros qui commencent par…");
  filter->setClearButtonEnabled(true);
  auto* const rows = new QVBoxLayout(this);
  rows->setContentsMargins(2, 2, 2, 2);
  rows->addWidget(m_title);
  rows->addWidget(filter);
  rows->addWidget(m_table, 1);
  connect(filter, &QLineEdit::textChanged, this, [this](const QString& text) {
    m_sorted->setFilterRegularExpression(QRegularExpression('^' + QRegularExpression::escape(text),
                                                            QRegularExpression::CaseInsensitiveOption));
  });
  connect(m_table, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
    const PointModel::Row& row = m_model->at(m_sorted->mapToSource(index).row());
    if (shownAt) shownAt({row.x, row.y});
  });
}

void PointPanel::refresh() {
  const std::size_t print = tablesPoints ? empreinteTables(*tablesPoints) : 0;
  if (print == m_print && !m_title->text().isEmpty()) return;
  m_print = print;
  std::vector<PointModel::Row> rows;
  QString title = "Aucun dessin";
  if (tablesPoints) {
    const listePointsDuDessin& table = *tablesPoints->currTable();
    rows.reserve(static_cast<std::size_t>(table.nbPoint()));
    for (const pointDuDessin& point : *table.getData())
      rows.push_back({shown(base::widen(point.getNomPoint())), point.x, point.y, point.z, point.code});
    title = QString("Table %1 : %2 points").arg(shown(table.getNomTable())).arg(table.nbPoint());
  }
  m_title->setText(title);
  m_model->setRows(std::move(rows));
}

}  // namespace veltora::app
