#include "core/drawing_table.h"

namespace veltora {

std::unique_ptr<AcDbTable> textTable(AcDbDatabase& drawing, const std::vector<TableColumn>& columns,
                                     std::size_t rows, double textHeight, double rowHeight,
                                     const std::function<std::wstring(std::size_t, std::size_t)>& text) {
  auto table = std::make_unique<AcDbTable>();
  if (rows >= static_cast<std::size_t>(AcDbTable::kMostRows)) return nullptr;
  const int lines = static_cast<int>(rows) + 1;
  if (table->setSize(lines, static_cast<int>(columns.size())) != Acad::eOk) return nullptr;
  table->suppressTitleRow(true);
  table->setTextStyle(drawing.textstyle());
  table->setTextHeight(textHeight);
  for (int line = 0; line < lines; ++line) table->setRowHeight(line, rowHeight);
  for (std::size_t c = 0; c < columns.size(); ++c) {
    const int column = static_cast<int>(c);
    table->setColumnWidth(column, columns[c].width);
    table->setTextString(0, column, columns[c].title);
    for (std::size_t row = 0; row < rows; ++row) {
      table->setTextString(static_cast<int>(row) + 1, column,
                           text(row, c).substr(0, AcDbTable::kLongestText));
      table->setAlignment(static_cast<int>(row) + 1, column, columns[c].alignment);
    }
  }
  return table;
}

AcDbObjectId addTable(DrawingSpace& space, std::unique_ptr<AcDbTable> table) {
  AcDbTable* const added = space.ready() ? space.addOpen(std::move(table)) : nullptr;
  if (!added) return {};
  const bool shown = added->recomputeTableBlock() == Acad::eOk;
  if (!shown) added->erase();
  added->close();
  return shown ? added->objectId() : AcDbObjectId();
}

}  // namespace veltora
