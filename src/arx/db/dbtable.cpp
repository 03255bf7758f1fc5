#include "arx/db/dbtable.h"

#include "arx/db/dbblocktable.h"
#include "arx/db/dblines.h"
#include "arx/db/dbmain.h"
#include "arx/db/dbplanemap.h"
#include "arx/db/dbtablestyle.h"
#include "arx/db/dbtext.h"
#include "arx/gi/gigeometry.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>

ACDB_DEFINE_MEMBERS(AcDbTable, AcDbEntity, "ACAD_TABLE")

namespace {

constexpr double kMargin = 0.1;  // of a cell, in text heights on both sides
constexpr int kAnonymous = 1;    // flag of a block
constexpr int kMostCells = 1000000;
constexpr int kOverrides = 0x31;  // of a cell: alignment, text style, text height
constexpr double kLevel = 1e-9;   // sine of the angle by which a map may tilt the table

bool isSize(double value) { return value > 0 && std::isfinite(value); }

AcString nameOf(AcDbObjectId id, const ACHAR* none) {
  const auto* record = id.isLive() ? AcDbSymbolTableRecord::cast(id.stub()->object) : nullptr;
  return record ? record->name() : AcString(none);
}

// Other blocks are never changed, whatever a file says.
bool isPictureName(std::wstring_view name) {
  return name.substr(0, 2) == L"*T" || name.substr(0, 2) == L"*t";
}

bool isShared(const AcDbTable& table, AcDbDatabase& database) {
  for (const AcDbObjectId id : database.allObjects()) {
    const auto* other = id.isLive() ? AcDbTable::cast(id.stub()->object) : nullptr;
    if (other && other != &table && other->blockTableRecord() == table.blockTableRecord()) return true;
  }
  return false;
}

void clear(const AcDbBlockTableRecord& block) {
  const std::vector<AcDbObjectId> parts = block.entities();
  for (const AcDbObjectId id : parts) {
    const AcDbObjectPointer<AcDbEntity> part(id, AcDb::kForWrite);
    if (part) part->erase();
  }
}

}  // namespace

// ---- what it holds

Acad::ErrorStatus AcDbTable::setPosition(const AcGePoint3d& position) {
  return change(m_shape.position, position);
}

Acad::ErrorStatus AcDbTable::setDirection(const AcGeVector3d& direction) {
  const AcGeVector3d unit = direction.normal();
  if (!(unit.lengthSqrd() > 0.5) || !(std::fabs(unit.z) <= kLevel)) return Acad::eInvalidInput;
  return change(m_shape.direction, AcGeVector3d(unit.x, unit.y, 0).normal());
}

Acad::ErrorStatus AcDbTable::setSize(int rows, int columns) {
  if (rows < 1 || columns < 1 || rows > kMostRows || columns > kMostColumns || rows > kMostCells / columns)
    return Acad::eInvalidInput;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  const auto r = static_cast<std::size_t>(rows);
  const auto c = static_cast<std::size_t>(columns);
  std::vector<Cell> cells(r * c);
  for (std::size_t i = 0; i < std::min(r, m_shape.heights.size()); ++i)
    for (std::size_t j = 0; j < std::min(c, m_shape.widths.size()); ++j)
      cells[i * c + j] = m_shape.cells[i * m_shape.widths.size() + j];
  m_shape.cells.swap(cells);
  m_shape.heights.resize(r, m_shape.heights.empty() ? 4.5 : m_shape.heights.back());
  m_shape.widths.resize(c, m_shape.widths.empty() ? 25.0 : m_shape.widths.back());
  return status;
}

