#pragma once

#include "arx/db/dbents.h"

#include <span>
#include <string>
#include <vector>

struct DxfTag;

namespace AcDb {
/// Where the text of a cell stands in it.
enum CellAlignment {
  kTopLeft = 1,
  kTopCenter,
  kTopRight,
  kMiddleLeft,
  kMiddleCenter,
  kMiddleRight,
  kBottomLeft,
  kBottomCenter,
  kBottomRight
};
enum RowType { kUnknownRow = 0, kDataRow = 1, kTitleRow = 2, kHeaderRow = 4 };
}  // namespace AcDb

/// Table of texts in a level plane, hanging below its position. Its first row is the title, which runs over
/// all columns, its second one the header, unless these are suppressed. What other programs show of it is an
/// anonymous block ("*T1"), which `recomputeTableBlock` makes anew: to be called behind changes.
///
/// Only tables of this form are of this class; others of a drawing stay file text (`AcDbOtherEntity`).
class ARX_API AcDbTable : public AcDbEntity {
  ACRX_DECLARE_MEMBERS(AcDbTable)
  ACDB_DECLARE_COPY(AcDbTable)
public:
  static constexpr int kMostRows = 100000;
  static constexpr int kMostColumns = 1000;
  static constexpr std::size_t kLongestText = 250;

  AcDbTable() = default;
  [[nodiscard]] AcGePoint3d position() const { return m_shape.position; }
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  [[nodiscard]] AcGeVector3d direction() const { return m_shape.direction; }  ///< of the rows, unit vector
  /// Level and not 0, else `eInvalidInput`.
  Acad::ErrorStatus setDirection(const AcGeVector3d& direction);
  /// Rows and columns, 1 to the most; cells that stay keep their texts, new rows and columns take the size of
  /// the last. `eInvalidInput` outside, and for more than 1,000,000 cells.
  Acad::ErrorStatus setSize(int rows, int columns);
  [[nodiscard]] int numRows() const { return static_cast<int>(m_shape.heights.size()); }
  [[nodiscard]] int numColumns() const { return static_cast<int>(m_shape.widths.size()); }
  /// Drawing units, above 0; `eInvalidIndex`, `eInvalidInput`.
  Acad::ErrorStatus setRowHeight(int row, double height);
  Acad::ErrorStatus setColumnWidth(int column, double width);
  [[nodiscard]] double rowHeight(int row) const;  ///< 0 for a row that is not there, likewise the next
  [[nodiscard]] double columnWidth(int column) const;
  [[nodiscard]] double height() const;  ///< of the whole table
  [[nodiscard]] double width() const;
  /// One line of at most 250 characters; `eInvalidIndex`, `eInvalidInput`.
  Acad::ErrorStatus setTextString(int row, int column, const AcString& text);
  [[nodiscard]] AcString textString(int row, int column) const;  ///< empty for a cell that is not there
  /// Above 0, of all cells or of one kind of rows (a sum of `AcDb::RowType`).
  Acad::ErrorStatus setTextHeight(double height,
                                  int rowTypes = AcDb::kDataRow | AcDb::kTitleRow | AcDb::kHeaderRow);
  [[nodiscard]] double textHeight(int row, int column) const;
  Acad::ErrorStatus setAlignment(int row, int column, AcDb::CellAlignment alignment);
  [[nodiscard]] AcDb::CellAlignment alignment(int row, int column) const;
  Acad::ErrorStatus setTextStyle(AcDbObjectId style);  ///< of all cells; null: the drawing's standard one
  [[nodiscard]] AcDbObjectId textStyle() const { return m_style; }
  Acad::ErrorStatus suppressTitleRow(bool suppress) { return change(m_shape.noTitle, suppress); }
  Acad::ErrorStatus suppressHeaderRow(bool suppress) { return change(m_shape.noHeader, suppress); }
  [[nodiscard]] bool isTitleSuppressed() const { return m_shape.noTitle; }
  [[nodiscard]] bool isHeaderSuppressed() const { return m_shape.noHeader; }
  [[nodiscard]] AcDb::RowType rowType(int row) const;
  [[nodiscard]] AcDbObjectId blockTableRecord() const { return m_block; }
  /// Makes the block that shows the table anew, in the table's drawing; one that another table shows too
  /// stays, and the table gets its own. `eNoDatabase` for a table outside a drawing.
  Acad::ErrorStatus recomputeTableBlock();

  /// Turns about the vertical, moves, and scales alike in all directions; `eCannotScaleNonUniformly` for
  /// other maps.
  Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
  void subWorldDraw(AcGiWorldDraw& draw) const override;
  void dxfInFields(AcDbDxfReader& in) override;
  void dxfOutFields(AcDbDxfWriter& out) const override;
  void visitReferences(const std::function<void(AcDbObjectId&)>& visit) override;
  /// Whether the groups of a file are those that a table of this class writes.
  [[nodiscard]] static bool isGivenBy(std::span<const DxfTag> tags);

protected:
  void exchangeFields(AcDbTable& other);

private:
  struct Cell {
    AcString text;
    double height = 2.5;
    int alignment = AcDb::kMiddleCenter;
  };
  struct Shape {
    AcGePoint3d position;
    AcGeVector3d direction{1, 0, 0};
    std::vector<double> heights;
    std::vector<double> widths;
    std::vector<Cell> cells;  // row by row
    bool noTitle = false;
    bool noHeader = false;
    // As file text, on reading: names of the block and of the text style, handle of the table style.
    std::string block, style, tableStyle;
    bool read(std::span<const DxfTag> place, std::span<const DxfTag> table);
  };
  class GroupCursor;
  [[nodiscard]] bool hasCell(int row, int column) const;
  [[nodiscard]] Cell& cellAt(int row, int column) {
    return m_shape
        .cells[static_cast<std::size_t>(row) * m_shape.widths.size() + static_cast<std::size_t>(column)];
  }
  [[nodiscard]] const Cell& cellAt(int row, int column) const {
    return const_cast<AcDbTable*>(this)->cellAt(row, column);
  }
  [[nodiscard]] bool isMerged(int row, int column) const {
    return rowType(row) == AcDb::kTitleRow && column > 0;
  }
  Acad::ErrorStatus ownBlock(AcDbDatabase& database);
  void drawInto(AcDbObjectId block) const;
  void writeCell(AcDbDxfWriter& out, int row, int column) const;

  Shape m_shape;
  AcDbObjectId m_block;
  AcDbObjectId m_style;
  AcDbObjectId m_tableStyle;
};
