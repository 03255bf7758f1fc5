#include "ui/list.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace veltora::ui {

List::List(Container* parent, std::wstring caption, Selection mode)
    : Control(parent, std::move(caption)), m_mode(mode) {}

void List::setSelectionMode(Selection mode) {
  m_mode = mode;
  touch();
}

void List::setCheckBoxes(bool checkBoxes) {
  m_checkBoxes = checkBoxes;
  touch();
}

void List::addColumn(const std::wstring& caption, double widthPercent, Align align) {
  m_columns.push_back({caption, widthPercent, align});
  touch();
}

List::Row* List::at(int row) {
  return row >= 0 && row < rowCount() ? &m_rows[static_cast<std::size_t>(row)] : nullptr;
}

const List::Row* List::at(int row) const { return const_cast<List*>(this)->at(row); }

int List::addRow(std::vector<std::wstring> cells, long long data) {
  return insertRow(rowCount(), std::move(cells), data);
}

int List::insertRow(int row, std::vector<std::wstring> cells, long long data) {
  if (!at(row)) row = rowCount();
  m_rows.insert(m_rows.begin() + row, Row{std::move(cells), data, false, false});
  touch();
  return row;
}

void List::removeRow(int row) {
  if (!at(row)) return;
  m_rows.erase(m_rows.begin() + row);
  touch();
}

void List::clear() {
  m_rows.clear();
  touch();
}

void List::reserve(int rows) {
  if (rows > 0) m_rows.reserve(static_cast<std::size_t>(rows));
}

void List::setEditable(int column) {
  if (column >= 0 && static_cast<std::size_t>(column) < m_columns.size())
    m_columns[static_cast<std::size_t>(column)].editable = true;
  touch();
}

bool List::editable(int column) const {
  return column >= 0 && static_cast<std::size_t>(column) < m_columns.size() &&
         m_columns[static_cast<std::size_t>(column)].editable;
}

std::wstring List::cell(int row, int column) const {
  const Row* found = at(row);
  if (!found || column < 0 || static_cast<std::size_t>(column) >= found->cells.size()) return {};
  return found->cells[static_cast<std::size_t>(column)];
}

void List::setCell(int row, int column, const std::wstring& text) {
  Row* found = at(row);
  if (!found || column < 0 || static_cast<std::size_t>(column) >= m_columns.size()) return;
  if (found->cells.size() < m_columns.size()) found->cells.resize(m_columns.size());
  found->cells[static_cast<std::size_t>(column)] = text;
  touchCell(*this, row, column);
}

long long List::data(int row) const {
  const Row* found = at(row);
  return found ? found->data : 0;
}

void List::setData(int row, long long data) {
  if (Row* found = at(row)) found->data = data;
  touch();
}

int List::findData(long long data) const {
  const auto found =
      std::find_if(m_rows.begin(), m_rows.end(), [data](const Row& r) { return r.data == data; });
  return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

bool List::checked(int row) const {
  const Row* found = at(row);
  return found && found->checked;
}

void List::setChecked(int row, bool checked) {
  if (Row* found = at(row)) found->checked = checked;
  touch();
}

bool List::selected(int row) const {
  const Row* found = at(row);
  return found && found->selected;
}

void List::select(int row, bool selected) {
  Row* found = at(row);
  if (!found) return;
  if (selected && m_mode == Selection::Single) clearSelection();
  found->selected = selected;
  touch();
}

void List::clearSelection() {
  for (Row& row : m_rows) row.selected = false;
  touch();
}

std::vector<int> List::selection() const {
  std::vector<int> rows;
  for (int i = 0; i < rowCount(); ++i) {
    if (selected(i)) rows.push_back(i);
  }
  return rows;
}

int List::selectedRow() const {
  const auto found = std::find_if(m_rows.begin(), m_rows.end(), [](const Row& r) { return r.selected; });
  return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

void List::sort(const std::function<int(long long, long long)>& compare) {
  std::vector<std::size_t> order(m_rows.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  // The rows move only once the order stands, so that a comparison that throws loses none.
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return compare(m_rows[a].data, m_rows[b].data) < 0; });
  std::vector<Row> sorted;
  sorted.reserve(order.size());
  for (const std::size_t i : order) sorted.push_back(std::move(m_rows[i]));
  m_rows = std::move(sorted);
  touch();
}

void List::click(int row, bool ctrl) {
  if (!ctrl || m_mode == Selection::Single) clearSelection();
  select(row, !(ctrl && selected(row)));
  if (onClick) onClick(row, ctrl);
}

bool List::userClick(int row, bool ctrl) {
  if (!at(row) || !userEnter() || !at(row)) return false;
  click(row, ctrl);
  call(onChange);
  return true;
}

bool List::userSelect(const std::vector<int>& rows) {
  if (!userEnter()) return false;
  clearSelection();
  bool ctrl = false;
  for (const int row : rows) {
    if (!at(row) || selected(row)) continue;  // a click may have selected its neighbours already
    click(row, ctrl);
    ctrl = true;
  }
  call(onChange);
  return true;
}

bool List::userSelectAll() {
  if (m_mode == Selection::Single || !userEnter()) return false;
  for (Row& row : m_rows) row.selected = true;
  touch();
  call(onChange);
  return true;
}

bool List::userDoubleClick(int row) {
  if (!userClick(row)) return false;
  if (at(row) && onDoubleClick) onDoubleClick(row);
  return true;
}

bool List::userColumn(int column) {
  if (column < 0 || static_cast<std::size_t>(column) >= m_columns.size() || !userEnter()) return false;
  if (onColumn) onColumn(column);
  return true;
}

bool List::userCheck(int row, bool checked) {
  if (!m_checkBoxes || !at(row) || !userEnter() || !at(row)) return false;
  setChecked(row, checked);
  if (onCheck) onCheck(row);
  return true;
}

bool List::userEdit(int row, int column, const std::wstring& text) {
  if (!editable(column) || !at(row) || !userEnter() || !at(row)) return false;
  const std::optional<std::wstring> taken = onEdit ? onEdit(row, column, text) : text;
  if (taken) setCell(row, column, *taken);
  return taken.has_value();
}

}  // namespace veltora::ui