Acad::ErrorStatus AcDbTable::setRowHeight(int row, double height) {
  if (row < 0 || row >= numRows()) return Acad::eInvalidIndex;
  return isSize(height) ? change(m_shape.heights[static_cast<std::size_t>(row)], height)
                        : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbTable::setColumnWidth(int column, double width) {
  if (column < 0 || column >= numColumns()) return Acad::eInvalidIndex;
  return isSize(width) ? change(m_shape.widths[static_cast<std::size_t>(column)], width)
                       : Acad::eInvalidInput;
}

double AcDbTable::rowHeight(int row) const {
  return row >= 0 && row < numRows() ? m_shape.heights[static_cast<std::size_t>(row)] : 0.0;
}
double AcDbTable::columnWidth(int column) const {
  return column >= 0 && column < numColumns() ? m_shape.widths[static_cast<std::size_t>(column)] : 0.0;
}
double AcDbTable::height() const {
  return std::accumulate(m_shape.heights.begin(), m_shape.heights.end(), 0.0);
}
double AcDbTable::width() const { return std::accumulate(m_shape.widths.begin(), m_shape.widths.end(), 0.0); }

bool AcDbTable::hasCell(int row, int column) const {
  return row >= 0 && row < numRows() && column >= 0 && column < numColumns();
}

Acad::ErrorStatus AcDbTable::setTextString(int row, int column, const AcString& text) {
  if (!hasCell(row, column)) return Acad::eInvalidIndex;
  if (text.size() > kLongestText) return Acad::eInvalidInput;
  return change(cellAt(row, column).text, text);
}

AcString AcDbTable::textString(int row, int column) const {
  return hasCell(row, column) ? cellAt(row, column).text : AcString();
}

Acad::ErrorStatus AcDbTable::setTextHeight(double height, int rowTypes) {
  if (!isSize(height)) return Acad::eInvalidInput;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  for (int row = 0; row < numRows(); ++row)
    for (int column = 0; column < numColumns() && (rowType(row) & rowTypes) != 0; ++column)
      cellAt(row, column).height = height;
  return status;
}

double AcDbTable::textHeight(int row, int column) const {
  return hasCell(row, column) ? cellAt(row, column).height : 0.0;
}

Acad::ErrorStatus AcDbTable::setAlignment(int row, int column, AcDb::CellAlignment alignment) {
  if (!hasCell(row, column)) return Acad::eInvalidIndex;
  return change(cellAt(row, column).alignment, static_cast<int>(alignment));
}

AcDb::CellAlignment AcDbTable::alignment(int row, int column) const {
  return hasCell(row, column) ? static_cast<AcDb::CellAlignment>(cellAt(row, column).alignment)
                              : AcDb::kMiddleCenter;
}

Acad::ErrorStatus AcDbTable::setTextStyle(AcDbObjectId style) { return change(m_style, style); }

AcDb::RowType AcDbTable::rowType(int row) const {
  const int header = m_shape.noTitle ? 0 : 1;
  if (row == 0 && !m_shape.noTitle) return AcDb::kTitleRow;
  return row == header && !m_shape.noHeader ? AcDb::kHeaderRow : AcDb::kDataRow;
}

// ---- what it looks like

Acad::ErrorStatus AcDbTable::ownBlock(AcDbDatabase& database) {
  const AcDbBlockTableRecord* former = acdbBlockRecord(m_block);
  if (former && isPictureName(former->name()) && !isShared(*this, database)) {
    clear(*former);
    return Acad::eOk;
  }
  const AcDbObjectId block = acdbAddNumberedBlock(database, L"*T");
  const AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForWrite);
  if (!record) return Acad::eInvalidInput;
  record->setFlags(kAnonymous);
  return change(m_block, block);
}

Acad::ErrorStatus AcDbTable::recomputeTableBlock() {
  AcDbDatabase* const own = database() ? database() : m_block.database();
  if (!own) return Acad::eNoDatabase;
  Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  if (m_tableStyle.isNull()) m_tableStyle = acdbTableStyle(*own);
  status = ownBlock(*own);
  if (status == Acad::eOk) drawInto(m_block);
  return status;
}

