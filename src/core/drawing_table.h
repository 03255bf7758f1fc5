#pragma once

#include "arx/db/dbtable.h"
#include "core/drawing_space.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// Lists in a drawing as one object each.
namespace veltora {

struct TableColumn {
  std::wstring title;
  double width = 0.0;                                  ///< drawing units
  AcDb::CellAlignment alignment = AcDb::kMiddleRight;  ///< of the cells below the title
};

/// A table of texts in the drawing's current text style, titles in its first row; texts are cut to what a
/// cell holds.
/// @param rows  without that of the titles
/// @param text  of a cell, row and column from 0
/// @return null when there are too many rows, or none of the columns
VELTORA_API std::unique_ptr<AcDbTable> textTable(
    AcDbDatabase& drawing, const std::vector<TableColumn>& columns, std::size_t rows, double textHeight,
    double rowHeight, const std::function<std::wstring(std::size_t, std::size_t)>& text);
/// Adds a table with its picture. @return the null id, and nothing added, when the drawing refuses it
VELTORA_API AcDbObjectId addTable(DrawingSpace& space, std::unique_ptr<AcDbTable> table);

}  // namespace veltora
