#include "app/window/layer_panel.h"

#include "app/window/text.h"
#include "arx/ap/acdocman.h"
#include "arx/db/dbsymrecords.h"
#include "arx/plot/plcolor.h"
#include "base/text.h"

#include <QHeaderView>
#include <QInputDialog>
#include <algorithm>

namespace veltora::app {
namespace {

enum Column { kCurrent, kName, kOn, kFrozen, kLocked, kColor, kColumns };

QTableWidgetItem* cell(const QString& text, bool centred) {
  auto* const made = new QTableWidgetItem(text);
  made->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
  if (centred) made->setTextAlignment(Qt::AlignCenter);
  return made;
}

QString tick(bool set) { return set ? "✓" : ""; }

AcDbObjectId layerNamed(AcDbDatabase& database, const std::wstring& name) {
  AcDbObjectId id;
  if (const AcDbObjectPointer<AcDbLayerTable> layers(database.layerTableId()); layers)
    layers->getIdAt(name.c_str(), id);
  return id;
}

}  // namespace

LayerPanel::LayerPanel() : QTableWidget(0, kColumns) {
  setObjectName("calques");
  setHorizontalHeaderLabels({"▸", "Nom", "Actif", "Gelé", "Verrou", "Couleur"});
  verticalHeader()->hide();
  setEditTriggers(NoEditTriggers);
  setSelectionBehavior(SelectRows);
  horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  horizontalHeaderItem(kCurrent)->setToolTip("Calque courant : un clic le choisit");
  horizontalHeader()->setSectionResizeMode(kName, QHeaderView::Stretch);
  connect(this, &QTableWidget::cellClicked, this, [this](int row, int column) {
    if (column != kName) click(row, column);
  });
  connect(this, &QTableWidget::cellDoubleClicked, this, [this](int row, int column) {
    if (column == kName) click(row, kCurrent);
  });
}

std::vector<LayerPanel::Row> LayerPanel::read(AcDbDatabase& database) {
  std::vector<Row> rows;
  const AcDbObjectId current = database.clayer();
  const AcDbObjectPointer<AcDbLayerTable> layers(database.layerTableId());
  for (const AcDbObjectId id : layers ? layers->records() : std::vector<AcDbObjectId>()) {
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(id);
    if (!layer) continue;
    const AcCmColor color = layer->color();
    rows.push_back({layer->name(), id == current, !layer->isOff(), layer->isFrozen(), layer->isLocked(),
                    color.colorIndex(), color.isTrueColor() ? color.rgb() : -1});
  }
  std::ranges::sort(rows, [](const Row& a, const Row& b) { return base::compareNoCase(a.name, b.name) < 0; });
  return rows;
}

void LayerPanel::refresh() {
  AcApDocument* const document = curDoc();
  m_database = document ? document->database() : nullptr;
  std::vector<Row> rows = m_database ? read(*m_database) : std::vector<Row>();
  if (rows == m_rows) return;
  setRowCount(static_cast<int>(rows.size()));
  for (std::size_t i = 0; i < rows.size(); ++i)
    if (i >= m_rows.size() || rows[i] != m_rows[i] || !QTableWidget::item(static_cast<int>(i), kName))
      fill(static_cast<int>(i), rows[i]);
  m_rows = std::move(rows);
}

void LayerPanel::fill(int at, const Row& row) {
  setItem(at, kCurrent, cell(tick(row.current), true));
  setItem(at, kName, cell(shown(row.name), false));
  setItem(at, kOn, cell(tick(row.on), true));
  setItem(at, kFrozen, cell(tick(row.frozen), true));
  setItem(at, kLocked, cell(tick(row.locked), true));
  QTableWidgetItem* const color = cell(row.rgb >= 0 ? QString("vraie") : QString::number(row.color), true);
  const AcPlColor ink = acplIndexColor(std::clamp(row.color, 1, 255));
  const QColor shade =
      row.rgb >= 0 ? QColor(static_cast<QRgb>(row.rgb) | 0xff000000U) : QColor(ink.red, ink.green, ink.blue);
  constexpr int kMiddle = 128;
  color->setBackground(shade);
  color->setForeground(shade.lightness() > kMiddle ? Qt::black : Qt::white);
  setItem(at, kColor, color);
}

void LayerPanel::click(int row, int column) {
  if (!m_database || row < 0 || static_cast<std::size_t>(row) >= m_rows.size()) return;
  if (mayChange && !mayChange()) return;
  change(m_rows[static_cast<std::size_t>(row)], column);
  if (changed) changed();
}

void LayerPanel::change(const Row& row, int column) {
  AcApDocument* const document = acDocManager->document(m_database);
  const AcDbObjectId id = document ? layerNamed(*m_database, row.name) : AcDbObjectId::kNull;
  if (id.isNull()) return;
  int color = row.color;
  if (column == kColor) {
    bool good = false;
    color = QInputDialog::getInt(this, "Couleur du calque", shown(row.name) + " : indice de 1 à 255",
                                 row.color, 1, 255, 1, &good);
    if (!good) return;
  }
  if (column == kFrozen && row.current) return;  // what is drawn next would not be seen
  document->startUndoMark(L"CALQUE");
  if (column == kCurrent && !row.frozen) m_database->setClayer(id);
  if (AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForWrite); layer) {
    if (column == kOn) layer->setIsOff(row.on);
    if (column == kFrozen) layer->setIsFrozen(!row.frozen);
    if (column == kLocked) layer->setIsLocked(!row.locked);
    if (column == kColor) layer->setColor(AcCmColor(color));
  }
  document->endUndoMark();
}

}  // namespace veltora::app