// Rows hang below the origin along X; the title has no lines between its columns.
void AcDbTable::drawInto(AcDbObjectId id) const {
  const AcDbObjectPointer<AcDbBlockTableRecord> block(id, AcDb::kForWrite);
  if (!block) return;
  const auto add = [&](std::unique_ptr<AcDbEntity> part) {
    part->setLayer(block->database()->layerZero());
    part->setColorIndex(0);  // by block
    if (block->appendAcDbEntity(part.get()) == Acad::eOk) part.release()->close();
  };
  const auto line = [&](double x0, double y0, double x1, double y1) {
    add(std::make_unique<AcDbLine>(AcGePoint3d(x0, y0, 0), AcGePoint3d(x1, y1, 0)));
  };
  const double across = width();
  double top = 0;
  line(0, 0, across, 0);
  for (int row = 0; row < numRows(); ++row) {
    const double bottom = top - rowHeight(row);
    double left = 0;
    line(0, bottom, across, bottom);
    for (int column = 0; column < numColumns(); ++column) {
      const bool title = rowType(row) == AcDb::kTitleRow;
      if (column == 0 || !title) line(left, top, left, bottom);
      const double right = title && column == 0 ? across : left + columnWidth(column);
      const Cell& cell = cellAt(row, column);
      if (!cell.text.empty() && !isMerged(row, column)) {
        const int side = (cell.alignment - 1) % 3;
        const int level = (cell.alignment - 1) / 3;
        const double margin = kMargin * cell.height;
        const AcGePoint3d at(side == 0   ? left + margin
                             : side == 1 ? (left + right) / 2
                                         : right - margin,
                             level == 0   ? top - margin
                             : level == 1 ? (top + bottom) / 2
                                          : bottom + margin,
                             0);
        auto text = std::make_unique<AcDbText>(at, cell.text.c_str(), m_style, cell.height);
        text->setHorizontalMode(side == 0   ? AcDb::kTextLeft
                                : side == 1 ? AcDb::kTextCenter
                                            : AcDb::kTextRight);
        text->setVerticalMode(level == 0   ? AcDb::kTextTop
                              : level == 1 ? AcDb::kTextVertMid
                                           : AcDb::kTextBottom);
        text->setAlignmentPoint(at);
        add(std::move(text));
      }
      left += columnWidth(column);
    }
    line(across, top, across, bottom);
    top = bottom;
  }
}

Acad::ErrorStatus AcDbTable::transformBy(const AcGeMatrix3d& matrix) {
  const AcGeVector3d up = matrix * AcGeVector3d::kZAxis;
  const AcGeVector3d along = matrix * m_shape.direction;
  const bool level = std::hypot(up.x, up.y) <= kLevel * up.length() && up.z > 0;
  if (!matrix.isUniScaledOrtho() || matrix.det() <= 0 || !level) return Acad::eCannotScaleNonUniformly;
  const Acad::ErrorStatus status = assertWriteEnabled();
  if (status != Acad::eOk) return status;
  const double factor = AcDbPlaneMap(matrix, AcGeVector3d::kZAxis).factor;
  m_shape.position = matrix * m_shape.position;
  if (!((along.normal() - m_shape.direction).length() <= 1e-15)) m_shape.direction = along.normal();
  if (factor == 1.0) return status;
  for (double& height : m_shape.heights) height *= factor;
  for (double& width : m_shape.widths) width *= factor;
  for (Cell& cell : m_shape.cells) cell.height *= factor;
  return acdbBlockRecord(m_block) ? recomputeTableBlock() : status;
}

void AcDbTable::subWorldDraw(AcGiWorldDraw& draw) const {
  const AcDbBlockTableRecord* const block = acdbBlockRecord(m_block);
  if (!block) return;
  const double angle = std::atan2(m_shape.direction.y, m_shape.direction.x);
  const AcGeMatrix3d place = AcGeMatrix3d::translation(m_shape.position.asVector()) *
                             AcGeMatrix3d::rotation(angle, AcGeVector3d::kZAxis);
  draw.geometry().block({*block, block->entities().size(), place});
}

// ---- file

