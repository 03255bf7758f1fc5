#pragma once

#include <QTableWidget>
#include <functional>
#include <string>
#include <vector>

class AcDbDatabase;

namespace veltora::app {

/// The layers of the current drawing: a click changes what is shown of one; each change is a step of U.
class LayerPanel : public QTableWidget {
public:
  LayerPanel();
  /// Shows the layers as they are now.
  void refresh();
  /// A layer was changed here.
  std::function<void()> changed;
  /// Whether the host takes changes now.
  std::function<bool()> mayChange;

private:
  struct Row {
    std::wstring name;
    bool current = false;
    bool on = true;
    bool frozen = false;
    bool locked = false;
    int color = 7;
    int rgb = -1;
    bool operator==(const Row&) const = default;
  };
  [[nodiscard]] static std::vector<Row> read(AcDbDatabase& database);
  void fill(int at, const Row& row);
  void click(int row, int column);
  void change(const Row& row, int column);

  AcDbDatabase* m_database = nullptr;
  std::vector<Row> m_rows;
};

}  // namespace veltora::app
