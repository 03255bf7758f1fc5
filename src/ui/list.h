#pragma once

#include "ui/control.h"

#include <optional>

/// A table of texts with column titles.
namespace veltora::ui {

enum class Align { Left, Center, Right };

/// Rows and columns count from 0. Reading outside gives an empty text, 0, false or -1;
/// writing outside does nothing.
class VELTORA_API List : public Control {
public:
  enum class Selection { Single, Multiple };
  struct Column {
    std::wstring caption;
    double widthPercent = 0.0;  ///< share of the list's width
    Align align = Align::Left;
    bool editable = false;  ///< its cells are changed in place
  };

  explicit List(Container* parent, std::wstring caption = {}, Selection mode = Selection::Multiple);
  [[nodiscard]] Selection selectionMode() const { return m_mode; }
  void setSelectionMode(Selection mode);
  [[nodiscard]] bool checkBoxes() const { return m_checkBoxes; }
  void setCheckBoxes(bool checkBoxes = true);

  void addColumn(const std::wstring& caption, double widthPercent, Align align = Align::Left);
  [[nodiscard]] const std::vector<Column>& columns() const { return m_columns; }
  /// Cells of this column are changed in place from now on; `onEdit` says how.
  void setEditable(int column);
  [[nodiscard]] bool editable(int column) const;

  [[nodiscard]] int rowCount() const { return static_cast<int>(m_rows.size()); }
  /// @param data the user number that goes with the row, also when rows are sorted
  /// @return the index of the new row
  int addRow(std::vector<std::wstring> cells, long long data = 0);
  /// In front of `row`; at the end when it lies outside.
  int insertRow(int row, std::vector<std::wstring> cells, long long data = 0);
  void removeRow(int row);
  /// Removes all rows; the columns stay.
  void clear();
  void reserve(int rows);
  [[nodiscard]] std::wstring cell(int row, int column) const;
  void setCell(int row, int column, const std::wstring& text);
  [[nodiscard]] long long data(int row) const;
  void setData(int row, long long data);
  /// The first row with that user number, -1 for none.
  [[nodiscard]] int findData(long long data) const;

  [[nodiscard]] bool checked(int row) const;
  void setChecked(int row, bool checked);

  [[nodiscard]] bool selected(int row) const;
  /// In a list of single selection the other rows lose it.
  void select(int row, bool selected = true);
  void clearSelection();
  /// Selected rows, ascending.
  [[nodiscard]] std::vector<int> selection() const;
  /// The first selected row, -1 for none.
  [[nodiscard]] int selectedRow() const;

  /// Stable sort by a comparison of two rows' user numbers (negative, 0, positive); selection and checks go
  /// with their rows. A comparison that contradicts itself gives some order, and no harm.
  void sort(const std::function<int(long long, long long)>& compare);

  [[nodiscard]] std::wstring kindName() const override { return L"Liste"; }
  [[nodiscard]] Kind kind() override { return this; }

  /// A click on a row. Without `ctrl` the others lose their selection; with it the row's own is turned over.
  bool userClick(int row, bool ctrl = false);
  /// The rows clicked in turn, all but the first with the Ctrl key; none clears the selection. `onChange`
  /// comes once.
  bool userSelect(const std::vector<int>& rows);
  bool userSelectAll();
  /// The row is clicked first.
  bool userDoubleClick(int row);
  bool userColumn(int column);
  bool userCheck(int row, bool checked);
  /// A text typed into a cell of an editable column. @return false when it was not taken
  bool userEdit(int row, int column, const std::wstring& text);

  // `onChange` tells that the selection may have changed.
  std::function<void(int row, bool ctrl)> onClick;
  std::function<void(int row)> onDoubleClick;
  std::function<void(int column)> onColumn;
  std::function<void(int row)> onCheck;
  /// What a cell shows for the text that was typed into it; nothing, behind a message, refuses it. Without
  /// this a cell shows what was typed.
  std::function<std::optional<std::wstring>(int row, int column, const std::wstring& text)> onEdit;

private:
  struct Row {
    std::vector<std::wstring> cells;
    long long data = 0;
    bool checked = false;
    bool selected = false;
  };
  [[nodiscard]] Row* at(int row);
  [[nodiscard]] const Row* at(int row) const;
  void click(int row, bool ctrl);

  std::vector<Column> m_columns;
  std::vector<Row> m_rows;
  Selection m_mode;
  bool m_checkBoxes = false;
};

}  // namespace veltora::ui