// Walks through groups that must stand in one order.
class AcDbTable::GroupCursor {
public:
  explicit GroupCursor(std::span<const DxfTag> tags) : m_tags(tags) {}
  [[nodiscard]] bool good() const { return m_good; }
  [[nodiscard]] bool atEnd() const { return m_good && m_at == m_tags.size(); }
  std::string_view text(int code) {
    if (!m_good || m_at >= m_tags.size() || m_tags[m_at].code != code) {
      m_good = false;
      return {};
    }
    return m_tags[m_at++].value;
  }
  double real(int code) {
    double value = 0;
    const std::string_view given = text(code);
    m_good = m_good && dxfParseReal(given, value);
    return value;
  }
  int integer(int code) {
    const double value = real(code);
    m_good = m_good && std::fabs(value) <= 1e9 && value == std::floor(value);
    return m_good ? static_cast<int>(value) : 0;
  }
  void fixed(int code, int value) { m_good = integer(code) == value && m_good; }
  void fixed(int code, std::string_view value) { m_good = text(code) == value && m_good; }
  void fail() { m_good = false; }

private:
  std::span<const DxfTag> m_tags;
  std::size_t m_at = 0;
  bool m_good = true;
};

void AcDbTable::writeCell(AcDbDxfWriter& out, int row, int column) const {
  const Cell& cell = cellAt(row, column);
  const bool title = rowType(row) == AcDb::kTitleRow;
  out.integer(171, 1);  // a text
  out.integer(172, 0);
  out.integer(173, isMerged(row, column) ? 1 : 0);
  out.integer(174, 0);
  out.integer(175, title && column == 0 ? numColumns() : 1);
  out.integer(176, 1);
  out.integer(91, kOverrides);
  out.integer(178, 0);
  out.real(145, 0.0);
  out.wide(7, nameOf(m_style, L"Standard"));
  out.real(140, cell.height);
  out.integer(170, cell.alignment);
  out.integer(92, 0);
  out.text(301, "CELL_VALUE");
  out.integer(93, 6);
  out.integer(90, 4);
  out.wide(1, cell.text);
  out.integer(94, 0);
  out.text(300, "");
  out.wide(302, cell.text);
  out.text(304, "ACVALUE_END");
}

void AcDbTable::dxfOutFields(AcDbDxfWriter& out) const {
  AcDbEntity::dxfOutFields(out);
  out.subclass("AcDbBlockReference");
  out.wide(2, nameOf(m_block, L""));
  out.point(10, m_shape.position);
  writeExtras(out, "AcDbBlockReference");
  out.subclass("AcDbTable");
  out.integer(280, 0);
  out.id(342, m_tableStyle);
  out.id(343, m_block);
  out.vector(11, m_shape.direction);
  out.integer(90, 22);
  out.integer(91, numRows());
  out.integer(92, numColumns());
  out.integer(93, (m_shape.noTitle ? 1 : 0) + (m_shape.noHeader ? 2 : 0));
  for (const int code : {94, 95, 96}) out.integer(code, 0);
  for (const double height : m_shape.heights) out.real(141, height);
  for (const double width : m_shape.widths) out.real(142, width);
  for (int row = 0; row < numRows(); ++row)
    for (int column = 0; column < numColumns(); ++column) writeCell(out, row, column);
  out.integer(280, m_shape.noTitle ? 1 : 0);
  out.integer(281, m_shape.noHeader ? 1 : 0);
  writeExtras(out, "AcDbTable");
}

