#pragma once

#include "app/window/dialogs/control_view.h"

class QItemSelection;
class QTreeView;

namespace veltora::app {

class RowsModel;

/// A list with its columns in their shares of the width. The rows are read as they are painted, so that long
/// lists cost nothing to show.
class ListView : public ControlView {
public:
  ListView(DialogWindow& window, ui::List& list);
  [[nodiscard]] QTreeView& table() const { return *m_table; }
  [[nodiscard]] bool grows() const override { return true; }
  void refreshCell(int row, int column) override;

protected:
  void refreshContent() override;

private:
  void connectUser();
  void selectionMade();
  void showSelection();
  [[nodiscard]] std::vector<int> selectedRows() const;
  bool tellSelection(const std::vector<int>& rows);

  ui::List& m_list;
  RowsModel* m_rows;
  QTreeView* m_table;
  bool m_told = false;  ///< the click in progress changed the selection, which the list has heard
};

}  // namespace veltora::app