bool AcDbTable::Shape::read(std::span<const DxfTag> place, std::span<const DxfTag> table) {
  GroupCursor head(place);
  block = head.text(2);
  position.x = head.real(10), position.y = head.real(20), position.z = head.real(30);
  GroupCursor in(table);
  in.fixed(280, 0);
  tableStyle = in.text(342);
  static_cast<void>(in.text(343));  // the block, which the name tells
  direction.x = in.real(11), direction.y = in.real(21), direction.z = in.real(31);
  in.fixed(90, 22);
  const int rows = in.integer(91);
  const int columns = in.integer(92);
  const int flags = in.integer(93);
  for (const int code : {94, 95, 96}) in.fixed(code, 0);
  if (!head.atEnd() || !in.good() || rows < 1 || columns < 1 || columns > kMostColumns ||
      rows > kMostCells / columns || flags < 0 || flags > 3 || !isPictureName(dxfToWide(block)))
    return false;
  noTitle = (flags & 1) != 0;
  noHeader = (flags & 2) != 0;
  for (int i = 0; i < rows && in.good(); ++i) heights.push_back(in.real(141));
  for (int i = 0; i < columns && in.good(); ++i) widths.push_back(in.real(142));
  for (int i = 0; i < rows * columns && in.good(); ++i) {
    const bool merged = !noTitle && i > 0 && i < columns;
    const bool title = !noTitle && i == 0;
    Cell& cell = cells.emplace_back();
    in.fixed(171, 1), in.fixed(172, 0), in.fixed(173, merged ? 1 : 0), in.fixed(174, 0);
    in.fixed(175, title ? columns : 1), in.fixed(176, 1), in.fixed(91, kOverrides), in.fixed(178, 0);
    if (in.real(145) != 0.0) in.fail();
    style = in.text(7);
    cell.height = in.real(140);
    cell.alignment = in.integer(170);
    in.fixed(92, 0), in.fixed(301, "CELL_VALUE"), in.fixed(93, 6), in.fixed(90, 4);
    const std::string_view text = in.text(1);
    in.fixed(94, 0), in.fixed(300, ""), in.fixed(302, text), in.fixed(304, "ACVALUE_END");
    cell.text = dxfToWide(text);
    if (!isSize(cell.height) || cell.alignment < 1 || cell.alignment > 9) in.fail();
  }
  in.fixed(280, noTitle ? 1 : 0), in.fixed(281, noHeader ? 1 : 0);
  const bool level = std::fabs(direction.z) <= kLevel && std::fabs(direction.length() - 1) <= 1e-6;
  return in.atEnd() && level && std::ranges::all_of(heights, isSize) && std::ranges::all_of(widths, isSize);
}

bool AcDbTable::isGivenBy(std::span<const DxfTag> tags) {
  const auto section = [&](std::string_view marker) {
    const auto isMarker = [&](const DxfTag& tag) { return tag.code == 100 && tag.value == marker; };
    const auto begin = std::ranges::find_if(tags, isMarker);
    if (begin == tags.end()) return std::span<const DxfTag>();
    const auto ends = [](const DxfTag& tag) { return tag.code == 100 || tag.code >= 1000; };
    const auto end = std::find_if(begin + 1, tags.end(), ends);
    return std::span<const DxfTag>(begin + 1, end);
  };
  Shape shape;
  return shape.read(section("AcDbBlockReference"), section("AcDbTable"));
}

void AcDbTable::dxfInFields(AcDbDxfReader& in) {
  AcDbEntity::dxfInFields(in);
  const auto section = [&](std::string_view marker) {
    std::vector<DxfTag> tags;
    readSection(in, marker, [&](AcDbDxfReader& group) {
      tags.push_back({group.code(), 0, group.text()});
      return true;
    });
    return tags;
  };
  const std::vector<DxfTag> place = section("AcDbBlockReference");
  const std::vector<DxfTag> table = section("AcDbTable");
  Shape shape;
  if (!shape.read(place, table)) return;
  m_shape = std::move(shape);
  AcDbDatabase& database = in.database();
  m_block = database.recordOfText("BLOCK_RECORD", m_shape.block);
  m_style = m_shape.style == "Standard" ? AcDbObjectId() : database.recordOfText("STYLE", m_shape.style);
  Adesk::UInt64 handle = 0;
  m_tableStyle =
      dxfParseHandle(m_shape.tableStyle, handle) && handle ? database.idOf(handle) : AcDbObjectId();
}

void AcDbTable::visitReferences(const std::function<void(AcDbObjectId&)>& visit) {
  AcDbEntity::visitReferences(visit);
  for (AcDbObjectId* id : {&m_block, &m_style, &m_tableStyle})
    if (!id->isNull()) visit(*id);
}

void AcDbTable::exchangeFields(AcDbTable& other) {
  std::swap(m_shape, other.m_shape);
  std::swap(m_block, other.m_block);
  std::swap(m_style, other.m_style);
  std::swap(m_tableStyle, other.m_tableStyle);
  AcDbEntity::exchangeFields(other);
}
